#pragma once

#include <QString>

namespace orv {

// Copies a database file to a path where no file lies, as it stands between two changes: a journal that a
// crash left is recovered first, and nobody changes the file meanwhile. A file that is no database is
// copied as it is. The copy is on the disk at the return; after a failure a part of it may lie there.
// RuntimeError 53, 61, 70 or 75 as the cause is.
void CopyDatabase(const QString& source, const QString& target);

// Writes a database without its free pages to a path where no file lies, and holds it against the source:
// sound by itself, with the same schema and as many rows in each table. It is on the disk at the return;
// after a failure a part of it may lie there. RuntimeError 3000 for a source that is no sound database, or
// 53, 61, 70 or 75.
void CompactDatabase(const QString& source, const QString& target);

}  // namespace orv
