#include "records/inner/RowWriter.h"

#include <optional>

#include "base/RuntimeError.h"
#include "records/Connection.h"

namespace orv {

void RowWriter::CheckWritable(int index) const {
  const ResultColumn& column = Column(index);
  const bool writable =
      column.is_long || (column.table == shape_.key.table && column.column != shape_.key.column);
  if (!writable) {
    throw RuntimeError(kErrDatabase,
                       QStringLiteral("Database error: column %1 can't be changed").arg(column.name));
  }
}

void RowWriter::Divide(const RowChange& change, Part* short_part, Part* long_part) const {
  for (auto entry = change.begin(); entry != change.end(); ++entry) {
    (Column(entry->first).is_long ? long_part : short_part)->push_back(entry);
  }
}

bool RowWriter::Exists(std::int64_t key) {
  StatementUse statement(*connection_, QStringLiteral("SELECT 1 FROM %1 WHERE %2 = ?1")
                                           .arg(QuotedName(shape_.key.table), QuotedName(shape_.key.column)));
  statement->Bind(1, Value(static_cast<long long>(key)));
  return statement->Step();
}

bool RowWriter::Update(std::int64_t key, const RowChange& change) {
  Part short_part, long_part;
  Divide(change, &short_part, &long_part);
  // One statement is a transaction by itself.
  std::optional<Transaction> transaction;
  if (!long_part.empty()) transaction.emplace(connection_);
  const bool changed = !short_part.empty() && UpdateShort(key, short_part) > 0;
  if (!changed && !Exists(key)) return false;
  for (const auto& entry : long_part) WriteLong(key, Column(entry->first), entry->second);
  if (transaction) transaction->Commit();
  return true;
}

// Compares with the row in the file: where nothing differs, no row is touched and nothing is written.
const QString& RowWriter::UpdateStatement(const Part& part) {
  std::vector<int> columns;
  for (const auto& entry : part) columns.push_back(entry->first);
  if (columns == updated_) return update_statement_;
  QStringList assignments, differences;
  for (size_t i = 0; i < columns.size(); ++i) {
    const QString column = QuotedName(Column(columns[i]).column);
    assignments.append(QStringLiteral("%1 = ?%2").arg(column).arg(i + 1));
    differences.append(QStringLiteral("%1 IS NOT ?%2").arg(column).arg(i + 1));
  }
  update_statement_ = QStringLiteral("UPDATE %1 SET %2 WHERE %3 = ?%4 AND (%5)")
                          .arg(QuotedName(shape_.key.table), assignments.join(QStringLiteral(", ")),
                               QuotedName(shape_.key.column), QString::number(part.size() + 1),
                               differences.join(QStringLiteral(" OR ")));
  updated_ = std::move(columns);
  return update_statement_;
}

int RowWriter::UpdateShort(std::int64_t key, const Part& part) {
  StatementUse statement(*connection_, UpdateStatement(part));
  int parameter = 0;
  for (const auto& entry : part) statement->Bind(++parameter, entry->second);
  statement->Bind(++parameter, Value(static_cast<long long>(key)));
  statement->Step();
  return sqlite3_changes(connection_->database);
}

std::int64_t RowWriter::Insert(const RowChange& change) {
  Part short_part, long_part;
  Divide(change, &short_part, &long_part);
  std::optional<Transaction> transaction;
  if (!long_part.empty()) transaction.emplace(connection_);
  const std::int64_t key = InsertShort(short_part);
  for (const auto& entry : long_part) WriteLong(key, Column(entry->first), entry->second);
  if (transaction) transaction->Commit();
  return key;
}

std::int64_t RowWriter::InsertShort(const Part& part) {
  QStringList columns, parameters;
  for (size_t i = 0; i < part.size(); ++i) {
    columns.append(QuotedName(Column(part[i]->first).column));
    parameters.append(QStringLiteral("?%1").arg(i + 1));
  }
  const QString values =
      part.empty() ? QStringLiteral("DEFAULT VALUES")
                   : QStringLiteral("(%1) VALUES (%2)").arg(columns.join(u','), parameters.join(u','));
  StatementUse statement(*connection_,
                         QStringLiteral("INSERT INTO %1 %2").arg(QuotedName(shape_.key.table), values));
  int parameter = 0;
  for (const auto& entry : part) statement->Bind(++parameter, entry->second);
  statement->Step();
  return sqlite3_last_insert_rowid(connection_->database);
}

// A row of long binaries comes with the first of them; Null needs none. The length is compared first,
// so that only an equal one has its bytes read.
void RowWriter::WriteLong(std::int64_t key, const ResultColumn& column, const Value& value) {
  const bool in_place = shape_.key.long_table == shape_.key.table || value.IsNull();
  const QString sql = in_place ? QStringLiteral(
                                     "UPDATE %1 SET %2 = ?2 WHERE %3 = ?1 AND "
                                     "(LENGTH(%2) IS NOT LENGTH(?2) OR %2 IS NOT ?2)")
                               : QStringLiteral(
                                     "INSERT INTO %1 (%3, %2) VALUES (?1, ?2) ON CONFLICT (%3) "
                                     "DO UPDATE SET %2 = excluded.%2 WHERE "
                                     "LENGTH(%2) IS NOT LENGTH(excluded.%2) OR %2 IS NOT excluded.%2");
  StatementUse statement(*connection_, sql.arg(QuotedName(shape_.key.long_table), QuotedName(column.column),
                                               QuotedName(shape_.key.column)));
  statement->Bind(1, Value(static_cast<long long>(key)));
  statement->Bind(2, value);
  statement->Step();
}

void RowWriter::Delete(std::int64_t key) {
  StatementUse statement(*connection_, QStringLiteral("DELETE FROM %1 WHERE %2 = ?1")
                                           .arg(QuotedName(shape_.key.table), QuotedName(shape_.key.column)));
  statement->Bind(1, Value(static_cast<long long>(key)));
  statement->Step();
}

}  // namespace orv
