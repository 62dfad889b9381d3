#include "database/inner/CompactAndRepair.h"

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "forms/Dialogs.h"
#include "records/Compaction.h"
#include "records/Connection.h"
#include "records/DatabaseFile.h"
#include "state/modData.h"

namespace orv {
namespace {

// A journal that stands beside a file would be taken for the journal of what takes its place.
void CheckNoJournal(const QString& path) {
  if (HasJournal(path)) throw RuntimeError(kErrPermissionDenied);
}

void RemoveIfThere(const QString& path) {
  if (FileExists(path)) RemoveFile(path);
}

bool OffersRestore(const RuntimeError& error) {
  const QString prompt = QStringLiteral(
                             "ORV tried to compact the database but a problem occured.\r\n"
                             "Would you like ORV will to try restore its backup?\r\n\r\n") +
                         error.NumberAndDescription();
  return MsgBox(prompt, Icon::Exclamation, QStringLiteral("Repair database"), Buttons::YesNo) == Answer::Yes;
}

void TellBackup() {
  MsgBox(QStringLiteral("The database is backup up as '\\orvbup.mdb'. You may manually rename it to "
                        "'\\orv.mdb'."),
         Icon::Information, QStringLiteral("Repair"));
}

}  // namespace

Compaction::Compaction()
    : database_(modData::DatabasePath()),
      compacted_(JoinPath(App::Path(), QStringLiteral("orv1.mdb"))),
      backup_(JoinPath(App::Path(), QStringLiteral("orvbup.mdb"))) {}

void Compaction::RemoveLeftover() {
  RemoveIfThere(compacted_);
  RemoveIfThere(compacted_ + QStringLiteral("-journal"));
}

void Compaction::Backup() {
  CopyDatabase(database_, compacted_);
  RenameFile(compacted_, backup_);
  backed_up_ = true;
}

void Compaction::Compact() {
  alone_.emplace(database_);
  CompactDatabase(database_, compacted_);
}

// Deletes orv.mdb and gives its name to the compacted file, both in one step, so that a kill leaves no
// moment without a database.
void Compaction::Swap() {
  CheckNoJournal(database_);
  CheckNoJournal(compacted_);
  RenameFile(compacted_, database_);
}

void Compaction::RemoveBackup() {
  RemoveFile(backup_);
}

// A file that is no database any more keeps its journal.
void Compaction::PlayBackJournal() const {
  try {
    Connection::Open(database_).RemoveIdleJournal();
  } catch (const RuntimeError&) {
  }
}

void Compaction::Restore() {
  // What lies there otherwise is older than the database.
  if (!backed_up_) throw RuntimeError(kErrFileNotFound);
  alone_.reset();
  if (FileExists(database_)) alone_.emplace(database_);
  PlayBackJournal();
  CheckNoJournal(database_);
  RenameFile(backup_, database_);
}

void CompactAndRepair() {
  Compaction compaction;
  try {
    compaction.RemoveLeftover();
    compaction.Backup();
    compaction.Compact();
    compaction.Swap();
    compaction.RemoveBackup();
  } catch (const RuntimeError& error) {
    OffersRestore(error) ? compaction.Restore() : TellBackup();
  }
}

}  // namespace orv
