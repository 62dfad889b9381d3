#pragma once

#include <sqlite3.h>

#include <QString>
#include <QStringList>

namespace orv {

// A file opened to be read beside the program's own connections, for as long as a read takes.
class Reader {
 public:
  explicit Reader(const QString& path);  // RuntimeError
  ~Reader();
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  QStringList FirstColumn(const QString& sql) const;
  // What SQLite finds wrong with the whole file, nothing for a sound one.
  QStringList Faults() const;
  // The same without a look at what the indexes hold.
  QStringList FaultsOfPages() const;

 private:
  QStringList FaultsTold(const QString& pragma) const;

  sqlite3* database_ = nullptr;
};

}  // namespace orv
