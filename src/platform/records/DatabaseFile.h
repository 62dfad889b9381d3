#pragma once

#include <QString>

namespace orv {

// Whether a journal of an interrupted change lies beside the file, so that the file may not be judged
// before SQLite has recovered it.
bool HasJournal(const QString& path);

// RuntimeError 3000 for an open file that is empty or doesn't begin like a database.
void CheckMagic(int descriptor);

// CheckMagic, and RuntimeError 3000 for a file that is shorter than the number of pages in its header.
void CheckWhole(int descriptor);

}  // namespace orv
