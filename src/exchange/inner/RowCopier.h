#pragma once

#include <QHash>
#include <QString>
#include <map>

#include "records/Connection.h"
#include "schema/Tables.h"

namespace orv {

// Copies sets and their records with what belongs to them, over the tables of the schema: the rows that they
// own, in each depth, their fonts, the originals of their pictures where both databases keep such, and the
// rows of the catalogues to which they refer. The caller's transaction holds it together.
class RowCopier {
 public:
  enum class Keys {
    kKept,  // into an empty file: everything keeps its key, a row of a catalogue comes along when it is
            // needed
    kNew,   // into another database: a row of a catalogue is found there by its content, or added
    kSame,  // within one database: a row of a catalogue stands for itself, unless it is locked to another set
  };

  // The connections must outlive this.
  RowCopier(const Connection& from, const Connection& to, Keys keys);

  using Values = std::map<QString, Value>;

  // A set with all that it owns, some columns of it replaced; its key.
  std::int32_t CopySet(std::int32_t key, const Values& replaced);
  // A record of a set (of a table with SetID) into a set that is there already; its key.
  std::int32_t CopyRecord(const schema::Table& table, std::int32_t key, std::int32_t from_set,
                          std::int32_t to_set, const Values& replaced);
  // All rows of a catalogue.
  void CopyCatalogue(const schema::Table& table);

 private:
  using Row = std::map<QString, Value>;
  Row Read(const schema::Table& table, std::int32_t key) const;  // empty without such a row
  std::int32_t CopyRow(const schema::Table& table, std::int32_t key, const Values& replaced);
  void CopyOwned(const schema::Table& owner, std::int32_t key);
  // A copy of the row that has a key, with its values as they are to be in the target; its key there.
  std::int32_t Add(const schema::Table& table, std::int32_t key, Row row);
  std::int32_t Insert(const schema::Table& table, Row row);
  void CopyOriginals(const schema::Table& table, std::int32_t key, std::int32_t copy, const Row& row);
  // The key in the target of what a reference leads to; 0 for nothing.
  std::int32_t Mapped(const schema::Table& table, std::int32_t key);
  std::int32_t MappedCatalogue(const schema::Table& table, std::int32_t key);
  // The rows of a catalogue in the target: by what tells their content, the oldest first.
  struct Entry {
    std::int32_t key;
    std::int32_t lock;  // the set to which it is locked, 0 for none
  };
  using Catalogue = QHash<QByteArray, QList<Entry>>;
  Catalogue& CatalogueOf(const schema::Table& table);
  std::int32_t FindByContent(const schema::Table& table, const Row& row);
  // The row with its own references mapped.
  Row Translated(const schema::Table& table, Row row);

  const Connection& from_;
  const Connection& to_;
  const Keys keys_;
  const bool with_originals_;
  std::int32_t set_ = 0;                                      // the set in the target
  QHash<QString, QHash<std::int32_t, std::int32_t>> mapped_;  // by table
  QHash<QString, Catalogue> catalogues_;                      // by table, those that were asked for
};

// The table of a name, which must be one.
const schema::Table& TableOf(const char* name);
// The table to whose key a column refers, nothing for a column that is no reference.
const schema::Table* ReferenceOf(const schema::Column& column);

}  // namespace orv
