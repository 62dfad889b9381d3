#pragma once

#include <QString>

namespace orv {

// Makes a database file at a path where no file lies, with the tables of a script in SQLite's own dialect.
// RuntimeError 75 where it can't be made, 3000 for a script that can't be run.
void MakeDatabase(const QString& path, const QString& script);

}  // namespace orv
