#pragma once

#include <QString>

namespace orv {

// The program's query texts name texts in double quotes, join texts with & (Null counting as empty) and
// expect text to sort and compare without regard to case. This turns such a text into what SQLite runs.
// It works on tokens and leaves alone what it does not know.
struct Query {
  QString sql;  // the whole statement in SQLite's dialect
  // Its parts, for an editable recordset that reads keys and single rows.
  QString columns;  // between SELECT and FROM
  QString source;   // from FROM up to ORDER BY, exclusive
  QString order;    // the terms behind ORDER BY with their collation, empty if there is none
};

// RuntimeError 3000 for a text that is no SELECT or has an unclosed literal or bracket.
Query Translate(const QString& text);

// A criterion of Find or Filter such as "Nr = 5", in SQLite's dialect.
QString TranslateCriterion(const QString& text);

// The name of the collation that the statements use: without regard to case, accented letters beside
// their base letters and yet different from them.
inline constexpr const char* kCollation = "ORVTEXT";
// Its order: negative, 0 or positive.
int CompareText(QStringView a, QStringView b);

}  // namespace orv
