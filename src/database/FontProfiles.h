#pragma once

#include "records/Recordset.h"

namespace orv {

// Adds the thirteen font rows of a new set and writes their keys into the slots of the row on which
// `set` stands, which has its EditionID already. The caller updates the set. Thirteen rows in one
// transaction.
void CreateSetFonts(Recordset& set);

}  // namespace orv
