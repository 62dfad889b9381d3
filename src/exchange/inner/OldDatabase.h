#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "base/Value.h"

namespace orv {

struct OldTable {
  QString name;
  qint64 rows = 0;  // as the file tells
  QStringList columns;
};

// Takes what is read, table by table and row by row.
struct OldDatabaseSink {
  std::function<void(qint64 rows)> total;  // in all tables, first of all
  std::function<void(const OldTable& table)> table;
  std::function<void(const std::vector<Value>& row)> row;  // of the last table, a value for each column
};

// Reads a whole database of an older version, in a process of its own. RuntimeError 3000 where it is
// damaged, refused with the reason, or where nothing was read for `silence` milliseconds; 53 without the
// program that reads.
void ReadOldDatabase(const QString& path, const OldDatabaseSink& sink, int silence);

}  // namespace orv
