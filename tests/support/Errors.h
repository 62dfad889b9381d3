#pragma once

#include "base/RuntimeError.h"

namespace orv {

// Number of the run-time error that an action ends with, 0 if it ends well.
template <class Action>
int ErrorOf(Action&& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace orv
