#include "records/inner/QueryShape.h"

#include <algorithm>

#include "base/RuntimeError.h"

namespace orv {
namespace {

const QString kRows = QStringLiteral("_rows");
const QString kLong = QStringLiteral("_long");

// The counter that is a table's key; empty if the table has none.
QString KeyColumn(ConnectionImpl& connection, const QString& table) {
  StatementUse statement(connection,
                         QStringLiteral("SELECT name, type FROM pragma_table_info(?1) WHERE pk = 1"));
  statement->Bind(1, Value(table));
  if (!statement->Step()) return {};
  const bool counter = statement->Column(1).Text().compare(u"INTEGER", Qt::CaseInsensitive) == 0;
  return counter ? statement->Column(0).Text() : QString();
}

// The position of the item that result column `column` belongs to, and whether it is one of a *.
const Query::Item* ItemOf(const Query& query, int column, int column_count) {
  const auto all = std::ranges::find_if(query.items, [](const Query::Item& item) { return item.all; });
  const int item_count = static_cast<int>(query.items.size());
  const int star = static_cast<int>(all - query.items.begin());
  const int behind = item_count - star - 1;
  if (all == query.items.end() || column < star) return column < item_count ? &query.items[column] : nullptr;
  return column >= column_count - behind ? &query.items[item_count - (column_count - column)] : nullptr;
}

std::vector<ResultColumn> ColumnsOf(const Query& query, const Statement& statement) {
  std::vector<ResultColumn> columns;
  for (int i = 0; i < statement.ColumnCount(); ++i) {
    const Query::Item* item = ItemOf(query, i, statement.ColumnCount());
    const QString name = statement.ColumnName(i);
    columns.push_back({name, item == nullptr ? QuotedName(name) : item->expression, statement.OriginTable(i),
                       statement.OriginColumn(i)});
  }
  return columns;
}

QueryKey KeyOf(ConnectionImpl& connection, const std::vector<ResultColumn>& columns) {
  QueryKey key;
  for (size_t i = 0; i < columns.size(); ++i) {
    const ResultColumn& column = columns[i];
    if (column.table.isEmpty() || KeyColumn(connection, column.table) != column.column) continue;
    key = {static_cast<int>(i), column.expression, column.table, column.column, column.table};
    if (key.table.endsWith(kRows)) key.long_table = key.table.chopped(kRows.size()) + kLong;
    break;
  }
  return key;
}

}  // namespace

QueryShape ExamineQuery(ConnectionImpl& connection, const Query& query) {
  const Statement statement(connection.database, query.sql);
  QueryShape shape;
  shape.columns = ColumnsOf(query, statement);
  if (query.plain) shape.key = KeyOf(connection, shape.columns);
  if (shape.key.index < 0)
    throw RuntimeError(kErrDatabase, QStringLiteral("Database error: the query has no key"));
  for (size_t i = 0; i < shape.columns.size(); ++i) {
    ResultColumn& column = shape.columns[i];
    column.is_long = column.table == shape.key.long_table &&
                     statement.DeclaredType(static_cast<int>(i)).contains(u"BLOB", Qt::CaseInsensitive);
  }
  return shape;
}

QString TieBreaker(ConnectionImpl& connection, const Query& query, const Statement& statement) {
  if (!query.plain) return {};
  const std::vector<ResultColumn> columns = ColumnsOf(query, statement);
  const QueryKey key = KeyOf(connection, columns);
  if (key.index >= 0) return key.expression;
  for (const ResultColumn& column : columns) {
    const QString name = column.table.isEmpty() ? QString() : KeyColumn(connection, column.table);
    if (!name.isEmpty()) return QuotedName(name);
  }
  return {};
}

}  // namespace orv
