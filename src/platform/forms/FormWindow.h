#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScrollArea>
#include <QWidget>

namespace orv {

class Form;

// The inside of a form, and the window itself unless the form is a child. Gives it the keys that its
// controls leave over.
class FormWindow : public QWidget {
 public:
  explicit FormWindow(Form& form) : form_(form) { setAcceptDrops(true); }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  bool PressButton(int key) const;
  Form& form_;
};

// Takes a child's inside and scrolls it where the window is too small.
class FormScroller : public QScrollArea {
 public:
  explicit FormScroller(QWidget* content);
  QSize sizeHint() const override;
  QSize LeastSize() const;  // that needs no scroll bar
};

// The frame around a child within the main window.
class ChildWindow : public QMdiSubWindow {
 public:
  // The keyboard is never on the frame itself, where no control and no form would see a key.
  explicit ChildWindow(Form& form) : form_(form) {
    setFocusPolicy(Qt::NoFocus);
    systemMenu()->actions().constLast()->setShortcut(QKeySequence(QStringLiteral("Ctrl+F4")));
  }
  // The size with what scroll bars take that it needs in a room, so that no bar is needed because of another.
  QSize WithBars(const QSize& size, const QSize& room) const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  friend class FormArea;
  Form& form_;
};

// The area for children of the main window.
class FormArea : public QMdiArea {
 public:
  using QMdiArea::QMdiArea;

 protected:
  void resizeEvent(QResizeEvent* event) override;
};

}  // namespace orv
