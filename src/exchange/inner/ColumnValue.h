#pragma once

#include <variant>

#include "base/Value.h"
#include "schema/Tables.h"

namespace orv {

// A value from elsewhere as a column of the kind keeps it: Null as the column's default where it takes none,
// a number in 32 bits, a truth value -1 or 0, a text without what can't stand in one. RuntimeError 6 or 13
// for a value that can't be that.
Value ColumnValue(schema::Kind kind, const Value& value);

inline bool IsBytes(const Value& value) {
  return std::holds_alternative<QByteArray>(value.data());
}
inline bool IsText(const Value& value) {
  return std::holds_alternative<QString>(value.data());
}

}  // namespace orv
