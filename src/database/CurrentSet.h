#pragma once

#include <cstdint>

#include "records/Recordset.h"

namespace orv {

// Makes a set of rsSet the current one: the shared variables, the reference lists and the symbol take its
// values. A stored symbol that can't be shown counts as none. RuntimeError 3021 for an unknown key.
void MakeSetCurrent(std::int16_t set_id);

// Opens one of the shared recordsets anew on the records of a table in the current set, by their number. A
// change that waits in the former one is dropped.
void OpenRecordsOfSet(const char* table, Recordset& rows);

}  // namespace orv
