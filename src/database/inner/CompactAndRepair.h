#pragma once

#include <QString>
#include <optional>

#include "records/FileLock.h"

namespace orv {

// Replaces orv.mdb by a compacted copy of itself. Says nothing if all goes well. A failure is told with its
// cause and the offer to restore the backup. To be called with the database closed.
// RuntimeError where the restoring fails; the database is as it was then.
void CompactAndRepair();

// The steps of a compaction, in their order, each a RuntimeError on failure. After each of them, and at any
// moment within one, orv.mdb is whole on the disk.
//
//   after            orv.mdb       orv1.mdb    orvbup.mdb
//   RemoveLeftover   the database  absent      as it was
//   Backup           the database  absent      its copy
//   Compact          the database  compacted   its copy
//   Swap             compacted     absent      its copy
//   RemoveBackup     compacted     absent      absent
class Compaction {
 public:
  Compaction();
  void RemoveLeftover();
  // The copy is made under the name orv1.mdb, so an older backup stays until the new one is whole.
  void Backup();
  // Needs the database alone, and keeps it alone from here on. A journal that a kill left is played back, or
  // removed where there is nothing to play back.
  void Compact();
  void Swap();
  void RemoveBackup();

  // Puts the backup in the place of orv.mdb, if Backup has made it.
  void Restore();

 private:
  void PlayBackJournal() const;

  const QString database_;
  const QString compacted_;
  const QString backup_;
  bool backed_up_ = false;
  std::optional<ExclusiveFileLock> alone_;
};

}  // namespace orv
