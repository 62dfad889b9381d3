#include "records/inner/Sqlite.h"

#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstring>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "records/inner/Guards.h"

namespace orv {

namespace {

QString Told(sqlite3* database, int code) {
  return QString::fromUtf8(database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code));
}

// What the system says against it, in brackets: what it told SQLite, or else why no journal can be made in
// the file's folder. Of a file that can't be opened SQLite keeps the outcome of its last try alone.
QString ToldBySystem(sqlite3* database, int code) {
  if (database == nullptr) return {};
  int reason = 0;
  if ((code & 0xFF) == SQLITE_IOERR) {
    reason = sqlite3_system_errno(database);
  } else if (const char* file = sqlite3_db_filename(database, "main"); file != nullptr && *file != '\0') {
    const QByteArray folder = QFile::encodeName(FolderPart(QFile::decodeName(file)));
    if (::access(folder.constData(), W_OK) != 0) reason = errno;
  }
  return reason == 0 ? QString() : QStringLiteral(" (%1)").arg(QString::fromLocal8Bit(std::strerror(reason)));
}

}  // namespace

void ThrowDatabaseError(sqlite3* database, int code) {
  switch (code & 0xFF) {
    case SQLITE_FULL:
      throw RuntimeError(kErrDiskFull);
    case SQLITE_NOMEM:
      throw RuntimeError(kErrOutOfMemory);
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_IOERR:
      throw RuntimeError(kErrPathFileAccess, QStringLiteral("Path/File access error: ") +
                                                 Told(database, code) + ToldBySystem(database, code));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw RuntimeError(kErrPermissionDenied,
                         QStringLiteral("Permission denied: another program is using the database"));
    case SQLITE_INTERRUPT:
      throw RuntimeError(kErrDatabase, QStringLiteral("Database error: reading the file doesn't end"));
    default:
      throw RuntimeError(kErrDatabase, QStringLiteral("Database error: ") + Told(database, code));
  }
}

void CheckDatabase(sqlite3* database, int code) {
  if (code != SQLITE_OK) ThrowDatabaseError(database, code);
}

Statement::Statement(sqlite3* database, const QString& sql) : database_(database) {
  const QByteArray text = sql.toUtf8();
  CheckDatabase(database, sqlite3_prepare_v3(database, text.constData(), static_cast<int>(text.size()),
                                             SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
  if (statement_ == nullptr)
    throw RuntimeError(kErrDatabase, QStringLiteral("Database error: empty statement"));
}

Statement::~Statement() {
  sqlite3_finalize(statement_);
}

void Statement::Bind(int parameter, const Value& value) {
  struct Binder {
    sqlite3_stmt* statement;
    int parameter;
    int operator()(std::monostate) const { return sqlite3_bind_null(statement, parameter); }
    int operator()(std::int64_t number) const { return sqlite3_bind_int64(statement, parameter, number); }
    int operator()(double number) const { return sqlite3_bind_double(statement, parameter, number); }
    int operator()(const QString& text) const {
      const QByteArray utf8 = text.toUtf8();
      return sqlite3_bind_text64(statement, parameter, utf8.constData(),
                                 static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    int operator()(const QByteArray& bytes) const {
      return sqlite3_bind_blob64(statement, parameter, bytes.constData(),
                                 static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC);
    }
  };
  CheckDatabase(database_, std::visit(Binder{statement_, parameter}, value.data()));
}

void Statement::Bind(int parameter, const QByteArray& bytes) {
  CheckDatabase(database_, sqlite3_bind_blob64(statement_, parameter, bytes.constData(),
                                               static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC));
}

int Statement::ParameterIndex(const QString& name) const {
  return sqlite3_bind_parameter_index(statement_, name.toUtf8().constData());
}

int Statement::TryStep() {
  if (!IsBusy()) begun_ = std::chrono::steady_clock::now();
  if (sqlite3_stmt_readonly(statement_) == 0) return sqlite3_step(statement_);
  const ReadDeadline deadline(begun_);
  return sqlite3_step(statement_);
}

bool Statement::Step() {
  const int code = AgainstLocks([this] { return TryStep(); });
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  ThrowDatabaseError(database_, code);
}

void Statement::Reset() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

QString Statement::ColumnName(int column) const {
  const QString name = QString::fromUtf8(sqlite3_column_name(statement_, column));
  // Of two columns of one name in a nested join the library calls one "name:1", whichever is selected.
  const QString origin = OriginColumn(column);
  return name.section(u':', 0, 0) == origin ? origin : name;
}

Value Statement::Column(int column) const {
  switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_INTEGER:
      return Value(static_cast<long long>(sqlite3_column_int64(statement_, column)));
    case SQLITE_FLOAT:
      return Value(sqlite3_column_double(statement_, column));
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
      return Value(QString::fromUtf8(text, sqlite3_column_bytes(statement_, column)));
    }
    case SQLITE_BLOB:
      return Value(Bytes(column));
    default:
      return Value::Null();
  }
}

QByteArray Statement::Bytes(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
  return {bytes, sqlite3_column_bytes(statement_, column)};
}

QString Statement::OriginTable(int column) const {
  return QString::fromUtf8(sqlite3_column_table_name(statement_, column));
}

QString Statement::OriginColumn(int column) const {
  return QString::fromUtf8(sqlite3_column_origin_name(statement_, column));
}

QString Statement::DeclaredType(int column) const {
  return QString::fromUtf8(sqlite3_column_decltype(statement_, column));
}

QString QuotedName(const QString& name) {
  QString quoted = name;
  return u'"' + quoted.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

}  // namespace orv
