#pragma once

#include <vector>

#include "forms/Types.h"

namespace orv {

// The keys that lead between the parts of the main window.
std::vector<CommandKey> WindowKeys();

}  // namespace orv
