#include "exchange/inner/RowCopier.h"

#include <QCryptographicHash>
#include <algorithm>
#include <array>
#include <cstring>

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "exchange/inner/ColumnValue.h"
#include "pictures/FittedPicture.h"
#include "records/Recordset.h"
#include "state/modData.h"

namespace orv {
namespace {

using schema::Column;
using schema::Kind;
using schema::Table;

// The columns that refer to a key under another name than its own.
constexpr std::array<std::pair<const char*, const char*>, 4> kReferences{{
    {"DefaultCardTypeID", "tblCardType"},
    {"DefaultCardBackID", "tblCardBack"},
    {"StartingAreaID", "tblArea"},
    {"UsedInSet", "tblSet"},
}};

// What is no content of a catalogue's row: its place in a list, and whether it was delivered.
constexpr std::array<const char*, 2> kNoContent{"AlignmentNr", "Original"};

bool Is(const char* a, const char* b) {
  return std::strcmp(a, b) == 0;
}

const char* KeyOf(const Table& table) {
  return table.columns.front().name;
}

bool IsContent(const Column& column) {
  return column.kind != Kind::kKey && !Is(column.name, "UsedInSet") &&
         std::ranges::none_of(kNoContent, [&](const char* name) { return Is(name, column.name); });
}

Recordset RowsOf(const Connection& connection, const QString& columns, const Table& table,
                 const QString& more) {
  return Recordset::OpenSnapshot(
      connection, QStringLiteral("SELECT %1 FROM %2 %3").arg(columns, QLatin1String(table.name), more));
}

// Tells rows of a catalogue that mean the same.
QByteArray ContentOf(const Table& table, const std::map<QString, Value>& row) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const Column& column : table.columns) {
    if (!IsContent(column)) continue;
    const Value& value = row.at(column.name);
    const QByteArray bytes = IsBytes(value) ? value.Bytes() : value.TextOrEmpty().toUtf8();
    hash.addData(QByteArray::number(bytes.size()) + (IsBytes(value) ? 'b' : 't'));
    hash.addData(bytes);
  }
  return hash.result();
}

// The set to which a row is locked, 0 for none.
std::int32_t LockOf(const std::map<QString, Value>& row) {
  const auto lock = row.find(QStringLiteral("UsedInSet"));
  return lock == row.end() || lock->second.IsNull() ? 0 : lock->second.Int32();
}

// The program keeps the numbers of records in 16 bits, and knows two editions: with others no editor could
// open the set.
void CheckNumbers(const Table& table, const std::map<QString, Value>& row) {
  if (const auto number = row.find(QStringLiteral("Nr")); number != row.end())
    ToInt16(number->second.IsNull() ? 0 : number->second.Int32());
  if (!Is(table.name, "tblSet")) return;
  const Value& edition = row.at(QStringLiteral("EditionID"));
  if (edition.IsNull() || (edition.Int32() != 2 && edition.Int32() != 3))
    throw RuntimeError(kErrDatabase,
                       QStringLiteral("The set is of an edition that the program doesn't know."));
}

// A card without a file name takes one at its first save, as one with an empty name does.
Value ValueIn(const Column& column, const Value& value) {
  const bool unnamed = value.IsNull() && Is(column.name, "FileName");
  return unnamed ? Value(QString()) : ColumnValue(column.kind, value);
}

}  // namespace

const Table& TableOf(const char* name) {
  const auto& tables = schema::Tables();
  return *std::ranges::find_if(tables, [&](const Table& table) { return Is(table.name, name); });
}

const Table* ReferenceOf(const Column& column) {
  if (column.kind == Kind::kKey) return nullptr;
  for (const auto& [name, table] : kReferences) {
    if (Is(name, column.name)) return &TableOf(table);
  }
  if (column.kind == Kind::kFont) return &TableOf("tblFont");
  const auto& tables = schema::Tables();
  const auto found =
      std::ranges::find_if(tables, [&](const Table& table) { return Is(KeyOf(table), column.name); });
  return found == tables.end() ? nullptr : &*found;
}

RowCopier::RowCopier(const Connection& from, const Connection& to, Keys keys)
    : from_(from),
      to_(to),
      keys_(keys),
      with_originals_(modData::HasOriginals(from) && modData::HasOriginals(to)) {}

RowCopier::Row RowCopier::Read(const Table& table, std::int32_t key) const {
  const Recordset rows = RowsOf(from_, QStringLiteral("*"), table,
                                QStringLiteral("WHERE %1 = %2").arg(QLatin1String(KeyOf(table))).arg(key));
  Row row;
  if (rows.IsEOF()) return row;
  for (const Column& column : table.columns)
    row[QLatin1String(column.name)] = ValueIn(column, rows[column.name].Get());
  if (keys_ == Keys::kNew) CheckNumbers(table, row);
  return row;
}

