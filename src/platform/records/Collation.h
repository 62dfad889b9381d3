#pragma once

#include <QStringView>

struct sqlite3;

namespace orv {

// The name of the collation that the statements use: without regard to case, accented letters beside
// their base letters and yet different from them.
inline constexpr const char* kCollation = "ORVTEXT";
// Its order: negative, 0 or positive.
int CompareText(QStringView a, QStringView b);

// Makes it known to an open database. RuntimeError.
void RegisterCollation(sqlite3* database);

}  // namespace orv
