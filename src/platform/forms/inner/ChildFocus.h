#pragma once

#include <QObject>
#include <QStringList>

class QMdiArea;
class QVBoxLayout;
class QWidget;

namespace orv {

// The keyboard goes into a part of a window: to the control that had it there last, or else to the first that
// may have it. `how` is the way that the control must allow: by Tab or by a click.
void TakeFocus(QWidget& part, Qt::FocusPolicy how = Qt::TabFocus);

// The keyboard's ways between the parts of a main window, which are what is docked and the active child. F6
// goes up from part to part and round, with Shift down; Ctrl+Tab, with Shift backwards, to the next child;
// Ctrl+F4 closes the child. A click anywhere on a child gives it the keyboard.
class ChildFocus : public QObject {
 public:
  // Lives as long as the area. `rows` holds the docked parts from above, and the area as the last.
  ChildFocus(QVBoxLayout& rows, QMdiArea& area);
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  struct Key;
  static const Key kKeys[];
  friend QStringList WindowKeys();
  void Walk(int step);
  void Turn(int step);
  void LeaveChild();
  bool Enter(int row);
  QVBoxLayout& rows_;
  QMdiArea& area_;
};

}  // namespace orv
