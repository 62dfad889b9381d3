#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/Event.h"
#include "base/Value.h"
#include "records/KnownObject.h"

namespace orv {

class Recordset;
struct ConnectionImpl;

// A row of an open database was added, changed or deleted by this process, which may still be taken back. In
// the middle of that: no place to touch a database.
inline Event<> RowChanged;

// The connection to one database file, an SQLite 3 file. Copies share it; it closes with the last copy
// and the last recordset. One thread.
//
// The file may keep the long binary columns of a table T apart from its rows: T is then a view over
// T_rows (the short columns and the key) and T_long (the same key and the long ones). Queries and other
// programs see T with all its columns; recordsets write to the tables under it, so that an edit of a
// short column never touches a picture.
class Connection {
 public:
  Connection() = default;  // no connection

  // Opens an existing file for reading and writing, with a rollback journal and full synchronisation:
  // an Update is on the disk when it returns. A journal that a crash left is recovered first. Holds a
  // shared advisory lock on the file for the life of the connection.
  // RuntimeError 53 for no file, 75 where the file can't be opened, 70 where another program holds it for
  // long, 3000 for a file that is empty, no database, or cut short (the header's page count is held against
  // the file's size). A file that is refused is left as it was, byte for byte.
  // The file may come from anybody: its views and triggers may call no function with an effect, and memory,
  // depth and the time of a read have bounds.
  static Connection Open(const QString& path);
  // The same for reading alone: the file and its folder are never written to. RuntimeError 3000 for a file
  // with a journal beside it.
  static Connection OpenToRead(const QString& path);

  bool IsOpen() const { return impl_ != nullptr; }

  // Holds the file against the objects that it is to have: RuntimeError 3000 that names the table or view
  // that is missing, the object that has a name of theirs and is another, or the trigger that stands on one
  // of them and is none of theirs. What has other names is not looked at.
  void RequireObjects(const std::vector<KnownObject>& objects) const;

  // Removes a journal that nothing would be played back from, such as a kill may leave, unless another
  // program is about to write.
  void RemoveIdleJournal() const;

  // Runs one statement of SQLite's own dialect without a result.
  void Execute(const QString& statement) const;
  // The same with values for the parameters ?1, ?2 and so on; the key of the last row that was ever added.
  std::int64_t Execute(const QString& statement, const std::vector<Value>& values) const;

 private:
  static Connection Open(const QString& path, bool to_write);
  friend class Recordset;
  friend class Transaction;
  friend class ReadScope;
  std::shared_ptr<ConnectionImpl> impl_;
};

// What is done while one lives is one transaction. Rolled back by the destructor unless committed.
// Transactions nest: an inner one only marks a point within the outer.
class Transaction {
 public:
  explicit Transaction(const Connection& connection);
  explicit Transaction(std::shared_ptr<ConnectionImpl> connection);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  // Once, at the end. If it fails, nothing is committed and the destructor rolls back.
  void Commit();

 private:
  std::shared_ptr<ConnectionImpl> connection_;
  bool open_ = true;
};

// What is read while one lives is read under one lock on the file and shows one state of it, for a row of
// small reads. Other programs can't write meanwhile, so it is no place to wait for the user, and neither may
// this one. Within a transaction it does nothing.
class ReadScope {
 public:
  explicit ReadScope(const Connection& connection);
  ~ReadScope();
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

 private:
  std::shared_ptr<ConnectionImpl> connection_;  // nothing within a transaction
};

}  // namespace orv