std::int32_t RowCopier::CopySet(std::int32_t key, const Values& replaced) {
  const Table& sets = TableOf("tblSet");
  const Row original = Read(sets, key);
  if (original.empty()) throw RuntimeError(kErrNoCurrentRecord);
  // What is locked to a set needs the set's key, and the set refers to it: so the set comes first, without
  // what it refers to.
  Row row = original;
  Row references;
  for (const Column& column : sets.columns) {
    if (column.kind == Kind::kFont) {
      row[column.name] =
          CopyRow(TableOf("tblFont"), row[column.name].IsNull() ? 0 : row[column.name].Int32(), {});
    } else if (ReferenceOf(column) != nullptr) {
      references[column.name] = row[column.name];
      row[column.name] = 0;
    }
  }
  for (const auto& [name, value] : replaced) row[name] = value;
  set_ = Add(sets, key, std::move(row));
  mapped_[sets.name][key] = set_;
  for (const Table& table : schema::Tables()) {
    const bool locks =
        std::ranges::any_of(table.columns, [](const Column& column) { return Is(column.name, "UsedInSet"); });
    if (!locks) continue;
    for (Recordset rows = RowsOf(from_, QLatin1String(KeyOf(table)), table,
                                 QStringLiteral("WHERE UsedInSet = %1").arg(key));
         !rows.IsEOF(); rows.MoveNext())
      Mapped(table, rows[KeyOf(table)].Int32());
  }
  for (const Column& column : sets.columns) {
    if (!references.contains(column.name)) continue;
    const Value& reference = references[column.name];
    if (!reference.IsNull()) references[column.name] = Mapped(*ReferenceOf(column), reference.Int32());
    to_.Execute(QStringLiteral("UPDATE tblSet SET %1 = ?1 WHERE SetID = ?2").arg(QLatin1String(column.name)),
                {references[column.name], set_});
  }
  CopyOwned(sets, key);
  return set_;
}

std::int32_t RowCopier::CopyRecord(const Table& table, std::int32_t key, std::int32_t from_set,
                                   std::int32_t to_set, const Values& replaced) {
  set_ = to_set;
  mapped_[QStringLiteral("tblSet")][from_set] = to_set;
  return CopyRow(table, key, replaced);
}

void RowCopier::CopyCatalogue(const Table& table) {
  for (Recordset rows = RowsOf(from_, QLatin1String(KeyOf(table)), table, QString()); !rows.IsEOF();
       rows.MoveNext())
    Mapped(table, rows[KeyOf(table)].Int32());
}

std::int32_t RowCopier::CopyRow(const Table& table, std::int32_t key, const Values& replaced) {
  // Two records with one font, such as an old database may have, share it in an empty file too.
  if (keys_ == Keys::kKept && mapped_[table.name].contains(key)) return key;
  Row row = Read(table, key);
  if (row.empty()) return 0;
  row = Translated(table, std::move(row));
  for (const auto& [name, value] : replaced) row[name] = value;
  const std::int32_t copy = Add(table, key, std::move(row));
  mapped_[table.name][key] = copy;
  CopyOwned(table, key);
  return copy;
}

void RowCopier::CopyOwned(const Table& owner, std::int32_t key) {
  for (const Table& table : schema::Tables()) {
    const bool owned = std::ranges::any_of(table.columns, [&](const Column& column) {
      return column.kind == Kind::kOwner && Is(column.name, KeyOf(owner));
    });
    if (!owned) continue;
    const QString condition =
        QStringLiteral("WHERE %1 = %2 ORDER BY %3").arg(KeyOf(owner)).arg(key).arg(KeyOf(table));
    for (Recordset rows = RowsOf(from_, QLatin1String(KeyOf(table)), table, condition); !rows.IsEOF();
         rows.MoveNext())
      CopyRow(table, rows[KeyOf(table)].Int32(), {});
  }
}

RowCopier::Row RowCopier::Translated(const Table& table, Row row) {
  for (const Column& column : table.columns) {
    const Table* const reference = ReferenceOf(column);
    Value& value = row[column.name];
    if (reference == nullptr || value.IsNull()) continue;
    const std::int32_t key = value.Int32();
    value = column.kind == Kind::kFont ? CopyRow(*reference, key, {}) : Mapped(*reference, key);
  }
  return row;
}

std::int32_t RowCopier::Add(const Table& table, std::int32_t key, Row row) {
  const std::int32_t copy = Insert(table, row);
  if (with_originals_) CopyOriginals(table, key, copy, row);
  return copy;
}

