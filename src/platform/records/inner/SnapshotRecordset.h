#pragma once

#include <vector>

#include "records/inner/ConnectionImpl.h"
#include "records/inner/RecordsetImpl.h"

namespace orv {

// A read-only recordset that holds all rows of its query in memory.
class SnapshotRecordset final : public RecordsetImpl {
 public:
  SnapshotRecordset(ConnectionImpl& connection, const QString& sql);

  int RecordCount() const override { return static_cast<int>(shown_.size()); }
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
  int Size() const override { return static_cast<int>(shown_.size()); }
  bool Load(int) override { return true; }
  void Post() override {}
  int Search(const QString& criterion, int start) override;
  void Release() override;

 private:
  using Row = std::vector<Value>;
  const Value& Current(int column) const;

  std::vector<Row> rows_;
  std::vector<size_t> shown_;  // rows that pass the filter
};

}  // namespace orv
