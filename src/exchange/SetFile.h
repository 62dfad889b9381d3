#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "records/Connection.h"

// A set as one file (*.orvset): a database of this program's own schema with one set and what it uses of the
// catalogues. The folder to which the set was saved stays at home.
namespace orv {

// The set's key, 0 where there is none of this name.
std::int32_t FindSet(const Connection& connection, const QString& name);
QStringList SetNames(const Connection& connection);

// Writes a set to a file, which is replaced only when the new one is whole. RuntimeError 3021 for an unknown
// key, else of the file.
void SaveSet(const Connection& from, std::int32_t set_id, const QString& path);

// What a file of sets holds: their names. The file is only read. RuntimeError 3000 for a file that is none.
QStringList SetsInFile(const QString& path);

// Adds the sets of a file under new keys, all in one transaction; their keys. A name that is taken gets
// " (2)". Types, backs, areas and alignments are found by their content and language and added where they are
// missing, locked to the set where they were. The file is only read, and nothing of it is trusted.
// RuntimeError 3000 for a file that is none or holds no set, 6 or 13 for a value that its column can't have.
std::vector<std::int32_t> BringInSets(const Connection& to, const QString& path);

}  // namespace orv
