#pragma once

#include "forms/Types.h"

class QInputEvent;
class QKeyEvent;

namespace orv {

// The field's code of a key of the toolkit; 0 for one that has none.
KeyEvent KeyEventFrom(const QKeyEvent& event);
int ShiftStateFrom(const QInputEvent& event);

}  // namespace orv
