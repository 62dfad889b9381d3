#include "exchange/inner/Csv.h"

#include <QStringDecoder>

#include "base/RuntimeError.h"

namespace orv {
namespace {

[[noreturn]] void Refuse(int line, const QString& cause) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Line %1: %2").arg(line).arg(cause));
}

QString Decoded(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString text = decoder(bytes);
  if (const qsizetype zero = bytes.indexOf('\0'); zero >= 0)
    Refuse(static_cast<int>(bytes.left(zero).count('\n')) + 1,
           QStringLiteral("a zero byte stands in the text."));
  if (!decoder.hasError()) return text;
  // The first line that doesn't come back as it was.
  const QList<QByteArray> lines = bytes.split('\n');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (QString::fromUtf8(lines[i]).toUtf8() != lines[i])
      Refuse(static_cast<int>(i) + 1, QStringLiteral("the text is not UTF-8."));
  }
  Refuse(1, QStringLiteral("the text is not UTF-8."));
}

class Parser {
 public:
  explicit Parser(const QString& text) : text_(text), comma_(CommaOf(text)) {}

  std::vector<CsvRecord> Records() {
    std::vector<CsvRecord> records;
    while (!AtEnd()) {
      CsvRecord record{line_, {}};
      do record.fields.append(Field());
      while (Skip(comma_));
      if (!AtEnd() && !SkipLineEnd()) Refuse(line_, QStringLiteral("a quote stands where none may."));
      if (record.fields != QStringList{QString()}) records.push_back(record);
    }
    return records;
  }

 private:
  // Spreadsheets of some countries write semicolons, which then stand between the names in the first line.
  static QChar CommaOf(const QString& text) {
    const QString line = text.left(text.indexOf(u'\n'));
    return line.contains(u';') && !line.contains(u',') ? u';' : u',';
  }

  bool AtEnd() const { return at_ >= text_.size(); }
  bool Skip(QChar c) {
    if (AtEnd() || text_[at_] != c) return false;
    ++at_;
    return true;
  }
  bool SkipLineEnd() {
    const qsizetype before = at_;
    Skip(u'\r');
    if (!Skip(u'\n') && at_ == before) return false;
    ++line_;
    return true;
  }

  QString Field() {
    if (Skip(u'"')) return QuotedField();
    const qsizetype begin = at_;
    while (!AtEnd() && text_[at_] != comma_ && !QStringView(u"\"\r\n").contains(text_[at_])) ++at_;
    return text_.mid(begin, at_ - begin);
  }

  QString QuotedField() {
    const int first_line = line_;
    QString field;
    for (; !AtEnd(); ++at_) {
      if (text_[at_] == u'"' && (at_ + 1 == text_.size() || text_[at_ + 1] != u'"')) {
        ++at_;
        return field;
      }
      if (text_[at_] == u'"') ++at_;
      if (text_[at_] == u'\n') ++line_;
      field += text_[at_];
    }
    Refuse(first_line, QStringLiteral("a field in quotes has no end."));
  }

  const QString text_;
  const QChar comma_;
  qsizetype at_ = 0;
  int line_ = 1;
};

}  // namespace

std::vector<CsvRecord> ReadCsv(const QByteArray& bytes) {
  return Parser(Decoded(bytes)).Records();
}

QByteArray CsvLine(const QStringList& fields) {
  QStringList quoted;
  for (QString field : fields) {
    const bool plain =
        !field.contains(u',') && !field.contains(u'"') && !field.contains(u'\n') && !field.contains(u'\r');
    quoted.append(plain ? field : u'"' + field.replace(u'"', QStringLiteral("\"\"")) + u'"');
  }
  return quoted.join(u',').toUtf8() + "\r\n";
}

}  // namespace orv
