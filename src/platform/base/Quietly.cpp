#include "base/Quietly.h"

#include <algorithm>

#include "base/RuntimeError.h"

namespace orv {

bool Quietly(std::initializer_list<int> numbers, const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (const RuntimeError& error) {
    if (std::ranges::find(numbers, error.Number()) == numbers.end()) throw;
    return false;
  }
}

}  // namespace orv
