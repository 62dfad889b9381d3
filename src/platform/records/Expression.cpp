#include "records/inner/Expression.h"

#include <QStringList>
#include <algorithm>

#include "records/inner/Collation.h"

namespace orv {
namespace {

const QString kCollate = QStringLiteral(" COLLATE ") + QLatin1String(kCollation);

// A stretch of an expression: an operand of & or a comparison, or what stands between two operands.
struct Piece {
  enum Kind { kOperand, kJoin, kComparison, kBetween } kind;
  QString text;
  bool is_text = false;  // certainly text: a literal or a concatenation
};

bool IsClauseWord(const Token& token) {
  static constexpr QStringView kWords[] = {
      u"SELECT", u"DISTINCT",  u"ALL",    u"FROM",    u"WHERE", u"GROUP",  u"ORDER", u"BY",
      u"HAVING", u"AS",        u"ON",     u"AND",     u"OR",    u"NOT",    u"IN",    u"IS",
      u"LIKE",   u"ASC",       u"DESC",   u"BETWEEN", u"UNION", u"EXCEPT", u"CASE",  u"WHEN",
      u"THEN",   u"ELSE",      u"END",    u"JOIN",    u"INNER", u"OUTER",  u"CROSS", u"LIMIT",
      u"GLOB",   u"INTERSECT", u"OFFSET", u"USING",   u"EXISTS"};
  return std::ranges::any_of(kWords, [&](QStringView word) { return token.IsWord(word); });
}

bool IsComparison(const Token& token) {
  static constexpr QStringView kSymbols[] = {u"=", u"==", u"<>", u"!=", u"<", u">", u"<=", u">="};
  return std::ranges::any_of(kSymbols, [&](QStringView symbol) { return token.IsSymbol(symbol); });
}

QString Quoted(QString literal) {
  return u'\'' + literal.replace(u'\'', QStringLiteral("''")) + u'\'';
}

Piece::Kind KindOf(TokenSpan tokens, size_t at) {
  const Token& token = tokens[at];
  if (token.IsSymbol(u"&")) return Piece::kJoin;
  if (IsComparison(token)) return Piece::kComparison;
  if (token.IsSymbol(u",") || token.IsSymbol(u";")) return Piece::kBetween;
  if (IsClauseWord(token) && !IsQualified(tokens, at)) return Piece::kBetween;
  return Piece::kOperand;
}

bool IsSelect(TokenSpan tokens) {
  const TokenSpan trimmed = Trimmed(tokens);
  return !trimmed.empty() && trimmed.front().IsWord(u"SELECT");
}

bool IsLiteral(TokenSpan tokens) {
  const TokenSpan trimmed = Trimmed(tokens);
  return trimmed.size() == 1 &&
         (trimmed[0].kind == TokenKind::kText || trimmed[0].kind == TokenKind::kTextParameter);
}

// Operands go on over blanks and brackets.
std::vector<Piece> Split(TokenSpan tokens, SelectTranslator select) {
  std::vector<Piece> pieces;
  size_t start = 0;
  QString operand;
  const auto end_operand = [&](size_t end) {
    if (!operand.isEmpty()) {
      pieces.push_back({Piece::kOperand, operand, IsLiteral(tokens.subspan(start, end - start))});
    }
    operand.clear();
  };
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (const Piece::Kind kind = KindOf(tokens, i); kind != Piece::kOperand) {
      end_operand(i);
      pieces.push_back({kind, tokens[i].text});
      start = i + 1;
    } else if (tokens[i].IsSymbol(u"(")) {
      const size_t close = ClosingBracket(tokens, i);
      const TokenSpan inner = tokens.subspan(i + 1, close - i - 1);
      operand += u'(' + (IsSelect(inner) ? select(inner) : TranslateExpression(inner, select)) + u')';
      i = close;
    } else {
      operand += tokens[i].kind == TokenKind::kText ? Quoted(tokens[i].text) : tokens[i].text;
    }
  }
  end_operand(tokens.size());
  return pieces;
}

// `text` in the place of what is between the blanks at the ends of `original`.
QString WithinBlanks(const QString& original, const QString& text) {
  const QString trimmed = original.trimmed();
  if (trimmed.isEmpty()) return text;
  const qsizetype at = original.indexOf(trimmed);
  return original.left(at) + text + original.mid(at + trimmed.size());
}

QString NullAsEmpty(const QString& operand) {
  return QStringLiteral("IFNULL(%1, '')").arg(operand.trimmed());
}

// Makes one operand of each run of operands joined by &.
std::vector<Piece> JoinOperands(const std::vector<Piece>& pieces) {
  std::vector<Piece> joined;
  for (size_t i = 0; i < pieces.size(); ++i) {
    const bool joins = pieces[i].kind == Piece::kJoin && i + 1 < pieces.size() && !joined.empty() &&
                       joined.back().kind == Piece::kOperand && pieces[i + 1].kind == Piece::kOperand;
    if (!joins) {
      joined.push_back(pieces[i]);
      continue;
    }
    QString text = NullAsEmpty(joined.back().text);
    const QString before = joined.back().text;
    QString last;
    for (; i + 1 < pieces.size() && pieces[i].kind == Piece::kJoin && pieces[i + 1].kind == Piece::kOperand;
         i += 2) {
      last = pieces[i + 1].text;
      text += QStringLiteral(" || ") + NullAsEmpty(last);
    }
    --i;
    const QString lead = before.left(before.indexOf(before.trimmed()));
    const QString trail = last.mid(last.lastIndexOf(last.trimmed()) + last.trimmed().size());
    joined.back() = {Piece::kOperand, lead + u'(' + text + u')' + trail, true};
  }
  return joined;
}

void CollateComparisons(std::vector<Piece>& pieces) {
  for (size_t i = 1; i + 1 < pieces.size(); ++i) {
    Piece& right = pieces[i + 1];
    if (pieces[i].kind != Piece::kComparison || right.kind != Piece::kOperand) continue;
    if (pieces[i - 1].is_text || right.is_text)
      right.text = WithinBlanks(right.text, right.text.trimmed() + kCollate);
  }
}

// Where the words behind a term of ORDER BY begin (ASC, DESC, NULLS ...).
size_t EndOfTerm(TokenSpan term) {
  for (size_t i = 1; i < term.size(); ++i) {
    if (IsQualified(term, i)) continue;
    if (term[i].IsWord(u"ASC") || term[i].IsWord(u"DESC") || term[i].IsWord(u"NULLS")) return i;
  }
  return term.size();
}

QString TranslateTerm(TokenSpan term, SelectTranslator select) {
  const size_t end = EndOfTerm(term);
  const TokenSpan expression = Trimmed(term.first(end));
  if (expression.empty()) ThrowSyntaxError(QStringLiteral("empty term"));
  QString text = TranslateExpression(expression, select);
  // A lone number is the position of a column.
  const bool position = expression.size() == 1 && expression[0].kind == TokenKind::kNumber;
  const bool collated =
      std::ranges::any_of(expression, [](const Token& token) { return token.IsWord(u"COLLATE"); });
  if (!position && !collated) text += kCollate;
  for (const Token& token : term.subspan(end))
    text += token.kind == TokenKind::kBlank ? QString() : u' ' + token.text;
  return text;
}

}  // namespace

QString TranslateExpression(TokenSpan tokens, SelectTranslator select) {
  std::vector<Piece> pieces = JoinOperands(Split(tokens, select));
  CollateComparisons(pieces);
  QString text;
  for (const Piece& piece : pieces) text += piece.text;
  return text;
}

QString TranslateTerms(TokenSpan tokens, SelectTranslator select) {
  QStringList terms;
  for (const TokenSpan term : SplitAtCommas(tokens)) terms.append(TranslateTerm(Trimmed(term), select));
  return terms.join(QStringLiteral(", "));
}

}  // namespace orv
