#include "filling/Catalogues.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "base/Files.h"
#include "base/TextOrder.h"
#include "filling/ContentFiles.h"
#include "records/Recordset.h"

namespace orv::delivery {
namespace {

constexpr int kEditions[] = {2, 3};
// Keys of the types and backs of one language and edition; more than either has rows.
constexpr int kKeysPerGroup = 100;

struct Group {
  int language;
  QString code;
  int edition;
  int first_key;
};

std::vector<Group> GroupsOf(const std::vector<Fields>& languages) {
  std::vector<Group> groups;
  for (const Fields& language : languages) {
    for (const int edition : kEditions) {
      const int first_key = static_cast<int>(groups.size()) * kKeysPerGroup + 1;
      groups.push_back({language["LanguageID"].toInt(), language["Code"], edition, first_key});
    }
  }
  return groups;
}

// The next row added to the table gets this key.
void StartKeysAt(const Connection& connection, const QString& table, int key) {
  connection.Execute(QString("DELETE FROM sqlite_sequence WHERE name = '%1'").arg(table));
  connection.Execute(
      QString("INSERT INTO sqlite_sequence (name, seq) VALUES ('%1', %2)").arg(table).arg(key - 1));
}

Recordset OpenTable(const Connection& connection, const QString& table, const QString& key) {
  return Recordset::OpenEditable(connection, QString("SELECT * FROM %1 ORDER BY %2").arg(table, key));
}

// Adds a row and tells its key.
std::int32_t AddRow(Recordset& rows, const QString& key, const QMap<QString, Value>& values) {
  rows.AddNew();
  for (auto it = values.begin(); it != values.end(); ++it) rows[it.key()] = it.value();
  rows.Update();
  return rows[key].Int32();
}

std::pair<QString, QString> Halves(const QString& text) {
  return {text.section('/', 0, 0), text.section('/', 1)};
}

struct CardType {
  QString name, number, upper_left, upper_right, lower;
};

// The 2nd edition prints the class in both upper corners and the kind below it; the 3rd has one line, the
// class at its left and the kind at its right.
CardType TypeFor(const Fields& row, const Group& group) {
  const auto [category, kind] = Halves(row[group.code]);
  if (group.edition == 3) return {row["Key"], row["Number"], category, kind, ""};
  const QString word = kind.isEmpty() ? category : category + "-";
  return {row["Key"], row["Number"], word, word, kind};
}

bool SortsBefore(const CardType& a, const CardType& b) {
  for (const auto column : {&CardType::upper_left, &CardType::lower, &CardType::number}) {
    if (const int order = CompareText(a.*column, b.*column); order != 0) return order < 0;
  }
  return false;
}

void FillTypes(const Connection& connection, const QString& folder, const std::vector<Group>& groups,
               Names& names) {
  const std::vector<Fields> table = ReadTable(JoinPath(folder, "types.txt"));
  for (const Group& group : groups) {
    std::vector<CardType> types;
    for (const Fields& row : table) {
      if (row["Editions"].contains(QString::number(group.edition))) types.push_back(TypeFor(row, group));
    }
    std::stable_sort(types.begin(), types.end(), SortsBefore);
    StartKeysAt(connection, "tblCardType", group.first_key);
    Recordset rows = OpenTable(connection, "tblCardType", "CardTypeID");
    for (const CardType& type : types) {
      const std::int32_t key = AddRow(rows, "CardTypeID",
                                      {{"UpperLeft", type.upper_left},
                                       {"UpperRight", type.upper_right},
                                       {"LowerLeft", type.lower},
                                       {"LowerRight", type.lower},
                                       {"Number", type.number},
                                       {"LanguageID", group.language},
                                       {"EditionID", group.edition},
                                       {"Original", true},
                                       {"UsedInSet", 0}});
      names.Add("type", group.language, group.edition, type.name, key);
      names.AddNumber(group.language, group.edition, type.name, type.number);
    }
  }
}

void FillBacks(const Connection& connection, const QString& folder, const std::vector<Group>& groups,
               const Gallery& gallery, Names& names) {
  const std::vector<Fields> table = ReadTable(JoinPath(folder, "backs.txt"));
  for (const Group& group : groups) {
    StartKeysAt(connection, "tblCardBack_rows", group.first_key);
    Recordset rows = OpenTable(connection, "tblCardBack", "CardBackID");
    for (const Fields& row : table) {
      const QString picture = row["Picture" + QString::number(group.edition)];
      if (picture.isEmpty()) continue;
      const std::int32_t key = AddRow(rows, "CardBackID",
                                      {{"BackText", row[group.code]},
                                       {"Picture", gallery.Bytes(picture)},
                                       {"Original", true},
                                       {"LanguageID", group.language},
                                       {"EditionID", group.edition}});
      names.Add("back", group.language, group.edition, row["en"], key);
    }
  }
}

void FillCharacterBacks(const Connection& connection, const QString& folder, const std::vector<Group>& groups,
                        const Gallery& gallery, Names& names) {
  Recordset rows = OpenTable(connection, "tblCharacterBack", "CharacterBackID");
  const std::vector<Fields> table = ReadTable(JoinPath(folder, "character_backs.txt"));
  for (const Group& group : groups) {
    for (const Fields& row : table) {
      const std::int32_t key = AddRow(rows, "CharacterBackID",
                                      {{"BackText", row[group.code]},
                                       {"Picture", gallery.Bytes(row["Picture"])},
                                       {"Original", true},
                                       {"LanguageID", group.language},
                                       {"EditionID", group.edition}});
      names.Add("character back", group.language, group.edition, row["en"], key);
    }
  }
}

void FillAreas(const Connection& connection, const QString& folder, const std::vector<Group>& groups,
               Names& names) {
  Recordset rows = OpenTable(connection, "tblArea", "AreaID");
  const std::vector<Fields> table = ReadTable(JoinPath(folder, "areas.txt"));
  for (const Group& group : groups) {
    for (const Fields& row : table) {
      const auto [board, area] = Halves(row[group.code]);
      const std::int32_t key = AddRow(
          rows, "AreaID",
          {{"Board", board}, {"Area", area}, {"LanguageID", group.language}, {"EditionID", group.edition}});
      names.Add("area", group.language, group.edition, row["en"].section('/', 1), key);
    }
  }
}

// In the order of the languages, so that key 2 is an alignment of the first one: a new character takes it.
void FillAlignments(const Connection& connection, const QString& folder, const std::vector<Fields>& languages,
                    Names& names) {
  Recordset rows = OpenTable(connection, "tblAlignment", "AlignmentID");
  const std::vector<Fields> table = ReadTable(JoinPath(folder, "alignments.txt"));
  for (const Fields& language : languages) {
    const int id = language["LanguageID"].toInt();
    for (const Fields& row : table) {
      const std::int32_t key = AddRow(rows, "AlignmentID",
                                      {{"Alignment", row[language["Code"]]},
                                       {"AlignmentNr", row["AlignmentNr"].toInt()},
                                       {"LanguageID", id}});
      names.Add("alignment", id, 0, row["en"], key);
    }
  }
}

// A table whose rows carry their keys, 1 upward.
std::vector<Fields> FillNumbered(const Connection& connection, const QString& path, const QString& table,
                                 const QString& key, const QString& column) {
  std::vector<Fields> lines = ReadTable(path);
  Recordset rows = OpenTable(connection, table, key);
  for (const Fields& line : lines) {
    if (AddRow(rows, key, {{column, line[column]}}) != line[key].toInt()) {
      throw std::runtime_error((path + ": the keys are not 1 upward").toStdString());
    }
  }
  return lines;
}

}  // namespace

void Names::Add(const QString& catalogue, int language, int edition, const QString& name, std::int32_t key) {
  keys_[{catalogue, language, edition, name}] = key;
}

std::int32_t Names::Find(const QString& catalogue, int language, int edition, const QString& name) const {
  const Place place{catalogue, language, edition, name};
  if (!keys_.contains(place))
    throw std::runtime_error(QString("no %1 %2").arg(catalogue, name).toStdString());
  return keys_[place];
}

void Names::AddNumber(int language, int edition, const QString& type, const QString& number) {
  numbers_[{"type", language, edition, type}] = number;
}

QString Names::NumberOfType(int language, int edition, const QString& type) const {
  return numbers_.value({"type", language, edition, type});
}

Names FillCatalogues(const Connection& connection, const QString& folder, const Gallery& gallery) {
  const std::vector<Fields> languages =
      FillNumbered(connection, JoinPath(folder, "languages.txt"), "tblLanguage", "LanguageID", "Language");
  FillNumbered(connection, JoinPath(folder, "formats.txt"), "tblPicFormat", "PicFormatID", "PicFormat");
  const std::vector<Group> groups = GroupsOf(languages);
  Names names;
  FillTypes(connection, folder, groups, names);
  FillBacks(connection, folder, groups, gallery, names);
  FillCharacterBacks(connection, folder, groups, gallery, names);
  FillAreas(connection, folder, groups, names);
  FillAlignments(connection, folder, languages, names);
  return names;
}

}  // namespace orv::delivery
