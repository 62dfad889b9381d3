#pragma once

#include <QString>

#include "records/inner/Tokens.h"

namespace orv {

// Translates a whole SELECT, for those that stand in brackets in an expression.
using SelectTranslator = QString (*)(TokenSpan tokens);

// Tokens of the program's dialect as SQLite's: literals in single quotes, `a & b` as a concatenation in
// which Null is empty text, comparisons with a text under the collation.
QString TranslateExpression(TokenSpan tokens, SelectTranslator select);

// The terms of ORDER BY or GROUP BY under the collation.
QString TranslateTerms(TokenSpan tokens, SelectTranslator select);

}  // namespace orv
