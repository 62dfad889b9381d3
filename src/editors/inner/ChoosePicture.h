#pragma once

#include <functional>

#include "editors/ShownRecord.h"
#include "forms/Surface.h"

namespace orv {

// The work of a button that lets the user choose a picture file for a field: the file dialog, the file's
// bytes into the field of the record, Update, the file's folder remembered, the picture on the
// surface. A cancelled dialog and a file that is no picture end it silently; such a file is stored by then,
// and what stands on the surface stays.
struct PictureChoice {
  QString title;          // of the dialog
  const QString* folder;  // where the dialog starts, if not empty
  ShownRecord& record;
  const char* column;
  Surface& surface;
  std::function<void()> before_update = [] {};  // fields that change with it
  std::function<void(const QString& path)> stored = [](const QString&) {
  };  // runs before the picture is shown
  std::function<void(const QString& path)> shown = [](const QString&) {};
};
void ChoosePicture(const PictureChoice& choice);

// The same for a picture in a frame: it shows at the frame's corner until it is placed anew, the button
// remembers its folder, and the focus goes to the picture, to be placed by keys.
void ChooseFramedPicture(
    const char* title, ShownRecord& record, const char* column, Surface& image, QString& folder,
    std::function<void()> before_update = [] {});

// The work of the button that takes a picture away again, out of the field and off the surface.
void RemovePicture(ShownRecord& record, const char* column, Surface& surface);
// The same for the field "Picture" of a card and its frame: the next picture starts at the corner.
void RemoveFramedPicture(ShownRecord& record, Surface& image);
// Takes the picture out of its frame.
void EmptyFrame(Surface& image);

// The folder memory of a button: the part of a path up to its last separator.
std::function<void(const QString&)> RememberFolder(QString& folder);

}  // namespace orv
