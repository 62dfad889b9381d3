#pragma once

#include <cstdint>

#include "records/Connection.h"

namespace orv {

// Copies of the records of a set: of tblCard, tblLargeCard or tblCharacter. A copy has all that its original
// has but the name of its file. Each is one transaction; the copy's key. RuntimeError 3021 for a record that
// is gone.

// Behind its original, and what follows moves up by one, so that the numbers stay dense.
std::int32_t DuplicateRecord(const Connection& connection, const char* table, std::int32_t key);
// At the end of another set. A type that is locked to the old set is added to the new one, locked to it.
std::int32_t CopyRecordToSet(const Connection& connection, const char* table, std::int32_t key,
                             std::int32_t set);

}  // namespace orv
