#pragma once

#include <QSet>
#include <vector>

#include "records/inner/LongBinary.h"
#include "records/inner/RecordsetImpl.h"
#include "records/inner/RowWriter.h"

namespace orv {

// A recordset of keys, attached to its connection: rows are read when it moves there and written one by one.
class EditableRecordset final : public RecordsetImpl {
 public:
  EditableRecordset(std::shared_ptr<ConnectionImpl> connection, const QString& sql);

  int RecordCount() const override { return alive_; }
  void SetFilter(const QString& criterion) override;

  Value Get(int column) override;
  void Set(int column, const Value& value) override;
  bool IsNull(int column) override;
  QByteArray Bytes(int column) override;
  QByteArray NextBytes(int column) override;
  std::int64_t ActualSize(int column) override;
  QByteArray GetChunk(int column, std::int64_t length) override;
  void AppendChunk(int column, const QByteArray& bytes) override;

  void AddNew() override;
  void Update() override;
  void CancelUpdate() override;
  void Delete() override;

 protected:
  int Size() const override { return static_cast<int>(keys_.size()); }
  bool Load(int position) override;
  void Post() override;
  bool IsAdding() const override { return adding_; }
  int Search(const QString& criterion, int start) override;
  void Release() override;

 private:
  struct Key {
    std::int64_t id;
    bool gone = false;
  };

  bool IsLong(int column) const { return shape_.columns[static_cast<size_t>(column)].is_long; }
  std::int64_t CurrentKey() const { return keys_[static_cast<size_t>(position_)].id; }
  void ReadKeys();
  void AppendKey(std::int64_t id);
  QString RowStatement() const;
  // The query's source with its condition as far as it joins tables, and the key as parameter.
  QString SourceOfKey(const QString& parameter) const;
  void Lose(int position);
  void DropChange();
  RowChange TakeChange() const;
  void PostNew();
  void PostChange();
  // Reads the row again after it was written; RuntimeError 3021 if it is gone.
  void Refresh();
  void NoteMembership(std::int64_t id, const RowChange& change, bool added);
  QString ExpressionOf(const QString& name) const;

  // What waits for column, null if nothing does.
  const Value* PendingValue(int column) const;
  const QByteArray* PendingBytes(int column) const;
  // Whether a column's value is had without the file's table of long binaries.
  bool IsInMemory(int column) const;

  std::shared_ptr<ConnectionImpl> connection_;
  Query query_;
  QueryShape shape_;
  RowWriter writer_;
  LongBinaryReader long_reader_;
  std::shared_ptr<Statement> row_statement_;

  std::vector<Key> keys_;
  QHash<std::int64_t, int> positions_;
  int alive_ = 0;
  // Keys that this recordset has added or changed so that its own condition leaves them out.
  QSet<std::int64_t> outside_;

  std::vector<Value> row_;  // short columns of the current row
  bool stale_ = false;      // the row was written since it was read
  RowChange pending_;
  std::map<int, QByteArray> chunks_;  // long binaries being appended to
  bool adding_ = false;
};

}  // namespace orv
