#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace orv {

// The share of the work that is done, 0 to 100.
using Progress = std::function<void(int percent)>;

// Whether the file begins like a database of an older version (a Jet file), whatever follows.
bool IsOldDatabase(const QString& path);

struct BroughtOver {
  QStringList counts;    // "30 rows in tblCard", a line for each table
  QStringList left_out;  // what the new file lacks, a line for each table, column or row
};

struct BringOverLimits {
  int silence = 20000;  // milliseconds without anything read
};

// Makes a database of this program of an older version's, under a name that no file has. Keys stay as they
// are. The old file is not changed. The new one has its name when it is whole, was held against the old one
// (the number of rows and of bytes in each table) and is on the disk; until then, and after a failure, there
// is none. RuntimeError: 3000 with a reason in plain words for an old file that can't be read, else 53, 61,
// 70, 75 or 76.
BroughtOver BringOver(const QString& old_path, const QString& new_path, const Progress& progress,
                      const BringOverLimits& limits = {});

// The same in the old file's place, which is kept beside it as "orv-old.mdb" ("orv-old (2).mdb" and so on).
// At each moment a whole file has the name, and nobody else has it open. `kept` is the old file's new path.
BroughtOver BringOverInPlace(const QString& path, const Progress& progress, QString& kept);

}  // namespace orv
