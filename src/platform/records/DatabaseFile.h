#pragma once

#include <QString>

namespace orv {

// Whether a journal of an interrupted change lies beside the file, so that the file may not be judged
// before SQLite has recovered it.
bool HasJournal(const QString& path);

// Before another file takes the name: a journal that stands beside it would be taken for that one's. Gives it
// the name that belongs to the file's new one, or removes it. RuntimeError 75.
void KeepJournalOf(const QString& path, const QString& new_path);
void RemoveJournalOf(const QString& path);

// RuntimeError 3000 for an open file that is empty or doesn't begin like a database.
void CheckMagic(int descriptor);

// CheckMagic, and RuntimeError 3000 for a file that is shorter than the number of pages in its header.
void CheckWhole(int descriptor);

}  // namespace orv
