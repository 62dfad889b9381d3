#pragma once

#include <QHash>
#include <QStringList>
#include <vector>

#include "base/Value.h"

namespace orv {

// What both kinds of recordset share: the columns' names and the walk over positions 0 to Size() - 1,
// with -1 before the first row and Size() behind the last. A position may have lost its row.
class RecordsetImpl {
 public:
  virtual ~RecordsetImpl() = default;

  bool IsOpen() const { return open_; }
  void Close();

  bool IsBOF() const;
  bool IsEOF() const;
  virtual int RecordCount() const = 0;
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  void Find(const QString& criterion);
  void FindFirst(const QString& criterion);
  virtual void SetFilter(const QString& criterion) = 0;

  int ColumnIndex(const QString& name) const;  // RuntimeError 3265
  const QStringList& ColumnNames() const { return names_; }

  virtual Value Get(int column) = 0;
  virtual void Set(int column, const Value& value) = 0;
  virtual bool IsNull(int column) = 0;
  virtual QByteArray Bytes(int column) = 0;
  virtual QByteArray NextBytes(int column) = 0;
  virtual std::int64_t ActualSize(int column) = 0;
  virtual QByteArray GetChunk(int column, std::int64_t length) = 0;
  virtual void AppendChunk(int column, const QByteArray& bytes) = 0;

  virtual void AddNew() = 0;
  virtual void Update() = 0;
  virtual void CancelUpdate() = 0;
  virtual void Delete() = 0;

 protected:
  void SetColumnNames(const QStringList& names);
  void CheckOpen() const;     // RuntimeError 91
  void CheckCurrent() const;  // RuntimeError 3021 without a current row
  void FindFrom(int position, const QString& criterion);
  // The nearest position from `position` on that has a row, or the end on that side. False at an end.
  bool Step(int position, int direction);

  virtual int Size() const = 0;
  // Makes the row at a position the current one; false if it has lost its row.
  virtual bool Load(int position) = 0;
  // Writes what waits.
  virtual void Post() = 0;
  virtual bool IsAdding() const { return false; }
  // The first position from `start` on that meets a criterion, or -1.
  virtual int Search(const QString& criterion, int start) = 0;
  virtual void Release() = 0;

  int position_ = -1;
  bool current_ = false;  // stands on a row
  // Where GetChunk goes on in each column of the row.
  QHash<int, std::int64_t> offsets_;

 private:
  bool open_ = true;
  QStringList names_;
  QHash<QString, int> indexes_;
};

}  // namespace orv
