#include "forms/inner/Keys.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace orv {
namespace {

struct Code {
  int key;
  int code;
};

constexpr Code kCodes[] = {
    {Qt::Key_Backspace, 8},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Return, kKeyReturn},
    {Qt::Key_Enter, kKeyReturn},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, kKeyEscape},
    {Qt::Key_PageUp, kKeyPageUp},
    {Qt::Key_PageDown, kKeyPageDown},
    {Qt::Key_End, kKeyEnd},
    {Qt::Key_Home, kKeyHome},
    {Qt::Key_Left, kKeyLeft},
    {Qt::Key_Up, kKeyUp},
    {Qt::Key_Right, kKeyRight},
    {Qt::Key_Down, kKeyDown},
    {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, kKeyDelete},
    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Slash, 191},
};

int CodeOf(int key) {
  const bool letter_or_digit =
      (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
  if (letter_or_digit || key == Qt::Key_Space) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
  for (const Code& code : kCodes) {
    if (code.key == key) return code.code;
  }
  return 0;
}

// The state that a modifier key itself brings about.
int OwnState(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Backtab:
      return kShift;
    case Qt::Key_Control:
      return kCtrl;
    case Qt::Key_Alt:
      return kAlt;
    default:
      return 0;
  }
}

}  // namespace

int ShiftStateFrom(const QInputEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  return (held.testFlag(Qt::ShiftModifier) ? kShift : 0) | (held.testFlag(Qt::ControlModifier) ? kCtrl : 0) |
         (held.testFlag(Qt::AltModifier) ? kAlt : 0);
}

KeyEvent KeyOf(const QString& keys) {
  const QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
  if (sequence.isEmpty()) return {};
  const QKeyEvent event(QEvent::KeyPress, sequence[0].key(), sequence[0].keyboardModifiers());
  return KeyEventFrom(event);
}

KeyEvent KeyEventFrom(const QKeyEvent& event) {
  return {CodeOf(event.key()), ShiftStateFrom(event) | OwnState(event.key())};
}

}  // namespace orv
