#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScrollArea>
#include <QWidget>
#include <functional>

#include "forms/DataObject.h"
#include "forms/Types.h"

namespace orv {

class Form;

// The inside of a form, and the window itself unless the form is a child.
class FormWindow : public QWidget {
 public:
  FormWindow() { setAcceptDrops(true); }
  const Form* form = nullptr;  // that it belongs to
  bool usable_beside_modal = false;
  double scale = 1;                               // of what is placed in it
  std::function<void()> closed;                   // by the frame
  std::function<void()> inside_changed;           // what it asks for may be another size
  std::function<bool(const KeyEvent&)> claims;    // a command, not for its controls
  std::function<void(const KeyEvent&)> key_left;  // that its controls and buttons did not use
  std::function<bool()> takes_drops;
  std::function<void(const DataObject&)> dropped;  // where no control takes it

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  bool PressButton(int key) const;
  void JoinModal();
};

// Takes a child's inside and scrolls it where the window is too small.
class FormScroller : public QScrollArea {
 public:
  explicit FormScroller(QWidget* content);
  QSize sizeHint() const override;
  QSize LeastSize() const;  // that needs no scroll bar
};

inline constexpr const char* kCloseChildKeys = "Ctrl+F4";

// The frame around a child within the main window.
class ChildWindow : public QMdiSubWindow {
 public:
  // The keyboard is never on the frame itself, where no control and no form would see a key.
  ChildWindow() {
    setFocusPolicy(Qt::NoFocus);
    systemMenu()->actions().constLast()->setShortcut(QKeySequence(QLatin1String(kCloseChildKeys)));
  }
  // Shown for its content alone: the keyboard's ways lead past it.
  bool stays_behind = false;
  // The size with what scroll bars take that it needs in a room, so that no bar is needed because of another.
  QSize WithBars(const QSize& size, const QSize& room) const;

  std::function<void()> closed;        // by the frame
  std::function<void()> area_changed;  // the area that it lies in has another size

 protected:
  void closeEvent(QCloseEvent* event) override;
};

// The area for children of the main window.
class FormArea : public QMdiArea {
 public:
  using QMdiArea::QMdiArea;

 protected:
  void resizeEvent(QResizeEvent* event) override;
};

}  // namespace orv
