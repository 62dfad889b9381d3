#include "forms/inner/CommandKeys.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "forms/inner/FormWindow.h"
#include "forms/inner/Keys.h"

namespace orv {
namespace {

// A key that bears a character, with Ctrl or Alt. Both together are how some keyboards type a third sign.
bool IsCommand(const QKeyEvent& event) {
  const bool ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  const bool alt = event.modifiers().testFlag(Qt::AltModifier);
  return ctrl != alt && event.key() > Qt::Key_Space && event.key() < Qt::Key_Escape;
}

// The box whose open list a widget is.
QComboBox* BoxOfOpenList(const QObject* object) {
  const auto* const list = qobject_cast<const QAbstractItemView*>(object);
  if (list == nullptr || !list->window()->windowFlags().testFlag(Qt::Popup)) return nullptr;
  return qobject_cast<QComboBox*>(list->window()->parentWidget());
}

bool WouldTakeIt(const QObject* object, bool alt) {
  if (const auto* const box = qobject_cast<const QComboBox*>(object)) return alt || !box->isEditable();
  return alt && (qobject_cast<const QLineEdit*>(object) != nullptr ||
                 qobject_cast<const QPlainTextEdit*>(object) != nullptr);
}

// A field would replace what is selected in it by nothing.
bool PastesNothing(const QObject* object, const QKeyEvent& event) {
  const auto* const box = qobject_cast<const QComboBox*>(object);
  const bool types = (box != nullptr && box->isEditable()) || object->inherits("QLineEdit") ||
                     object->inherits("QPlainTextEdit");
  return types && event.matches(QKeySequence::Paste) && QGuiApplication::clipboard()->text().isEmpty();
}

// A key goes outwards from the widget with the focus and no further than its window.
const FormWindow* FormAround(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
    if (const auto* const form = dynamic_cast<const FormWindow*>(widget)) return form;
  }
  return nullptr;
}

// The form to which an object belongs claims the key, or the one around the box whose open list it is.
bool IsClaimed(const QObject* object, const QKeyEvent& event) {
  const QComboBox* const box = BoxOfOpenList(object);
  const FormWindow* const form = FormAround(box != nullptr ? box : static_cast<const QWidget*>(object));
  return form != nullptr && form != object && form->claims(KeyEventFrom(event));
}

}  // namespace

CommandKeys::CommandKeys() : QObject(QApplication::instance()) {
  QApplication::instance()->installEventFilter(this);
}

bool CommandKeys::eventFilter(QObject* object, QEvent* event) {
  const bool asked = event->type() == QEvent::ShortcutOverride;
  if (!object->isWidgetType() || (event->type() != QEvent::KeyPress && !asked)) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  const bool claimed = IsClaimed(object, key) || PastesNothing(object, key);
  if (!claimed && (asked || !IsCommand(key))) return false;
  if (QComboBox* const box = asked ? nullptr : BoxOfOpenList(object)) {
    box->hidePopup();
    QApplication::sendEvent(box, event);
    return true;
  }
  if (!claimed && !WouldTakeIt(object, key.modifiers().testFlag(Qt::AltModifier))) return false;
  event->ignore();
  return true;
}

}  // namespace orv
