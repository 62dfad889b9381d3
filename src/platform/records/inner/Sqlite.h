#pragma once

#include <sqlite3.h>

#include <QString>
#include <chrono>

#include "base/Value.h"

namespace orv {

// Throws the RuntimeError that stands for a result code of SQLite; its description names the cause.
[[noreturn]] void ThrowDatabaseError(sqlite3* database, int code);

// Throws for any code but SQLITE_OK.
void CheckDatabase(sqlite3* database, int code);

// One prepared statement.
class Statement {
 public:
  Statement(sqlite3* database, const QString& sql);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // Parameters count from 1. Bytes are not copied: they must outlive the last Step.
  void Bind(int parameter, const Value& value);
  void Bind(int parameter, const QByteArray& bytes);
  int ParameterIndex(const QString& name) const;
  // True on a row, false at the end. What only reads has a time limit.
  bool Step();
  // Gives up the rows and with them any lock on the file; Reset gives up the parameters too.
  void Rewind() { sqlite3_reset(statement_); }
  void Reset();
  bool IsBusy() const { return sqlite3_stmt_busy(statement_) != 0; }

  // Columns count from 0.
  int ColumnCount() const { return sqlite3_column_count(statement_); }
  QString ColumnName(int column) const;
  Value Column(int column) const;
  QByteArray Bytes(int column) const;  // of a text too; empty for Null
  std::int64_t Integer(int column) const { return sqlite3_column_int64(statement_, column); }
  bool IsNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
  // Table and column that a result column shows, through views and joins; empty for an expression.
  QString OriginTable(int column) const;
  QString OriginColumn(int column) const;
  QString DeclaredType(int column) const;

 private:
  int TryStep();

  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
  std::chrono::steady_clock::time_point begun_;
};

// A name for use in a statement, whatever characters it has.
QString QuotedName(const QString& name);

}  // namespace orv
