#pragma once

#include <QString>

namespace orv {

// A name of no file yet in the folder, which tells the process that takes it.
QString TemporaryName(const QString& folder);

// Removes the user's files of such names whose process lives no more, at a process's first call for a
// folder. What a process of another machine, another boot or another container has named can't be told
// from a file in use, and goes after a day. Failures are of no matter.
void RemoveAbandonedFiles(const QString& folder);

}  // namespace orv
