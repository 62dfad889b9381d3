#pragma once

#include <sqlite3.h>

#include "records/inner/QueryShape.h"

namespace orv {

// Reads the long binaries of the rows under a query, no more of the file than asked for.
class LongBinaryReader {
 public:
  LongBinaryReader(ConnectionImpl& connection, const QueryShape& shape)
      : connection_(connection), shape_(shape) {}
  ~LongBinaryReader() { Close(); }
  LongBinaryReader(const LongBinaryReader&) = delete;
  LongBinaryReader& operator=(const LongBinaryReader&) = delete;

  bool IsNull(int column, std::int64_t key);
  std::int64_t Size(int column, std::int64_t key);  // 0 for Null
  // The bytes from `offset` on, fewer at the end.
  QByteArray Read(int column, std::int64_t key, std::int64_t offset, std::int64_t length);
  Value Whole(int column, std::int64_t key);
  QByteArray Bytes(int column, std::int64_t key);  // all, of a text too; empty for Null

  // What is read in pieces stays open between reads until its end, so that each goes on where the last
  // one was. Meanwhile other programs can't write.
  void Close();

 private:
  const QString& ColumnName(int column) const { return shape_.columns[static_cast<size_t>(column)].column; }
  StatementUse Select(const QString& expression, int column, std::int64_t key);
  // False for Null.
  bool Open(int column, std::int64_t key);

  ConnectionImpl& connection_;
  const QueryShape& shape_;
  sqlite3_blob* blob_ = nullptr;
  int column_ = -1;
  std::int64_t key_ = 0;
};

}  // namespace orv
