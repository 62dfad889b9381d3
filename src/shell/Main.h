#pragma once

#include <QString>
#include <memory>

#include "exchange/Copies.h"

namespace orv {

// The program: opens the database, shows the main window and loads the editors. Without a database it says
// so in a box; false then, and the process is to end. One of an older version is brought over first, if the
// user wants it.
//
// `file` is a set that the user has opened. A window that runs already on the same database takes it; false
// then too, and where that window doesn't answer, which is told and ends the process with status 1.
bool Main(const QString& file = {});

// Comes to the front and asks whether to bring in the sets of a file that the user has opened, and does so.
void OfferSetOfFile(const QString& file);

// The copy of the day, which is being made beside the user's work while the object lives; nothing where it is
// there already. A disk without room for it is told once.
std::unique_ptr<DailyCopy> StartDailyCopy();

}  // namespace orv
