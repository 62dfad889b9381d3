#pragma once

#include <QString>

#include "records/Tokens.h"

namespace orv {

// Tokens of the program's dialect as SQLite's: literals in single quotes, `a & b` as a concatenation in
// which Null is empty text, comparisons with a text under the collation. SELECTs in brackets included.
QString TranslateExpression(TokenSpan tokens);

// The terms of ORDER BY or GROUP BY under the collation.
QString TranslateTerms(TokenSpan tokens);

// A whole SELECT.
QString TranslateSelect(TokenSpan tokens);

}  // namespace orv
