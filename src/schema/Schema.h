#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "schema/Tables.h"

// What the tables are in the file. The program never creates or alters one: the delivered file has them.
//
// Long binaries lie apart from the rows, so that an edit of a short column never rewrites a picture and a
// walk over rows never reads one: a table T with long binaries is a view over T_rows (key and short columns)
// and T_long (the same key and the long columns; a row there comes with the first picture). T itself can be
// read and written like a table; the program writes to T_rows and T_long.
//
// Relations are kept by triggers, so that they hold whatever program deletes and whatever
// PRAGMA foreign_keys says. No collation is declared: the file is open to every SQLite tool.
namespace orv::schema {

// An object of the file, as sqlite_schema tells it.
struct Object {
  const char* type;  // table, index, view or trigger
  QString name;
  QString sql;  // to the byte
};

// Files that were delivered earlier let a kFilledText be Null.
enum class Age { kNew, kOlder };

// All in the order in which they are made, without SQLite's own (sqlite_sequence).
std::vector<Object> Objects(Age age = Age::kNew);
// Those of the originals, behind the others: a file has all of them or none.
std::vector<Object> OriginalObjects();

// The statements that make all of them in an empty file, as one transaction.
QString Script(Age age = Age::kNew);

// Queries for what the relations rule out: rows whose owner is gone and long binaries without their row.
// Each row is one of them, told in words.
QStringList StrayRows();

}  // namespace orv::schema
