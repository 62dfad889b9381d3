#include "forms/inner/CommandKeys.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

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

}  // namespace

CommandKeys::CommandKeys() : QObject(QApplication::instance()) {
  QApplication::instance()->installEventFilter(this);
}

bool CommandKeys::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !IsCommand(*static_cast<QKeyEvent*>(event))) return false;
  if (QComboBox* const box = BoxOfOpenList(object)) {
    box->hidePopup();
    QApplication::sendEvent(box, event);
    return true;
  }
  if (!WouldTakeIt(object, static_cast<QKeyEvent*>(event)->modifiers().testFlag(Qt::AltModifier)))
    return false;
  event->ignore();
  return true;
}

}  // namespace orv
