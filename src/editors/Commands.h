#pragma once

#include <vector>

#include "forms/Types.h"

namespace orv {

// All keys that are commands of the program, for whoever tells them to users.
std::vector<CommandKey> ProgramCommands();

}  // namespace orv
