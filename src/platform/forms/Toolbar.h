#pragma once

#include <QString>
#include <map>
#include <vector>

#include "forms/Control.h"

class QAction;

namespace orv {

enum class ToolbarStyle { Plain, Check, Separator };

struct ToolbarMenuEntry {
  QString Key;  // empty for a line between entries
  QString Text;
};

// A row of buttons with icons, counted from 1.
class Toolbar : public Control {
 public:
  explicit Toolbar(Container& parent);
  // `icon` is the name of an icon (Icons.h). The name is for screen readers.
  void Add(const QString& key, const QString& name, const QString& tool_tip, ToolbarStyle style,
           const QString& icon = {});
  // A button at the far right that opens a menu; it is not counted. ButtonClick tells an entry's key.
  void AddMenu(const QString& name, const QString& tool_tip, const QString& icon,
               const std::vector<ToolbarMenuEntry>& entries);
  void SetEntryText(const QString& key, const QString& text);
  // The menu is about to be shown.
  Event<> MenuOpens;
  int Value(int index) const;  // 1 pressed, 0 released
  void SetValue(int index, int value);
  int Count() const { return static_cast<int>(buttons_.size()); }
  // By its key. A check button has changed its state already.
  Event<const QString&> ButtonClick;

 private:
  std::vector<QAction*> buttons_;
  std::map<QString, QAction*> entries_;
};

}  // namespace orv
