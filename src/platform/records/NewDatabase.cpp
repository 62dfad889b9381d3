#include "records/NewDatabase.h"

#include <QFile>
#include <memory>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "records/inner/Sqlite.h"

namespace orv {

void MakeDatabase(const QString& path, const QString& script) {
  if (FileExists(path)) throw RuntimeError(kErrPathFileAccess);
  sqlite3* opened = nullptr;
  const int code = sqlite3_open(QFile::encodeName(path).constData(), &opened);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
  CheckDatabase(opened, code);
  CheckDatabase(opened, sqlite3_exec(opened, script.toUtf8().constData(), nullptr, nullptr, nullptr));
}

}  // namespace orv
