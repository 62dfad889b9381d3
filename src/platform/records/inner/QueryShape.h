#pragma once

#include <QString>
#include <vector>

#include "records/inner/ConnectionImpl.h"
#include "records/inner/Dialect.h"

namespace orv {

// What a query's result columns are made of.
struct ResultColumn {
  QString name;
  QString expression;    // what stands for it in a statement over the query's source
  QString table;         // the table under it, empty for an expression
  QString column;        // its name there
  bool is_long = false;  // a long binary in the row of the query's key
};

// The key of a query and where its rows lie.
struct QueryKey {
  int index = -1;      // among the result columns
  QString expression;  // as in the query's source
  QString table;       // T or T_rows
  QString column;
  QString long_table;  // T or T_long
};

struct QueryShape {
  std::vector<ResultColumn> columns;
  QueryKey key;
};

// RuntimeError 3000 for a query that can't be run or has no key among its columns.
QueryShape ExamineQuery(ConnectionImpl& connection, const Query& query);

// What a snapshot may add to the ORDER BY of its query as the last tie-breaker; empty if no key is known.
QString TieBreaker(ConnectionImpl& connection, const Query& query, const Statement& statement);

}  // namespace orv
