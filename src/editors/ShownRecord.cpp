#include "editors/ShownRecord.h"

#include "base/RuntimeError.h"
#include "database/ListHelpers.h"

namespace orv {

bool ShownRecord::Hold() {
  const std::int32_t current = CurrentKey();
  if (key_ != 0 && (current == key_ || Find(key_))) return true;
  if (!Find(current) && rows_.IsOpen() && !rows_.IsEmpty()) rows_.MoveFirst();
  gone_();
  return false;
}

bool ShownRecord::Write(std::initializer_list<Change> changes) {
  if (!Hold()) return false;
  for (const Change& change : changes) rows_[change.column] = change.value;
  rows_.Update();
  return true;
}

// 0 for none, also when the row was deleted elsewhere.
std::int32_t ShownRecord::CurrentKey() const {
  if (!rows_.IsOpen() || rows_.IsBOF() || rows_.IsEOF()) return 0;
  try {
    return rows_[key_column_].Int32();
  } catch (const RuntimeError&) {
    return 0;
  }
}

bool ShownRecord::Find(std::int32_t key) {
  if (key == 0 || !rows_.IsOpen() || rows_.IsEmpty()) return false;
  FindByKey(rows_, key_column_, key);
  return !rows_.IsEOF();
}

}  // namespace orv
