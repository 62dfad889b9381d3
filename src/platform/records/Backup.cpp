#include "records/Backup.h"

#include <QFile>
#include <chrono>
#include <memory>
#include <thread>

#include "base/RuntimeError.h"
#include "records/FileLock.h"
#include "records/inner/Sqlite.h"

namespace orv {
namespace {

constexpr int kPagesInPart = 256;
constexpr auto kPause = std::chrono::milliseconds(2);
constexpr auto kPauseForOthers = std::chrono::milliseconds(100);

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Database OpenFile(const QString& path, int flags) {
  sqlite3* opened = nullptr;
  const int code =
      sqlite3_open_v2(QFile::encodeName(path).constData(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  Database database(opened, &sqlite3_close);
  CheckDatabase(opened, code);
  sqlite3_extended_result_codes(opened, 1);
  return database;
}

void CheckSound(const QString& path) {
  const Database database = OpenFile(path, SQLITE_OPEN_READONLY);
  Statement check(database.get(), QStringLiteral("PRAGMA integrity_check"));
  const QString told = check.Step() ? check.Column(0).TextOrEmpty() : QString();
  if (told != u"ok") throw RuntimeError(kErrDatabase, QStringLiteral("Database error: %1").arg(told));
}

}  // namespace

bool BackUpDatabase(const QString& source, const QString& target, const std::function<bool()>& goes_on) {
  const std::shared_ptr<LockedFile> lock = LockShared(source);
  const Database from = OpenFile(source, SQLITE_OPEN_READONLY);
  {
    const Database to = OpenFile(target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3_backup* const backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
    if (backup == nullptr) ThrowDatabaseError(to.get(), sqlite3_errcode(to.get()));
    int code = SQLITE_OK;
    bool stopped = false;
    while (code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED) {
      stopped = !goes_on();
      if (stopped) break;
      code = sqlite3_backup_step(backup, kPagesInPart);
      std::this_thread::sleep_for(code == SQLITE_OK ? kPause : kPauseForOthers);
    }
    const int end = sqlite3_backup_finish(backup);
    if (stopped) return false;
    if (code != SQLITE_DONE) ThrowDatabaseError(to.get(), code);
    CheckDatabase(to.get(), end);
  }
  CheckSound(target);
  return true;
}

}  // namespace orv
