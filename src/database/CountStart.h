#pragma once

namespace orv {

// Counts a start of the program in the user's settings and, from the twenty-first on, proposes to compact
// the database. To be called with the database closed. A count that can't be stored is left. RuntimeError 13
// if the counter is no number and 6 where it can't be counted further.
void CountStart();

}  // namespace orv
