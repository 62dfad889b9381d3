#include "records/inner/Dialect.h"

#include <algorithm>

#include "records/inner/Expression.h"
#include "records/inner/Tokens.h"

namespace orv {
namespace {

// A SELECT cut at the words that begin its clauses. Each part is without its own words.
struct Clauses {
  TokenSpan before_order;  // all up to ORDER BY
  TokenSpan columns, from, where, group, having, order;
  TokenSpan tail;  // LIMIT included
  bool compound = false;
};

struct ClauseStart {
  TokenSpan Clauses::* part;
  size_t begin, inner;  // with and without the clause's words
};

// Position behind the second of two words, 0 if it does not follow.
size_t BehindSecondWord(TokenSpan tokens, size_t first, QStringView second) {
  size_t i = first + 1;
  while (i < tokens.size() && tokens[i].kind == TokenKind::kBlank) ++i;
  return i < tokens.size() && tokens[i].IsWord(second) ? i + 1 : 0;
}

bool StartsClause(TokenSpan tokens, size_t i, ClauseStart* start) {
  const auto begin = [&](TokenSpan Clauses::* part, size_t inner) {
    *start = {part, i, inner};
    return inner != 0;
  };
  const Token& token = tokens[i];
  if (token.IsWord(u"FROM")) return begin(&Clauses::from, i + 1);
  if (token.IsWord(u"WHERE")) return begin(&Clauses::where, i + 1);
  if (token.IsWord(u"GROUP")) return begin(&Clauses::group, BehindSecondWord(tokens, i, u"BY"));
  if (token.IsWord(u"HAVING")) return begin(&Clauses::having, i + 1);
  if (token.IsWord(u"ORDER")) return begin(&Clauses::order, BehindSecondWord(tokens, i, u"BY"));
  if (token.IsWord(u"LIMIT")) return begin(&Clauses::tail, i);
  return false;
}

bool IsUnion(const Token& token) {
  return token.IsWord(u"UNION") || token.IsWord(u"EXCEPT") || token.IsWord(u"INTERSECT");
}

Clauses Cut(TokenSpan tokens) {
  Clauses clauses;
  std::vector<ClauseStart> starts{{&Clauses::columns, 0, 1}};
  size_t order_begin = tokens.size();
  for (size_t i = 1; i < tokens.size(); ++i) {
    ClauseStart start{};
    if (tokens[i].IsSymbol(u"(")) {
      i = ClosingBracket(tokens, i);
    } else if (IsQualified(tokens, i)) {
      continue;
    } else if (IsUnion(tokens[i])) {
      clauses.compound = true;
    } else if (StartsClause(tokens, i, &start)) {
      starts.push_back(start);
      if (start.part == &Clauses::order || start.part == &Clauses::tail)
        order_begin = std::min(order_begin, i);
    }
  }
  for (size_t k = 0; k < starts.size(); ++k) {
    const size_t end = k + 1 < starts.size() ? starts[k + 1].begin : tokens.size();
    clauses.*starts[k].part = Trimmed(tokens.subspan(starts[k].inner, end - starts[k].inner));
  }
  clauses.before_order = tokens.first(order_begin);
  return clauses;
}

bool HasWord(TokenSpan tokens, QStringView word) {
  return std::ranges::any_of(tokens, [&](const Token& token) { return token.IsWord(word); });
}

QString TranslateSelect(TokenSpan tokens);

QString Expression(TokenSpan tokens) {
  return TranslateExpression(tokens, TranslateSelect);
}

QString Terms(TokenSpan tokens) {
  return TranslateTerms(tokens, TranslateSelect);
}

Query::Item TranslateItem(TokenSpan item) {
  item = Trimmed(item);
  if (!item.empty() && item.back().IsSymbol(u"*")) return {Expression(item), {}, true};
  for (size_t i = 0; i < item.size(); ++i) {
    if (item[i].IsSymbol(u"(")) {
      i = ClosingBracket(item, i);
    } else if (item[i].IsWord(u"AS") && !IsQualified(item, i)) {
      return {Expression(Trimmed(item.first(i))), Expression(Trimmed(item.subspan(i + 1)))};
    }
  }
  return {Expression(item), {}};
}

// Terms that name a column of the result by its alias stand for its expression, so that they also
// hold where the columns are not read.
Tokens ResolveAliases(TokenSpan order, const std::vector<Query::Item>& items) {
  Tokens resolved(order.begin(), order.end());
  for (size_t i = 0; i < resolved.size(); ++i) {
    const bool name = resolved[i].kind == TokenKind::kWord || resolved[i].kind == TokenKind::kName;
    if (!name || IsQualified(order, i) || (i + 1 < order.size() && order[i + 1].IsSymbol(u"."))) continue;
    for (const Query::Item& item : items) {
      if (item.alias.isEmpty() || item.alias.compare(resolved[i].text, Qt::CaseInsensitive) != 0) continue;
      resolved[i] = {TokenKind::kFixed, item.expression};
      break;
    }
  }
  return resolved;
}

QString Clause(const char* words, const QString& text) {
  return text.isEmpty() ? QString() : QLatin1String(words) + text;
}

Query TranslateClauses(const Clauses& clauses) {
  Query query;
  for (const TokenSpan item : SplitAtCommas(clauses.columns)) query.items.push_back(TranslateItem(item));
  query.columns = Expression(clauses.columns);
  query.from = Clause("FROM ", Expression(clauses.from));
  query.where = Expression(clauses.where);
  query.source = query.from + Clause(" WHERE ", query.where);
  if (!clauses.group.empty()) query.source += Clause(" GROUP BY ", Terms(clauses.group));
  query.source += Clause(" HAVING ", Expression(clauses.having));
  query.joined = HasWord(clauses.from, u"JOIN") || SplitAtCommas(clauses.from).size() > 1;
  query.plain =
      clauses.group.empty() && clauses.tail.empty() && !HasWord(clauses.columns.first(1), u"DISTINCT");
  if (!clauses.order.empty()) query.order = Terms(ResolveAliases(clauses.order, query.items));
  return query;
}

Query TranslateCompound(const Clauses& clauses) {
  Query query;
  query.plain = false;
  if (!clauses.order.empty()) query.order = Terms(clauses.order);
  query.sql = Expression(clauses.before_order);
  return query;
}

Query TranslateTokens(TokenSpan tokens) {
  tokens = Trimmed(tokens);
  while (!tokens.empty() && tokens.back().IsSymbol(u";")) tokens = Trimmed(tokens.first(tokens.size() - 1));
  if (tokens.empty() || !tokens.front().IsWord(u"SELECT")) ThrowSyntaxError(QStringLiteral("not a SELECT"));
  const Clauses clauses = Cut(tokens);
  if (clauses.columns.empty()) ThrowSyntaxError(QStringLiteral("no columns"));
  Query query = clauses.compound ? TranslateCompound(clauses) : TranslateClauses(clauses);
  query.tail = Expression(clauses.tail);
  if (!clauses.compound) query.sql = QStringLiteral("SELECT ") + query.columns + Clause(" ", query.source);
  query.sql += Clause(" ORDER BY ", query.order) + Clause(" ", query.tail);
  return query;
}

QString TranslateSelect(TokenSpan tokens) {
  return TranslateTokens(tokens).sql;
}

// Whether a word of a criterion names a column.
bool NamesColumn(TokenSpan tokens, size_t i) {
  static constexpr QStringView kWords[] = {u"AND", u"OR", u"NOT", u"IS", u"NULL", u"LIKE", u"IN", u"BETWEEN"};
  if (tokens[i].kind == TokenKind::kName) return true;
  if (tokens[i].kind != TokenKind::kWord) return false;
  if (std::ranges::any_of(kWords, [&](QStringView word) { return tokens[i].IsWord(word); })) return false;
  return i + 1 == tokens.size() || !tokens[i + 1].IsSymbol(u"(");
}

QString WithoutBrackets(const Token& token) {
  return token.kind == TokenKind::kName ? token.text.mid(1, token.text.size() - 2) : token.text;
}

Value NumberOf(const QString& digits) {
  bool whole = false;
  const qlonglong number = digits.toLongLong(&whole);
  return whole ? Value(number) : Value(digits.toDouble());
}

}  // namespace

Query Translate(const QString& text) {
  return TranslateTokens(Tokenize(text));
}

QString TranslateCriterion(const QString& text) {
  return Expression(Tokenize(text));
}

Criterion TranslateCriterion(const QString& text, const std::function<QString(const QString&)>& column) {
  Criterion criterion;
  Tokens tokens = Tokenize(text);
  for (size_t i = 0; i < tokens.size(); ++i) {
    Token& token = tokens[i];
    const bool is_text = token.kind == TokenKind::kText;
    if (is_text || token.kind == TokenKind::kNumber) {
      criterion.values.push_back(is_text ? Value(token.text) : NumberOf(token.text));
      token = {is_text ? TokenKind::kTextParameter : TokenKind::kFixed,
               QStringLiteral("@v%1").arg(criterion.values.size())};
    } else if (NamesColumn(tokens, i) && !IsQualified(tokens, i) &&
               (i + 1 == tokens.size() || !tokens[i + 1].IsSymbol(u"."))) {
      const QString expression = column(WithoutBrackets(token));
      if (!expression.isEmpty()) token = {TokenKind::kFixed, expression};
    }
  }
  criterion.sql = Expression(tokens);
  if (criterion.sql.trimmed().isEmpty()) ThrowSyntaxError(QStringLiteral("empty criterion"));
  return criterion;
}

}  // namespace orv
