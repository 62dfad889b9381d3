#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "records/inner/Dialect.h"
#include "records/inner/Sqlite.h"

namespace orv {

// A criterion over rows in memory. SQLite judges it as it would in a query.
class RowCriterion {
 public:
  // RuntimeError 3265 for a name that is none of the columns, 3000 for one that can't be understood.
  RowCriterion(const QString& text, const QStringList& columns);
  ~RowCriterion();
  RowCriterion(const RowCriterion&) = delete;
  RowCriterion& operator=(const RowCriterion&) = delete;
  bool IsMetBy(const std::vector<Value>& row);

 private:
  struct Engine;  // a database in memory without tables

  Criterion criterion_;
  struct NamedColumn {
    int index;      // in a row
    int parameter;  // that stands for it
  };
  std::vector<NamedColumn> columns_;
  std::shared_ptr<Engine> engine_;
  QString sql_;
  std::unique_ptr<Statement> statement_;
};

}  // namespace orv
