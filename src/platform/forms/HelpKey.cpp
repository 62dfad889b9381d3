#include "forms/inner/HelpKey.h"

#include <QApplication>
#include <QKeyEvent>

#include "forms/Form.h"
#include "forms/inner/FormWindow.h"

namespace orv {
namespace {

// A box belongs to the window over which it stands.
const Form* FormAround(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const auto* const window = dynamic_cast<const FormWindow*>(widget)) return window->form;
  }
  return nullptr;
}

}  // namespace

HelpKey::HelpKey() : QObject(QApplication::instance()) {
  QApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !object->isWidgetType()) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
  const Form* const form = FormAround(static_cast<QWidget*>(object));
  while (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
  if (!key.isAutoRepeat()) HelpAsked(form);
  return true;
}

}  // namespace orv
