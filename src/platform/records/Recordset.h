#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "base/Value.h"
#include "records/Connection.h"

namespace orv {

class RecordsetImpl;

// One column of the row on which a recordset stands: a light handle, valid as long as the recordset is
// open, that follows its moves.
class Field {
 public:
  Field(std::shared_ptr<RecordsetImpl> recordset, int column)
      : recordset_(std::move(recordset)), column_(column) {}

  // The value in the current row, a change that waits included. RuntimeError 3021 without a current row.
  Value Get() const;
  // Changes the current row; the change waits until Update, or until a move, a Find or Close posts it.
  // RuntimeError 3021 without a current row, 3000 on a snapshot.
  void Set(const Value& value) const;
  const Field& operator=(const Value& value) const {
    Set(value);
    return *this;
  }
  Field(const Field&) = default;
  Field& operator=(const Field&) = delete;

  // Conversions of Get(), with the errors of Value.
  std::int16_t Int16() const { return Get().Int16(); }
  std::int32_t Int32() const { return Get().Int32(); }
  double Number() const { return Get().Number(); }
  bool Bool() const { return Get().Bool(); }
  bool BoolOrFalse() const { return Get().BoolOrFalse(); }
  QString Text() const { return Get().Text(); }
  QString TextOrEmpty() const { return Get().TextOrEmpty(); }
  // The same, with a value that stands for Null.
  std::int16_t Int16Or(std::int16_t null) const { return IsNull() ? null : Int16(); }
  std::int32_t Int32Or(std::int32_t null) const { return IsNull() ? null : Int32(); }
  double NumberOr(double null) const { return IsNull() ? null : Number(); }
  QString TextOr(const QString& null) const { return IsNull() ? null : Text(); }
  // Null or not, without reading a long binary.
  bool IsNull() const;

  // All bytes of a long binary column at once, empty for Null.
  QByteArray Bytes() const;
  // The same of the row behind the current one, without a move; empty at the end.
  QByteArray NextBytes() const;
  // The same in pieces. ActualSize is the length in bytes, 0 for Null, and starts GetChunk over.
  std::int64_t ActualSize() const;
  // The next `length` bytes, fewer at the end. Reads no more of the file than asked for.
  QByteArray GetChunk(std::int64_t length) const;
  // The first AppendChunk since a move or an Update replaces the value, later ones append.
  void AppendChunk(const QByteArray& bytes) const;

 private:
  std::shared_ptr<RecordsetImpl> recordset_;
  int column_;
};

// The rows of a query. Copies share one recordset; a default one is none at all ("nothing").
// Queries come in the dialect of the program's texts (records/Dialect.h).
//
// A snapshot is read-only and disconnected: it holds its rows in memory, long binaries included, and
// never sees later changes. An editable recordset keeps the list of keys from its opening, in the
// query's order with the key as the last tie-breaker, and reads a row when it moves there; long binary
// columns are read only when asked for.
class Recordset {
 public:
  Recordset() = default;
  static Recordset OpenSnapshot(const Connection& connection, const QString& sql);
  // The key is the first result column that is the key of its table; changes go to that table's row.
  // RuntimeError 3000 for a query without such a column.
  static Recordset OpenEditable(const Connection& connection, const QString& sql);

  bool IsOpen() const;
  // Posts a pending change and releases the rows. Dropping the last reference without Close drops it.
  void Close();

  // Before the first row, behind the last one; both for a recordset without rows. (Named so since EOF
  // is a macro of the C library.)
  bool IsBOF() const;
  bool IsEOF() const;
  bool IsEmpty() const { return IsBOF() && IsEOF(); }
  int RecordCount() const;

  // Moves post a pending change first. MoveFirst and MoveLast on no rows are RuntimeError 3021, and so
  // are MoveNext at EOF and MovePrevious at BOF. Rows deleted elsewhere are skipped. A move onto the
  // same row reads it again.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();

  // From the current row on, inclusive and forward, the first row that meets a criterion such as
  // "SetID = 3", "Nr = 5" or "Title = 'x'"; EOF if there is none. On an editable recordset it is one
  // query and no walk, in the order of the keys, knowing only these. RuntimeError 3021 without rows.
  void Find(const QString& criterion);
  // MoveFirst and Find in one.
  void FindFirst(const QString& criterion);

  // On a snapshot: only the rows that meet a criterion; the empty text shows all again. Goes to the
  // first row that is left, or to EOF.
  void SetFilter(const QString& criterion);

  // The column of this name, without regard to case. RuntimeError 3265 for an unknown one.
  Field operator[](const QString& column) const;
  Field operator[](const char* column) const { return (*this)[QString::fromLatin1(column)]; }
  QStringList ColumnNames() const;

  // A new row that waits for Update and is then the current one, and last until the recordset is opened
  // again. A move without Update posts it too; a failure leaves no row behind.
  void AddNew();
  // Writes the pending change, durably. What would change nothing in the file writes nothing.
  void Update();
  // Drops the pending change or the row being added.
  void CancelUpdate();
  // Deletes the current row. There is no current row until the next move.
  void Delete();

 private:
  explicit Recordset(std::shared_ptr<RecordsetImpl> impl) : impl_(std::move(impl)) {}
  std::shared_ptr<RecordsetImpl> impl_;
};

}  // namespace orv
