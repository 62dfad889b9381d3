#pragma once

namespace orv {

// The program: opens the database, shows the main window and loads the editors. Without a database it says
// so in a box; false then, and the process is to end.
bool Main();

}  // namespace orv
