#pragma once

#include <QMdiSubWindow>
#include <QScrollArea>
#include <QWidget>

namespace orv {

class Form;

// The inside of a form, and the window itself unless the form is a child. Gives it the keys that its
// controls leave over.
class FormWindow : public QWidget {
 public:
  explicit FormWindow(Form& form) : form_(form) {}

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool PressButton(int key) const;
  Form& form_;
};

// Takes a child's inside and scrolls it where the window is too small.
class FormScroller : public QScrollArea {
 public:
  explicit FormScroller(QWidget* content);
  QSize sizeHint() const override;
};

// The frame around a child within the main window.
class ChildWindow : public QMdiSubWindow {
 public:
  explicit ChildWindow(Form& form) : form_(form) {}

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  Form& form_;
};

}  // namespace orv
