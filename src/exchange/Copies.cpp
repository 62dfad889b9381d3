#include "exchange/Copies.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "records/Backup.h"
#include "records/Compaction.h"
#include "records/DatabaseFile.h"
#include "records/FileLock.h"
#include "records/Integrity.h"
#include "state/modData.h"

namespace orv {
namespace {

// "backups/orv-2026-01-31.mdb" for "orv.mdb".
class Names {
 public:
  explicit Names(const QString& database)
      : file_(database), folder_(JoinPath(file_.absolutePath(), QStringLiteral("backups"))) {}

  const QString& Folder() const { return folder_; }
  QString Of(const QString& mark) const {
    return JoinPath(folder_, QStringLiteral("%1-%2.%3").arg(file_.completeBaseName(), mark, file_.suffix()));
  }
  QString OfDay(const QDate& day) const { return Of(day.toString(Qt::ISODate)); }
  bool IsOfADay(const QString& name) const {
    const qsizetype date = file_.completeBaseName().size() + 1;
    const QDate day = QDate::fromString(name.mid(date, 10), Qt::ISODate);
    return day.isValid() && JoinPath(folder_, name) == OfDay(day);
  }

 private:
  const QFileInfo file_;
  const QString folder_;
};

// A sound database of this program.
void CheckCopy(const QString& copy) {
  if (const QStringList faults = FaultsOf(copy, {}); !faults.isEmpty())
    throw RuntimeError(kErrDatabase, QStringLiteral("Database error: %1").arg(faults.constFirst()));
  modData::CheckSchema(Connection::OpenToRead(copy));
}

}  // namespace

QStringList CopiesOf(const QString& database) {
  const Names names(database);
  QStringList copies;
  for (const QString& name : QDir(names.Folder()).entryList(QDir::Files, QDir::Name | QDir::Reversed)) {
    if (names.IsOfADay(name)) copies.append(JoinPath(names.Folder(), name));
  }
  return copies;
}

bool HasRoomForCopy(const QString& database, const QDate& day) {
  if (FileExists(Names(database).OfDay(day))) return true;
  std::error_code unknown;
  const std::filesystem::path file = QFile::encodeName(database).toStdString();
  const std::filesystem::space_info disk = std::filesystem::space(file, unknown);
  return unknown || disk.available >= 2 * static_cast<std::uintmax_t>(QFileInfo(database).size());
}

void MakeDailyCopy(const QString& database, const QDate& day, const std::function<bool()>& goes_on) {
  const Names names(database);
  const QString copy = names.OfDay(day);
  if (FileExists(copy)) return;
  if (!QDir().mkpath(names.Folder())) throw RuntimeError(kErrPathFileAccess);
  struct Stopped {};
  try {
    ReplaceFile(copy, [&](const QString& temporary) {
      if (!BackUpDatabase(database, temporary, goes_on)) throw Stopped();
    });
  } catch (const Stopped&) {
    return;
  }
  Synchronise(names.Folder());
  for (const QString& old : CopiesOf(database).mid(kCopiesKept)) RemoveFile(old);
}

QString RestoreCopy(const QString& database, const QString& copy) {
  if (!FileExists(copy)) throw RuntimeError(kErrFileNotFound);
  CheckCopy(copy);
  const Names names(database);
  if (!QDir().mkpath(names.Folder())) throw RuntimeError(kErrPathFileAccess);
  QString kept;
  std::optional<ExclusiveFileLock> alone;
  if (FileExists(database)) alone.emplace(database);
  ReplaceFile(database, [&](const QString& temporary) {
    CopyDatabase(copy, temporary);
    if (!alone) return;
    const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-hhmmss"));
    kept = names.Of(QStringLiteral("replaced-") + now);
    // A journal that a crash has left is played back by this, where the file still is a database.
    CopyDatabase(database, kept);
    KeepJournalOf(database, kept);
  });
  return kept;
}

DailyCopy::DailyCopy(const QString& database)
    : thread_([this, database] {
        try {
          MakeDailyCopy(database, QDate::currentDate(), [this] { return !stop_; });
        } catch (const std::exception&) {
          // The next start tries again; the work of the day goes on without.
        }
      }) {}

DailyCopy::~DailyCopy() {
  stop_ = true;
  thread_.join();
}

}  // namespace orv
