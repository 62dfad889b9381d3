#include "exchange/CopyRecord.h"

#include <algorithm>

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "exchange/inner/RowCopier.h"
#include "records/Recordset.h"

namespace orv {
namespace {

using schema::Table;

struct Place {
  std::int32_t set;
  std::int32_t number;
};

Place PlaceOf(const Connection& connection, const Table& table, std::int32_t key) {
  const Recordset row =
      Recordset::OpenSnapshot(connection, QStringLiteral("SELECT SetID, Nr FROM %1 WHERE %2 = %3")
                                              .arg(table.name, table.columns[0].name)
                                              .arg(key));
  if (row.IsEOF()) throw RuntimeError(kErrNoCurrentRecord);
  return {row["SetID"].Int32Or(0), row["Nr"].Int32Or(0)};
}

std::int32_t HighestNumber(const Connection& connection, const Table& table, std::int32_t set) {
  const Recordset highest = Recordset::OpenSnapshot(
      connection,
      QStringLiteral("SELECT Max(Nr) AS Highest FROM %1 WHERE SetID = %2").arg(table.name).arg(set));
  return highest["Highest"].Int32Or(0);
}

std::int32_t Copy(const Connection& connection, const Table& table, std::int32_t key, const Place& from,
                  const Place& to) {
  RowCopier::Values replaced{{QStringLiteral("Nr"), int{ToInt16(to.number)}}};
  const bool has_file_name = std::ranges::any_of(
      table.columns, [](const schema::Column& column) { return QLatin1String(column.name) == u"FileName"; });
  // As in a new record: the first save names the file.
  if (has_file_name) replaced[QStringLiteral("FileName")] = QString();
  RowCopier copier(connection, connection, RowCopier::Keys::kSame);
  return copier.CopyRecord(table, key, from.set, to.set, replaced);
}

}  // namespace

std::int32_t DuplicateRecord(const Connection& connection, const char* table_name, std::int32_t key) {
  const Table& table = TableOf(table_name);
  Transaction transaction(connection);
  const Place original = PlaceOf(connection, table, key);
  connection.Execute(QStringLiteral("UPDATE %1 SET Nr = Nr + 1 WHERE SetID = ?1 AND Nr > ?2").arg(table.name),
                     {original.set, original.number});
  const std::int32_t copy = Copy(connection, table, key, original, {original.set, original.number + 1});
  transaction.Commit();
  return copy;
}

std::int32_t CopyRecordToSet(const Connection& connection, const char* table_name, std::int32_t key,
                             std::int32_t set) {
  const Table& table = TableOf(table_name);
  Transaction transaction(connection);
  const Place original = PlaceOf(connection, table, key);
  const std::int32_t copy =
      Copy(connection, table, key, original, {set, HighestNumber(connection, table, set) + 1});
  transaction.Commit();
  return copy;
}

}  // namespace orv
