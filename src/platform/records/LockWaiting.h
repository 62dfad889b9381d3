#pragma once

#include <functional>

#include "base/Event.h"

namespace orv {

// How a program with a window shows that another program holds the database. Nothing is lost by waiting:
// what waits is done when the lock is gone.

// A wait begins (true) and is over (false). No message may be handled in it.
inline Event<bool> WaitingForLock;

// Asked each time a wait has lasted long: whether to go on. Without a subscriber nobody goes on, and what
// waits fails with RuntimeError 70.
inline std::function<bool()> GoOnWaiting;

}  // namespace orv
