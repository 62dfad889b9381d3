#pragma once

#include <vector>

// The tables of orv.mdb, an SQLite 3 file, and their columns: the one place where a column is written down.
namespace orv::schema {

enum class Kind {
  kKey,    // of the row: a counter whose numbers are never given out twice
  kOwner,  // key of another table's row, under that key's name, which takes this row along when it is deleted
  kFont,   // key of a row of tblFont that belongs to this row alone and is deleted with it
  kInteger,     // also a colour: 32 bits with red in the low byte
  kCount,       // an integer that is never Null, 0 if nothing is given
  kBoolean,     // -1 (True) or 0 (False), never Null
  kReal,        // a position or size, which keeps a fraction
  kText,        // may be Null
  kFilledText,  // never Null, empty if nothing is given
  kLongBinary,  // the unchanged bytes of the user's picture file, or Null
};

struct Column {
  const char* name;
  Kind kind;
};

// Its name is the table's, "_" and `suffix`.
struct Index {
  const char* suffix;
  const char* columns;  // as SQL
};

struct Table {
  const char* name;
  std::vector<Column> columns;  // the key first
  std::vector<Index> indexes = {};

  // Whether the long binaries lie apart from the rows (see Schema.h).
  bool HasLongBinaries() const;
};

// In the order in which they lie in the file.
const std::vector<Table>& Tables();

// The file of which a stored picture was made at another size. A file without this table is as good; it only
// can't keep an original. A row goes with the record that it belongs to.
const Table& Originals();

}  // namespace orv::schema