// Only those of the pictures that the row has: an original of an earlier picture is nobody else's matter.
void RowCopier::CopyOriginals(const Table& table, std::int32_t key, std::int32_t copy, const Row& row) {
  const Table& originals = schema::Originals();
  for (const Column& column : table.columns) {
    if (column.kind != Kind::kLongBinary || row.at(column.name).IsNull()) continue;
    const Recordset found = RowsOf(
        from_, QLatin1String(KeyOf(originals)), originals,
        QStringLiteral("WHERE TableName = '%1' AND RecordID = %2 AND ColumnName = '%3' AND Digest = '%4'")
            .arg(table.name)
            .arg(key)
            .arg(column.name, QString::fromLatin1(DigestOf(row.at(column.name).Bytes()))));
    if (found.IsEOF()) continue;
    Row original = Read(originals, found[KeyOf(originals)].Int32());
    original[QStringLiteral("RecordID")] = copy;
    Insert(originals, std::move(original));
  }
}

std::int32_t RowCopier::Insert(const Table& table, Row row) {
  const auto insert = [&](const QString& name, const auto& wanted) {
    QStringList names, places;
    std::vector<Value> values;
    for (const Column& column : table.columns) {
      if (!wanted(column)) continue;
      names.append(column.name);
      values.push_back(row[column.name]);
      places.append(u'?' + QString::number(values.size()));
    }
    return to_.Execute(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                           .arg(name, names.join(QStringLiteral(", ")), places.join(QStringLiteral(", "))),
                       values);
  };
  const QString name = QLatin1String(table.name);
  const bool apart = table.HasLongBinaries();
  const auto key = insert(apart ? name + QStringLiteral("_rows") : name, [&](const Column& column) {
    return column.kind == Kind::kKey ? keys_ == Keys::kKept : column.kind != Kind::kLongBinary;
  });
  row[KeyOf(table)] = static_cast<long long>(key);
  const bool has_long = std::ranges::any_of(table.columns, [&](const Column& column) {
    return column.kind == Kind::kLongBinary && !row[column.name].IsNull();
  });
  if (has_long) {
    insert(name + QStringLiteral("_long"), [](const Column& column) {
      return column.kind == Kind::kKey || column.kind == Kind::kLongBinary;
    });
  }
  return row[KeyOf(table)].Int32();
}

std::int32_t RowCopier::Mapped(const Table& table, std::int32_t key) {
  if (key == 0) return 0;
  const auto& known = mapped_[table.name];
  if (const auto found = known.find(key); found != known.end()) return *found;
  // A set other than the one that is copied can't be meant.
  if (Is(table.name, "tblSet")) return keys_ == Keys::kSame ? key : set_;
  const std::int32_t mapped = MappedCatalogue(table, key);
  mapped_[table.name][key] = mapped;
  return mapped;
}

std::int32_t RowCopier::MappedCatalogue(const Table& table, std::int32_t key) {
  Row row = Read(table, key);
  if (keys_ == Keys::kKept) {
    if (!row.empty()) Add(table, key, std::move(row));
    return key;
  }
  const std::int32_t lock = LockOf(row);
  if (keys_ == Keys::kSame && (lock == 0 || lock == set_)) return key;
  if (row.empty()) return 0;
  row = Translated(table, std::move(row));
  if (lock != 0) row[QStringLiteral("UsedInSet")] = set_;
  if (const std::int32_t found = FindByContent(table, row); found != 0) return found;
  // Which formats there are is the program's own matter.
  if (Is(table.name, "tblPicFormat")) return 1;
  const auto original = row.find(QStringLiteral("Original"));
  if (original != row.end()) original->second = false;
  const std::int32_t added = Add(table, key, row);
  CatalogueOf(table)[ContentOf(table, row)].append({added, LockOf(row)});
  return added;
}

// All rows of a catalogue are read once, so that a file with very many of them takes no longer for each.
RowCopier::Catalogue& RowCopier::CatalogueOf(const Table& table) {
  const auto known = catalogues_.find(table.name);
  if (known != catalogues_.end()) return *known;
  Catalogue& catalogue = catalogues_[table.name];
  for (Recordset rows =
           RowsOf(to_, QStringLiteral("*"), table, QStringLiteral("ORDER BY ") + QLatin1String(KeyOf(table)));
       !rows.IsEOF(); rows.MoveNext()) {
    Row row;
    for (const Column& column : table.columns) row[column.name] = rows[column.name].Get();
    catalogue[ContentOf(table, row)].append({row[KeyOf(table)].Int32(), LockOf(row)});
  }
  return catalogue;
}

std::int32_t RowCopier::FindByContent(const Table& table, const Row& row) {
  for (const Entry& entry : CatalogueOf(table).value(ContentOf(table, row))) {
    if (entry.lock == 0 || entry.lock == set_) return entry.key;
  }
  return 0;
}

}  // namespace orv
