#pragma once

#include <vector>

#include "forms/Types.h"

namespace orv {

// The keys that lead between the parts of a main window and its children, and close a child.
std::vector<CommandKey> WindowKeys();

}  // namespace orv
