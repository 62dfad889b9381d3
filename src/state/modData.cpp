#include "state/modData.h"

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "records/KnownObject.h"
#include "schema/Schema.h"

namespace orv::modData {

bool HasOriginals(const Connection& connection) {
  const QString query = QStringLiteral("SELECT name FROM sqlite_schema WHERE name = '%1'");
  const QString table = QLatin1String(schema::Originals().name);
  return !Recordset::OpenSnapshot(connection, query.arg(table)).IsEmpty();
}

// A file in which something else bears a name of ours is not ours: a view in a table's place could have no
// end, and a trigger could change any row.
void CheckSchema(const Connection& connection) {
  std::vector<KnownObject> objects;
  const std::vector<schema::Object> older = schema::Objects(schema::Age::kOlder);
  for (const schema::Object& object : schema::Objects()) {
    const QString& old = older[objects.size()].sql;
    objects.push_back({QLatin1String(object.type), object.name, {object.sql, old}});
  }
  if (HasOriginals(connection)) {
    for (const schema::Object& object : schema::OriginalObjects()) {
      objects.push_back({QLatin1String(object.type), object.name, {object.sql}});
    }
  }
  connection.RequireObjects(objects);
}

namespace {

void Connect(const QString& path) {
  const Connection connection = Connection::Open(path);
  CheckSchema(connection);
  cn = connection;
  DatabaseFound = true;
}

}  // namespace

QString DatabasePath() {
  return JoinPath(App::Path(), QStringLiteral("orv.mdb"));
}

void OpenDatabase(const std::function<void()>& before_connection, const QString& path) {
  DatabaseFound = false;
  OpeningError.clear();
  PicFilePath = JoinPath(App::Path(), QStringLiteral("orv.pic"));
  if (!FileExists(path)) return;
  bool closed = true;
  try {
    ClearAttributes(path);
    before_connection();
    closed = false;
    Connect(path);
    OpenedPath = path;
  } catch (const RuntimeError& error) {
    // The words for the user are the same for a file that is missing and for one that is no database.
    OpeningError = error.Description();
    if (!closed && error.Number() == kErrPermissionDenied) throw;
  }
}

Recordset OpenSnapshot(const QString& sql) {
  return Recordset::OpenSnapshot(cn, sql);
}

void OpenEditable(const QString& sql, Recordset& recordset) {
  recordset = Recordset();
  recordset = Recordset::OpenEditable(cn, sql);
}

bool RecordExists(const QString& sql) {
  return !OpenSnapshot(sql).IsEmpty();
}

void FindSet(std::int32_t set_id) {
  if (rsSet.IsEmpty()) return;
  rsSet.FindFirst(QStringLiteral("SetID = %1").arg(set_id));
}

}  // namespace orv::modData
