#include "records/inner/Tokens.h"

namespace orv {
namespace {

bool StartsName(QChar c) {
  return c.isLetter() || c == u'_' || c.isSurrogate();
}
bool ContinuesName(QChar c) {
  return StartsName(c) || c.isDigit() || c.isMark() || c == u'$';
}

class Tokenizer {
 public:
  explicit Tokenizer(const QString& text) : text_(text) {}

  Tokens Run() {
    while (at_ < text_.size()) Next();
    if (depth_ != 0) ThrowSyntaxError(QStringLiteral("unclosed bracket"));
    return std::move(tokens_);
  }

 private:
  QChar Peek(qsizetype ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : QChar(); }

  void Next() {
    const QChar c = Peek();
    if (c.isSpace()) {
      Take(TokenKind::kBlank, [](QChar d) { return d.isSpace(); });
    } else if (c == u'"' || c == u'\'') {
      TakeLiteral(c);
    } else if (c == u'[') {
      TakeThrough(QStringLiteral("]"), TokenKind::kName);
    } else if (c == u'`') {
      ++at_;
      TakeThrough(QStringLiteral("`"), TokenKind::kName, 1);
    } else if (c == u'-' && Peek(1) == u'-') {
      Take(TokenKind::kBlank, [](QChar d) { return d != u'\n'; });
      tokens_.back().text = QStringLiteral(" ");
    } else if (c == u'/' && Peek(1) == u'*') {
      TakeThrough(QStringLiteral("*/"), TokenKind::kBlank);
      tokens_.back().text = QStringLiteral(" ");
    } else if (StartsName(c)) {
      Take(TokenKind::kWord, ContinuesName);
    } else if (c.isDigit() || (c == u'.' && Peek(1).isDigit())) {
      TakeNumber();
    } else {
      TakeSymbol();
    }
  }

  template <class Predicate>
  void Take(TokenKind kind, Predicate belongs) {
    const qsizetype start = at_;
    while (at_ < text_.size() && belongs(text_[at_])) ++at_;
    tokens_.push_back({kind, text_.mid(start, at_ - start)});
  }

  // Up to and including an end; `before` characters of it have been passed.
  void TakeThrough(const QString& end, TokenKind kind, qsizetype before = 0) {
    const qsizetype found = text_.indexOf(end, at_);
    if (found < 0) ThrowSyntaxError(QStringLiteral("missing %1").arg(end));
    tokens_.push_back({kind, text_.mid(at_ - before, found + end.size() - at_ + before)});
    at_ = found + end.size();
  }

  // A doubled quote within stands for one.
  void TakeLiteral(QChar quote) {
    QString literal;
    for (++at_;; ++at_) {
      if (at_ >= text_.size()) ThrowSyntaxError(QStringLiteral("unclosed text"));
      if (text_[at_] == quote && Peek(1) != quote) break;
      if (text_[at_] == quote) ++at_;
      literal += text_[at_];
    }
    ++at_;
    tokens_.push_back({TokenKind::kText, literal, quote});
  }

  void TakeNumber() {
    const qsizetype start = at_;
    while (Peek().isDigit() || Peek() == u'.') ++at_;
    if (Peek().toLower() == u'e') {
      const qsizetype sign = Peek(1) == u'-' || Peek(1) == u'+' ? 1 : 0;
      if (Peek(1 + sign).isDigit()) {
        at_ += 1 + sign;
        while (Peek().isDigit()) ++at_;
      }
    }
    tokens_.push_back({TokenKind::kNumber, text_.mid(start, at_ - start)});
  }

  void TakeSymbol() {
    static constexpr QStringView kPairs[] = {u"<>", u"<=", u">=", u"!=", u"==", u"||"};
    qsizetype size = 1;
    for (const QStringView pair : kPairs) {
      if (QStringView(text_).mid(at_, 2) == pair) size = 2;
    }
    const QString symbol = text_.mid(at_, size);
    at_ += size;
    if (symbol == u"(") ++depth_;
    if (symbol == u")" && --depth_ < 0) ThrowSyntaxError(QStringLiteral("bracket without a beginning"));
    tokens_.push_back({TokenKind::kSymbol, symbol});
  }

  const QString& text_;
  qsizetype at_ = 0;
  int depth_ = 0;
  Tokens tokens_;
};

}  // namespace

void ThrowSyntaxError(const QString& cause) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Syntax error in query: %1").arg(cause));
}

Tokens Tokenize(const QString& text) {
  return Tokenizer(text).Run();
}

TokenSpan Trimmed(TokenSpan tokens) {
  while (!tokens.empty() && tokens.front().kind == TokenKind::kBlank) tokens = tokens.subspan(1);
  while (!tokens.empty() && tokens.back().kind == TokenKind::kBlank) tokens = tokens.first(tokens.size() - 1);
  return tokens;
}

size_t ClosingBracket(TokenSpan tokens, size_t open) {
  int depth = 0;
  for (size_t i = open; i < tokens.size(); ++i) {
    if (tokens[i].IsSymbol(u"(")) ++depth;
    if (tokens[i].IsSymbol(u")") && --depth == 0) return i;
  }
  ThrowSyntaxError(QStringLiteral("unclosed bracket"));
}

std::vector<TokenSpan> SplitAtCommas(TokenSpan tokens) {
  std::vector<TokenSpan> parts;
  size_t start = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].IsSymbol(u"(")) {
      i = ClosingBracket(tokens, i);
    } else if (tokens[i].IsSymbol(u",")) {
      parts.push_back(tokens.subspan(start, i - start));
      start = i + 1;
    }
  }
  parts.push_back(tokens.subspan(start));
  return parts;
}

bool IsQualified(TokenSpan tokens, size_t at) {
  return at > 0 && tokens[at - 1].IsSymbol(u".");
}

}  // namespace orv
