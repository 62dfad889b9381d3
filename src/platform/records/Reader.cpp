#include "records/inner/Reader.h"

#include <QFile>

#include "records/inner/Collation.h"
#include "records/inner/Guards.h"
#include "records/inner/Sqlite.h"

namespace orv {

Reader::Reader(const QString& path) {
  const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &database_,
                                   SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  if (code != SQLITE_OK) {
    sqlite3_close(database_);
    ThrowDatabaseError(nullptr, code);
  }
  Guard(database_);
  sqlite3_progress_handler(database_, 0, nullptr, nullptr);
  RegisterCollation(database_);
}

Reader::~Reader() {
  sqlite3_close_v2(database_);
}

QStringList Reader::FirstColumn(const QString& sql) const {
  QStringList values;
  Statement statement(database_, sql);
  while (statement.Step()) values += statement.Column(0).TextOrEmpty();
  return values;
}

// What is wrong with the pages comes first, in one row. The rows of tables are not to be walked then: a page
// that is reached twice may be reached without end.
QStringList Reader::FaultsTold(const QString& pragma) const {
  QStringList faults;
  Statement statement(database_, pragma);
  while (statement.Step()) {
    const QStringList lines = statement.Column(0).TextOrEmpty().split(u'\n', Qt::SkipEmptyParts);
    if (lines.value(0).startsWith(QStringLiteral("*** in database"))) return lines.mid(1);
    faults += lines;
  }
  return faults == QStringList{QStringLiteral("ok")} ? QStringList() : faults;
}

QStringList Reader::Faults() const {
  return FaultsTold(QStringLiteral("PRAGMA integrity_check"));
}

QStringList Reader::FaultsOfPages() const {
  return FaultsTold(QStringLiteral("PRAGMA quick_check"));
}

}  // namespace orv
