#pragma once

#include <functional>

namespace orv {

class Form;

inline constexpr const char* kHelpKeys = "F1";

// What help is: called for F1, wherever the keyboard is (no control, list or box gets to see the key), with
// the form that has it, or over which a box stands that has it; with none for a window that is no form.
void SetHelp(std::function<void(const Form*)> show);

// The same as F1 in that form.
void AskForHelp(const Form* form);

}  // namespace orv
