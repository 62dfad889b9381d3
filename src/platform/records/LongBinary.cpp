#include "records/inner/LongBinary.h"

#include <algorithm>

#include "records/inner/Guards.h"

namespace orv {

// `expression` names the column %1.
StatementUse LongBinaryReader::Select(const QString& expression, int column, std::int64_t key) {
  const QString& table = shape_.key.long_table;
  StatementUse statement(connection_, QStringLiteral("SELECT %1 FROM %2 WHERE %3 = ?1")
                                          .arg(expression.arg(QuotedName(ColumnName(column))),
                                               QuotedName(table), QuotedName(shape_.key.column)));
  statement->Bind(1, Value(static_cast<long long>(key)));
  return statement;
}

bool LongBinaryReader::IsNull(int column, std::int64_t key) {
  const StatementUse statement = Select(QStringLiteral("TYPEOF(%1) = 'null'"), column, key);
  return !statement->Step() || statement->Integer(0) != 0;
}

bool LongBinaryReader::Open(int column, std::int64_t key) {
  if (blob_ != nullptr && column_ == column && key_ == key) return true;
  Close();
  if (IsNull(column, key)) return false;
  const QByteArray table = shape_.key.long_table.toUtf8();
  const QByteArray name = ColumnName(column).toUtf8();
  const int code = AgainstLocks([&] {
    return sqlite3_blob_open(connection_.database, "main", table.constData(), name.constData(), key, 0,
                             &blob_);
  });
  if (code != SQLITE_OK) {
    Close();
    ThrowDatabaseError(connection_.database, code);
  }
  column_ = column;
  key_ = key;
  return true;
}

void LongBinaryReader::Close() {
  sqlite3_blob_close(blob_);
  blob_ = nullptr;
}

// The length of a blob is had without reading it.
std::int64_t LongBinaryReader::Size(int column, std::int64_t key) {
  Close();
  const StatementUse statement =
      Select(QStringLiteral("CASE TYPEOF(%1) WHEN 'blob' THEN LENGTH(%1) ELSE LENGTH(CAST(%1 AS BLOB)) END"),
             column, key);
  return statement->Step() ? statement->Integer(0) : 0;
}

QByteArray LongBinaryReader::Bytes(int column, std::int64_t key) {
  const StatementUse statement = Select(QStringLiteral("%1"), column, key);
  return statement->Step() ? statement->Bytes(0) : QByteArray();
}

QByteArray LongBinaryReader::Read(int column, std::int64_t key, std::int64_t offset, std::int64_t length) {
  for (bool again = true;; again = false) {
    if (!Open(column, key)) return {};
    const std::int64_t size = sqlite3_blob_bytes(blob_);
    const std::int64_t count = std::clamp<std::int64_t>(length, 0, std::max<std::int64_t>(size - offset, 0));
    QByteArray bytes(count, Qt::Uninitialized);
    const int code =
        sqlite3_blob_read(blob_, bytes.data(), static_cast<int>(count), static_cast<int>(offset));
    if (code != SQLITE_OK || offset + count >= size) Close();
    if (code == SQLITE_OK) return bytes;
    // The row was written meanwhile: its present bytes count.
    if (code != SQLITE_ABORT || !again) ThrowDatabaseError(connection_.database, code);
  }
}

Value LongBinaryReader::Whole(int column, std::int64_t key) {
  const StatementUse statement = Select(QStringLiteral("%1"), column, key);
  return statement->Step() ? statement->Column(0) : Value::Null();
}

}  // namespace orv
