#pragma once

#include <QString>
#include <cstdint>

#include "imaging/Font.h"

namespace orv {

enum class ScaleMode { Twips = 1, Pixels = 3 };
enum class Alignment { Left = 0, Right = 1, Centre = 2 };

// Button: 1 left, 2 right, 4 middle; in a move the sum of those held. Shift: 1 Shift, 2 Ctrl, 4 Alt,
// summed. X and Y in twips from the corner of the control.
struct MouseEvent {
  int Button = 0;
  int Shift = 0;
  double X = 0;
  double Y = 0;
};

// KeyCode: the field's virtual key codes, letters and digits by their capital's code.
struct KeyEvent {
  int KeyCode = 0;
  int Shift = 0;
  bool operator==(const KeyEvent&) const = default;
};
enum KeyCode : int {
  kKeyReturn = 13,
  kKeyEscape = 27,
  kKeySpace = 32,
  kKeyPageUp = 33,
  kKeyPageDown = 34,
  kKeyEnd = 35,
  kKeyHome = 36,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyDelete = 46,
  kKey0 = 48,
  kKey1 = 49,
  kKey2 = 50,
  kKeyC = 67,
  kKeyD = 68,
  kKeyF = 70,
  kKeyN = 78,
  kKeyS = 83,
  kKeyV = 86,
  kKeyPlus = 187,
  kKeyMinus = 189,
};
enum ShiftState : int { kShift = 1, kCtrl = 2, kAlt = 4 };

// The key that is written so, such as "Ctrl+D".
KeyEvent KeyOf(const QString& keys);

}  // namespace orv
