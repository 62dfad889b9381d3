#include "support/Widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTest>
#include <QWidget>

namespace orv {
namespace {

// The child that takes the keys: a combo's field, a text view's inside.
QWidget* Target(const Control& control) {
  QWidget* widget = control.Handle();
  return widget->focusProxy() != nullptr ? widget->focusProxy() : widget;
}

Qt::MouseButtons ToButtons(int buttons) {
  Qt::MouseButtons result;
  if ((buttons & 1) != 0) result |= Qt::LeftButton;
  if ((buttons & 2) != 0) result |= Qt::RightButton;
  if ((buttons & 4) != 0) result |= Qt::MiddleButton;
  return result;
}

void Mouse(const SurfaceView& view, QEvent::Type type, double x, double y, Qt::MouseButton button,
           Qt::MouseButtons held) {
  QWidget* widget = view.Handle();
  const QPointF point(x, y);
  QMouseEvent event(type, point, widget->mapToGlobal(point), button, held, Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

}  // namespace

void ClickOn(const Control& control) {
  QWidget* widget = control.Handle();
  // A box or an option takes clicks on its mark and its words only, which start at the left.
  const bool has_mark =
      qobject_cast<QCheckBox*>(widget) != nullptr || qobject_cast<QRadioButton*>(widget) != nullptr;
  QTest::mouseClick(widget, Qt::LeftButton, {}, has_mark ? QPoint(8, widget->height() / 2) : QPoint());
}

void TypeInto(const Control& control, const QString& text) {
  QWidget* widget = Target(control);
  widget->setFocus();
  for (const QChar c : text) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, c.toUpper().unicode(), Qt::NoModifier, QString(c));
      QApplication::sendEvent(widget, &event);
    }
  }
}

void PressKey(const Control& control, int key, int modifiers) {
  QTest::keyClick(Target(control), static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifiers));
}

void Retype(TextBox& box, const QString& text) {
  PressKey(box, Qt::Key_A, Qt::ControlModifier);
  PressKey(box, Qt::Key_Delete);
  TypeInto(box, text);
}

void Choose(ComboBox& combo, int index) {
  auto* box = qobject_cast<QComboBox*>(combo.Handle());
  Q_ASSERT(box != nullptr);
  box->setCurrentIndex(index);
  Q_EMIT box->activated(index);
}

void PressAt(const SurfaceView& view, double x, double y, int button) {
  const auto held = ToButtons(button);
  Mouse(view, QEvent::MouseButtonPress, x, y, static_cast<Qt::MouseButton>(held.toInt()), held);
}

void DragTo(const SurfaceView& view, double x, double y, int buttons) {
  Mouse(view, QEvent::MouseMove, x, y, Qt::NoButton, ToButtons(buttons));
}

void ReleaseAt(const SurfaceView& view, double x, double y, int button) {
  Mouse(view, QEvent::MouseButtonRelease, x, y, static_cast<Qt::MouseButton>(ToButtons(button).toInt()), {});
}

}  // namespace orv
