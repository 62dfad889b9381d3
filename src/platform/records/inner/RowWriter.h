#pragma once

#include <map>

#include "records/inner/QueryShape.h"

namespace orv {

// Changes that wait in a row: result columns and what they are to hold.
using RowChange = std::map<int, Value>;

// Writes rows to the tables under a query: short columns to the row of the key, long binaries to theirs.
class RowWriter {
 public:
  RowWriter(std::shared_ptr<ConnectionImpl> connection, const QueryShape& shape)
      : connection_(std::move(connection)), shape_(shape) {}

  // RuntimeError 3000 for a column that can't be written: the key, an expression, another table's.
  void CheckWritable(int column) const;

  // Each is durable and whole or without effect. Changes only what differs in the file; false if the row is
  // gone.
  bool Update(std::int64_t key, const RowChange& change);
  // The new row's key.
  std::int64_t Insert(const RowChange& change);
  // Deleting a row that is gone is no error.
  void Delete(std::int64_t key);

  bool Exists(std::int64_t key);

 private:
  using Part = std::vector<RowChange::const_iterator>;
  const ResultColumn& Column(int index) const { return shape_.columns[static_cast<size_t>(index)]; }
  void Divide(const RowChange& change, Part* short_part, Part* long_part) const;
  int UpdateShort(std::int64_t key, const Part& part);
  const QString& UpdateStatement(const Part& part);
  std::int64_t InsertShort(const Part& part);
  void WriteLong(std::int64_t key, const ResultColumn& column, const Value& value);

  std::shared_ptr<ConnectionImpl> connection_;
  const QueryShape& shape_;
  // The columns of the last short update and its statement: a form writes the same ones again and again.
  std::vector<int> updated_;
  QString update_statement_;
};

}  // namespace orv
