#pragma once

struct sqlite3;

namespace orv {

// The name of the collation that the statements use: the order of base/TextOrder.
inline constexpr const char* kCollation = "ORVTEXT";

// Makes it known to an open database. RuntimeError.
void RegisterCollation(sqlite3* database);

}  // namespace orv
