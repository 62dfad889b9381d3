#include "state/modData.h"

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "schema/Schema.h"

namespace orv::modData {

// A file that lacks a column of ours is not ours.
void CheckSchema(const Connection& connection) {
  for (const schema::Table& table : schema::Tables()) {
    connection.RequireColumns(QLatin1String(table.name), schema::ColumnNames(table));
  }
}

QString DatabasePath() {
  return JoinPath(App::Path(), QStringLiteral("orv.mdb"));
}

void OpenDatabase(const std::function<void()>& before_connection, const QString& path) {
  DatabaseFound = false;
  PicFilePath = JoinPath(App::Path(), QStringLiteral("orv.pic"));
  try {
    if (!FileExists(path)) return;
    ClearAttributes(path);
    before_connection();
    Connection connection = Connection::Open(path);
    CheckSchema(connection);
    cn = connection;
    DatabaseFound = true;
  } catch (const RuntimeError&) {
    // The words for the user are the same for a file that is missing and for one that is no database.
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
