#pragma once

#include <QByteArray>
#include <QStringList>
#include <vector>

// Tables as text: UTF-8, fields between commas, a field with a comma, a quote or a line's end in quotes (RFC
// 4180).
namespace orv {

struct CsvRecord {
  int line;  // on which it begins, counted from 1
  QStringList fields;
};

// RuntimeError 3000 with the line for a text that is no such table. Lines may end in CR LF or LF, and a mark
// of the byte order may stand in front. Empty lines are no records. Semicolons are taken for commas where the
// first line has none.
std::vector<CsvRecord> ReadCsv(const QByteArray& bytes);

// One record with its line's end.
QByteArray CsvLine(const QStringList& fields);

}  // namespace orv
