#pragma once

#include <QString>
#include <span>
#include <vector>

#include "base/RuntimeError.h"

namespace orv {

enum class TokenKind {
  kBlank,
  kWord,  // a name or keyword
  kName,  // a name in brackets, with them
  kNumber,
  kText,           // a literal in double or single quotes; its text is without them
  kSymbol,         // brackets and operators
  kFixed,          // text of the target dialect, put in the place of another token; passed on as it stands
  kTextParameter,  // the same in the place of a literal
};

struct Token {
  TokenKind kind;
  QString text;
  QChar quote = {};  // of a literal

  bool IsSymbol(QStringView symbol) const { return kind == TokenKind::kSymbol && text == symbol; }
  bool IsWord(QStringView word) const {
    return kind == TokenKind::kWord && text.compare(word, Qt::CaseInsensitive) == 0;
  }
};

using Tokens = std::vector<Token>;
using TokenSpan = std::span<const Token>;

[[noreturn]] void ThrowSyntaxError(const QString& cause);

// RuntimeError 3000 for an unclosed literal or bracket. Comments count as blanks.
Tokens Tokenize(const QString& text);

// Without blanks at its ends.
TokenSpan Trimmed(TokenSpan tokens);

// Position of the bracket that closes the one at `open`.
size_t ClosingBracket(TokenSpan tokens, size_t open);

// The parts between the commas that stand in no bracket.
std::vector<TokenSpan> SplitAtCommas(TokenSpan tokens);

// Whether the token at `at` is qualified, such as Nr in tblCard.Nr: then it is no keyword.
bool IsQualified(TokenSpan tokens, size_t at);

}  // namespace orv
