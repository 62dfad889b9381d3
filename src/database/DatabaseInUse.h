#pragma once

namespace orv {

// From here on a wait for another program that holds the database shows the wait cursor; one that lasts ends
// in a question, so that what the user has entered is stored once the other program is done. "No" lets the
// operation fail with RuntimeError 70.
void TellWhenDatabaseIsInUse();

}  // namespace orv
