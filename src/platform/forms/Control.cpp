#include "forms/Control.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QFocusEvent>
#include <QGroupBox>
#include <QWidget>
#include <cmath>

#include "base/Rounding.h"
#include "forms/inner/FormWindow.h"
#include "forms/inner/Menus.h"

namespace orv {

class ControlWatcher : public QObject {
 public:
  explicit ControlWatcher(Control& control) : control_(control) {}
  bool eventFilter(QObject* object, QEvent* event) override { return control_.Filter(object, event); }

 private:
  Control& control_;
};

Control::~Control() {
  // The watcher goes first: nothing that the widget says while it dies may reach the control.
  delete watcher_;
  delete widget_;
}

void Control::Adopt(QWidget* widget) {
  widget_ = widget;
  watcher_ = new ControlWatcher(*this);
  Watch(widget);
  if (!widget->isWindow()) widget->setVisible(true);
}

void Control::Watch(QObject* object) {
  object->installEventFilter(watcher_);
}

QObject* Control::Watcher() const {
  return watcher_;
}

QWidget* Control::Handle() const {
  return static_cast<QWidget*>(widget_.data());
}

bool Control::Filter(QObject* object, QEvent* event) {
  return object == widget_ && FocusEvent(object, event);
}

// The focus comes to a control when the user goes there, but not when the window or a menu gives back
// what it had taken.
bool Control::FocusEvent(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Hide) had_focus_ = false;
  if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut) return false;
  const auto reason = static_cast<QFocusEvent*>(event)->reason();
  if (event->type() == QEvent::FocusOut) {
    had_focus_ = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
    return false;
  }
  if (had_focus_) return false;
  had_focus_ = true;
  // The widget sets its own selection first, so that a handler has the last word on it.
  const QPointer<QObject> watcher = watcher_;
  object->event(event);
  if (watcher != nullptr) GotFocus();
  return true;
}

namespace {

// Of the form that a control lies in.
double ScaleAround(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const auto* const form = dynamic_cast<const FormWindow*>(widget)) return form->scale;
  }
  return 1;
}

}  // namespace

void Control::Place(int left, int top, int width, int height) {
  const double scale = ScaleAround(Handle()) / kTwipsPerPixel;
  const auto pixels = [scale](int twips) { return static_cast<int>(std::lround(twips * scale)); };
  Handle()->setGeometry(pixels(left), pixels(top), pixels(width), pixels(height));
}

bool Control::Enabled() const {
  return !Handle()->testAttribute(Qt::WA_ForceDisabled);
}
void Control::SetEnabled(bool enabled) {
  Handle()->setEnabled(enabled);
}
bool Control::Visible() const {
  return !Handle()->isHidden();
}
void Control::SetVisible(bool visible) {
  Handle()->setVisible(visible);
}
void Control::SetFocus() {
  Handle()->setFocus(Qt::OtherFocusReason);
}

bool Control::HasFocus() const {
  const QWidget* const focus = Handle()->window()->focusWidget();
  return focus != nullptr && (focus == Handle() || Handle()->isAncestorOf(focus));
}

void Control::SetToolTip(const QString& text) {
  Handle()->setToolTip(text);
}
QString Control::ToolTip() const {
  return Handle()->toolTip();
}
void Control::SetAccessibleName(const QString& name) {
  Handle()->setAccessibleName(name);
}

Panel::Panel(Container& parent) {
  Adopt(new QWidget(parent.Handle()));
}

bool Panel::Filter(QObject* object, QEvent* event) {
  if (!ContextMenu || object != Handle() || event->type() != QEvent::ContextMenu)
    return Control::Filter(object, event);
  std::vector<MenuItem> items;
  ContextMenu({items});
  PopUp(*Handle(), items, static_cast<QContextMenuEvent*>(event)->globalPos());
  return true;
}

Frame::Frame(Container& parent, const QString& caption) {
  Adopt(new QGroupBox(caption.trimmed(), parent.Handle()));
}

}  // namespace orv
