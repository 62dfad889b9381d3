#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class QMimeData;

namespace orv {

// What the user drags or copies here: files, or one picture.
struct DataObject {
  QStringList Files;  // whole paths
  QByteArray Image;   // the bytes of a picture file, where there are no files
  bool IsEmpty() const { return Files.isEmpty() && Image.isEmpty(); }
};

// For the platform's own rooms.
DataObject DataObjectFrom(const QMimeData& data);
// The same question without the bytes.
bool HasDataObject(const QMimeData& data);

// Places are in twips from the corner of the control.
struct DropEvent {
  DataObject Data;
  double X = 0;
  double Y = 0;
};

// What the wheel has turned since the last event: positive away from the user.
struct WheelEvent {
  int Steps = 0;
  int Shift = 0;
  double X = 0;
  double Y = 0;
};

// An empty caption is a separator.
struct MenuItem {
  QString Caption;
  QString Keys;  // that do the same, as they are shown
  bool Enabled = true;
  std::function<void()> Click;
};

// The user asks for a menu; the handler says what is in it.
struct MenuEvent {
  std::vector<MenuItem>& Items;
};

}  // namespace orv
