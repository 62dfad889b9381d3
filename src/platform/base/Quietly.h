#pragma once

#include <functional>
#include <initializer_list>

namespace orv {

// Runs an action that run-time errors of these numbers end without a word, such as the cancel of a dialog.
// Whether it came to its end. Any other error goes on to the caller.
bool Quietly(std::initializer_list<int> numbers, const std::function<void()>& action);

}  // namespace orv
