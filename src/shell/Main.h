#pragma once

#include <memory>

#include "exchange/Copies.h"

namespace orv {

// The program: opens the database, shows the main window and loads the editors. Without a database it says
// so in a box; false then, and the process is to end. One of an older version is brought over first, if the
// user wants it.
bool Main();

// The copy of the day, which is being made beside the user's work while the object lives; nothing where it is
// there already. A disk without room for it is told once.
std::unique_ptr<DailyCopy> StartDailyCopy();

}  // namespace orv
