#include "records/Connection.h"

#include <QFile>
#include <QFileInfo>

#include "base/RuntimeError.h"
#include "records/DatabaseFile.h"
#include "records/inner/Collation.h"
#include "records/inner/ConnectionImpl.h"
#include "records/inner/Guards.h"
#include "records/inner/KnownObjects.h"

namespace orv {
namespace {

void ExecuteOn(sqlite3* database, const char* statement) {
  CheckDatabase(database,
                AgainstLocks([=] { return sqlite3_exec(database, statement, nullptr, nullptr, nullptr); }));
}

void OpenDatabaseFile(ConnectionImpl& connection, const QString& path, bool to_write) {
  const int access = to_write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &connection.database,
                                   access | SQLITE_OPEN_NOMUTEX, nullptr);
  CheckDatabase(connection.database, code);
  sqlite3* database = connection.database;
  sqlite3_extended_result_codes(database, 1);
  Guard(database);
  if (to_write && sqlite3_db_readonly(database, "main") == 1) {
    throw RuntimeError(kErrPathFileAccess,
                       QStringLiteral("Path/File access error: the file can only be read"));
  }
  RegisterCollation(database);
  const auto changed = [](void*, int, const char*, const char*, sqlite3_int64) { RowChanged(); };
  sqlite3_update_hook(database, changed, nullptr);
}

void SetUp(sqlite3* database) {
  // The first to read the file, and so what recovers it.
  ExecuteOn(database, "SELECT COUNT(*) FROM sqlite_schema");
  ExecuteOn(database, "PRAGMA journal_mode = DELETE");
  // Beyond FULL this waits for the journal's removal too, without which a lost power could undo an edit.
  ExecuteOn(database, "PRAGMA synchronous = EXTRA");
  ExecuteOn(database, "PRAGMA temp_store = MEMORY");
  ExecuteOn(database, "PRAGMA cache_size = -16000");
  ExecuteOn(database, "PRAGMA secure_delete = OFF");
}

// Judges the file while no other program can write to it.
void CheckRecovered(sqlite3* database, int descriptor) {
  ExecuteOn(database, "BEGIN");
  ExecuteOn(database, "SELECT COUNT(*) FROM sqlite_schema");
  CheckWhole(descriptor);
  ExecuteOn(database, "COMMIT");
}

}  // namespace

Connection Connection::Open(const QString& path) {
  return Open(path, true);
}

Connection Connection::OpenToRead(const QString& path) {
  return Open(path, false);
}

Connection Connection::Open(const QString& path, bool to_write) {
  Connection connection;
  auto impl = std::make_shared<ConnectionImpl>();
  impl->lock = LockShared(path);
  const int descriptor = DescriptorOf(*impl->lock);
  const QString file = QFileInfo(path).canonicalFilePath();
  // Nothing may write to a file that is refused, so it is judged before SQLite sees it. Only what a crash
  // left in the middle of a change must be recovered first.
  const bool interrupted = HasJournal(file);
  if (interrupted && !to_write) {
    throw RuntimeError(kErrDatabase, QStringLiteral("Database error: a journal lies beside the file"));
  }
  interrupted ? CheckMagic(descriptor) : CheckWhole(descriptor);
  OpenDatabaseFile(*impl, file, to_write);
  SetUp(impl->database);
  if (interrupted) CheckRecovered(impl->database, descriptor);
  connection.impl_ = std::move(impl);
  return connection;
}

void Connection::RequireObjects(const std::vector<KnownObject>& objects) const {
  if (!IsOpen()) throw RuntimeError(kErrObjectNotSet);
  CheckObjects(impl_->database, objects);
}

void Connection::RemoveIdleJournal() const {
  if (!IsOpen()) throw RuntimeError(kErrObjectNotSet);
  // The change of mode takes the file along, if it gets the right to write.
  ExecuteOn(impl_->database, "PRAGMA journal_mode = PERSIST");
  ExecuteOn(impl_->database, "PRAGMA journal_mode = DELETE");
}

void Connection::Execute(const QString& statement) const {
  if (!IsOpen()) throw RuntimeError(kErrObjectNotSet);
  ExecuteOn(impl_->database, statement.toUtf8().constData());
}

std::int64_t Connection::Execute(const QString& statement, const std::vector<Value>& values) const {
  if (!IsOpen()) throw RuntimeError(kErrObjectNotSet);
  const StatementUse use(*impl_, statement);
  for (std::size_t i = 0; i < values.size(); ++i) use->Bind(static_cast<int>(i) + 1, values[i]);
  while (use->Step()) {
  }
  return sqlite3_last_insert_rowid(impl_->database);
}

Transaction::Transaction(const Connection& connection) : Transaction(connection.impl_) {}

Transaction::Transaction(std::shared_ptr<ConnectionImpl> connection) : connection_(std::move(connection)) {
  if (connection_ == nullptr) throw RuntimeError(kErrObjectNotSet);
  // The outermost takes the right to write at once, so that another program's lock shows here and not
  // in the middle.
  ExecuteOn(connection_->database,
            connection_->transactions == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT orv_inner");
  ++connection_->transactions;
}

Transaction::~Transaction() {
  if (!open_) return;
  --connection_->transactions;
  // Some failures have rolled back everything already.
  if (sqlite3_get_autocommit(connection_->database) != 0) return;
  const char* statement =
      connection_->transactions == 0 ? "ROLLBACK" : "ROLLBACK TO orv_inner; RELEASE orv_inner";
  sqlite3_exec(connection_->database, statement, nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  ExecuteOn(connection_->database, connection_->transactions == 1 ? "COMMIT" : "RELEASE orv_inner");
  --connection_->transactions;
  open_ = false;
}

ReadScope::ReadScope(const Connection& connection) {
  if (connection.impl_ == nullptr || sqlite3_get_autocommit(connection.impl_->database) == 0) return;
  connection_ = connection.impl_;
  StatementUse(*connection_, QStringLiteral("BEGIN"))->Step();
}

ReadScope::~ReadScope() {
  if (connection_ == nullptr) return;
  // There is nothing to write, and so nothing that could fail.
  sqlite3_exec(connection_->database, "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace orv
