#pragma once

#include <sqlite3.h>

#include <vector>

#include "records/KnownObject.h"

namespace orv {

// What Connection::RequireObjects says.
void CheckObjects(sqlite3* database, const std::vector<KnownObject>& objects);

}  // namespace orv
