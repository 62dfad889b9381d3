#pragma once

#include <functional>

#include "base/Event.h"
#include "output/OutputKinds.h"
#include "output/Saving.h"

namespace orv {

// Writes out all records of a kind in the current set, in the order of the shared recordset: numbers each by
// its place, for good, draws, composes and saves it. `progress` is told each number before the record is
// drawn. The recordset is left on the last record. The count of records; 0 without any. RuntimeError of
// drawing and composing, which ends the run; a failed save is a box, and the run goes on.
int WriteRecords(const OutputKind& kind, const SheetFormat& format, const std::function<void(int)>& progress);

// A run turns to a record, told by kind code, number and name: for whoever tells what a failure is about.
inline Event<const QString& /*record*/> RecordBegun;

}  // namespace orv
