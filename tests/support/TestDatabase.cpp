#include "support/TestDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QSettings>
#include <algorithm>

#include "base/App.h"
#include "base/Files.h"
#include "database/FontProfiles.h"
#include "database/ReferenceLists.h"
#include "forms/Form.h"
#include "forms/Lifetime.h"
#include "forms/Surface.h"
#include "schema/Schema.h"
#include "state/modData.h"
#include "support/SharedState.h"

namespace orv {
namespace {

const char* const kRows = R"(
INSERT INTO tblLanguage (LanguageID, Language) VALUES (1, 'English'), (2, 'German');
INSERT INTO tblPicFormat VALUES (1, 'BMP'), (2, 'JPG'), (3, 'GIF'), (4, 'XYZ');
INSERT INTO tblAlignment VALUES (1, 'Good', 1, 1), (2, 'Neutral', 2, 1), (3, 'Evil', 3, 1), (4, 'Gut', 1, 2);
INSERT INTO tblArea VALUES (1, 'Plains', 'Village', 1, 2), (2, 'Hills', 'Chapel', 1, 2), (3, 'Plains', 'Ford', 1, 3),
                           (4, 'Ebene', 'Dorf', 2, 2);
INSERT INTO tblCardType VALUES
  (1, 'EVENT', '', 'EVENT', '', '1', 1, 2, -1, 0), (2, 'FOE-', 'Beast', '-FOE', 'Brute', '2', 1, 2, -1, 0),
  (3, 'LOCKED', '', '', '', '3', 1, 2, 0, 999), (4, 'Place', '', 'Site', '', '4', 1, 3, -1, 0),
  (5, 'Thing', '', 'Gift', '', '5', 1, 3, -1, 0), (6, 'EREIGNIS', '', '', '', '1', 2, 2, -1, 0);
INSERT INTO tblCardBack (CardBackID, BackText, Picture, Original, LanguageID, EditionID) VALUES
  (1, 'Dark', NULL, -1, 1, 2), (2, 'Bright', NULL, -1, 1, 2), (4, 'Leaf', NULL, -1, 1, 3), (5, 'Stone', NULL, -1, 1, 3),
  (6, 'Dunkel', NULL, -1, 2, 2);
INSERT INTO tblCharacterBack (CharacterBackID, BackText, Picture, Original, LanguageID, EditionID) VALUES
  (1, 'Shield', NULL, -1, 1, 2), (2, 'Banner', NULL, 0, 1, 2), (3, 'Other', NULL, -1, 1, 3);
)";

QString Quoted(QString text) {
  return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

void Make(const QString& path, const QByteArray& statements) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, statements.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(database);
  sqlite3_close(database);
}

}  // namespace

TestDatabase::TestDatabase(Age age) {
  for (const char* home : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) qputenv(home, folder_.path().toUtf8());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path());
  App::SetPath(folder_.path());
  MakeFile(Path(QStringLiteral("orv.mdb")), age);
  modData::OpenDatabase([] {});
  EXPECT_TRUE(modData::DatabaseFound);
  const struct {
    const char* table;
    int id, width, height;
    Colour colour;
  } backs[] = {
      {"tblCardBack", 1, 150, 254, Rgb(10, 0, 0)},      {"tblCardBack", 2, 150, 254, Rgb(20, 0, 0)},
      {"tblCardBack", 4, 161, 245, Rgb(40, 0, 0)},      {"tblCardBack", 5, 161, 245, Rgb(50, 0, 0)},
      {"tblCharacterBack", 1, 302, 254, Rgb(0, 10, 0)}, {"tblCharacterBack", 2, 302, 254, Rgb(0, 20, 0)}};
  for (const auto& back : backs) {
    Store(QString::fromLatin1(back.table), back.id, QStringLiteral("Picture"),
          PlainPicture(back.width, back.height, back.colour));
  }
}

TestDatabase::~TestDatabase() {
  UnloadAll();
  ClearSharedState();
  App::SetPath(QString());
}

void TestDatabase::MakeFile(const QString& path, Age age) {
  Make(path, schema::Script(age == Age::kNew ? schema::Age::kNew : schema::Age::kOlder).toUtf8() + kRows);
}

QString TestDatabase::Path(const QString& name) const {
  return JoinPath(folder_.path(), name);
}

int TestDatabase::AddSet(const QString& name, int edition, int language) {
  Recordset sets;
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblSet ORDER BY SetName"), sets);
  sets.AddNew();
  sets["SetName"] = name;
  sets["EditionID"] = edition;
  sets["LanguageID"] = language;
  sets["DefaultCardTypeID"] = 0;
  sets["DefaultCardBackID"] = 0;
  sets["ArtistColour"] = 0x7F7F7F;
  sets["PicFormatID"] = 1;
  sets["SaveTo"] = folder_.path();
  CreateSetFonts(sets);
  sets.Update();
  sets.MoveLast();
  return sets["SetID"].Int32();
}

int TestDatabase::AddCard(int set, int nr, const QString& title) {
  const bool third = Scalar(QStringLiteral("SELECT EditionID FROM tblSet WHERE SetID = %1").arg(set)) == u"3";
  const QString type = third ? "4" : "1";
  return AddRow("tblCard", {{"SetID", QString::number(set)},
                            {"Nr", QString::number(nr)},
                            {"Title", Quoted(title)},
                            {"Copies", "1"},
                            {"CardTypeID", type},
                            {"Number", Quoted(type)},
                            {"UsePicture", "-1"},
                            {"PicHeight", "105"},
                            {"UseFrame", "-1"},
                            {"CardBackID", type},
                            {"BGColour", "16777215"}});
}

int TestDatabase::AddLargeCard(int set, int nr, const QString& title) {
  return AddRow("tblLargeCard", {{"SetID", QString::number(set)},
                                 {"Nr", QString::number(nr)},
                                 {"Title", Quoted(title)},
                                 {"UsePicture", "-1"},
                                 {"PicWidth", "121"},
                                 {"UseFrame", "-1"},
                                 {"BGColour", "16777215"},
                                 {"Copies", "1"}});
}

int TestDatabase::AddCharacter(int set, int nr, const QString& name) {
  return AddRow("tblCharacter", {{"SetID", QString::number(set)},
                                 {"Nr", QString::number(nr)},
                                 {"Name", Quoted(name)},
                                 {"StartingAreaID", "1"},
                                 {"AlignmentID", "2"},
                                 {"Strength", "'3'"},
                                 {"Craft", "'3'"},
                                 {"Gold", "'1'"},
                                 {"Lives", "'4'"},
                                 {"UsePicture", "-1"},
                                 {"UseFrame", "-1"},
                                 {"PicWidth", "121"},
                                 {"CharacterBackID", "1"}});
}

int TestDatabase::AddRow(const QString& table, QMap<QString, QString> values) {
  using schema::Kind;
  const auto& tables = schema::Tables();
  const auto found = std::ranges::find_if(
      tables, [&](const schema::Table& each) { return table == QLatin1String(each.name); });
  for (const schema::Column& column : found->columns) {
    if (column.kind == Kind::kKey || column.kind == Kind::kLongBinary) continue;
    const bool text = column.kind == Kind::kText || column.kind == Kind::kFilledText;
    if (!values.contains(column.name)) values[column.name] = text ? "''" : "0";
  }
  Execute(QStringLiteral("INSERT INTO %1_rows (%2) VALUES (%3)")
              .arg(table, QStringList(values.keys()).join(u','), QStringList(values.values()).join(u',')));
  return Scalar(QStringLiteral("SELECT MAX(%1) FROM %2").arg(found->columns.front().name, table)).toInt();
}

void TestDatabase::SelectSet(int set) {
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblSet ORDER BY SetName"), modData::rsSet);
  modData::CurrentSetID = static_cast<std::int16_t>(set);
  modData::FindSet(set);
  modData::CurrentEditionID = modData::rsSet["EditionID"].Int16Or(0);
  modData::CurrentLanguageID = modData::rsSet["LanguageID"].Int16Or(0);
  LoadReferenceLists(modData::CurrentEditionID, modData::CurrentLanguageID);
  const auto open = [set](const char* table, Recordset& rows) {
    modData::OpenEditable(
        QStringLiteral("SELECT * FROM %1 WHERE SetID = %2 ORDER BY Nr").arg(QLatin1String(table)).arg(set),
        rows);
  };
  open("tblCard", modData::rsCard);
  open("tblCharacter", modData::rsCharacter);
  open("tblLargeCard", modData::rsLargeCard);
}

void TestDatabase::Execute(const QString& statement) {
  modData::cn.Execute(statement);
}

QString TestDatabase::Scalar(const QString& query) {
  const Recordset rows = modData::OpenSnapshot(query);
  if (rows.IsEOF()) return {};
  const Value value = rows[rows.ColumnNames().constFirst()].Get();
  return value.IsNull() ? QStringLiteral("~") : value.Text();
}

void TestDatabase::Store(const QString& table, int id, const QString& column, const QByteArray& bytes) {
  const QString key = table.mid(3) + QStringLiteral("ID");
  Recordset rows;
  modData::OpenEditable(QStringLiteral("SELECT * FROM %1 WHERE %2 = %3").arg(table, key).arg(id), rows);
  rows[column].AppendChunk(bytes);
  rows.Update();
}

QByteArray TestDatabase::PlainPicture(int width, int height, Colour colour) {
  Surface surface;
  surface.Place(0, 0, width, height);
  surface.SetBackColor(colour);
  QTemporaryDir folder;
  const QString path = JoinPath(folder.path(), QStringLiteral("p.bmp"));
  SavePicture(surface.Image(), path);
  return ReadWhole(path);
}

QByteArray TestDatabase::GradientPicture(int width, int height) {
  Surface surface;
  surface.Place(0, 0, width, height);
  for (int x = 0; x < width; ++x) {
    for (int y = 0; y < height; ++y) surface.SetPixel(x, y, Rgb(x & 0xFF, y & 0xFF, 77));
  }
  QTemporaryDir folder;
  const QString path = JoinPath(folder.path(), QStringLiteral("p.bmp"));
  SavePicture(surface.Image(), path);
  return ReadWhole(path);
}

QString TestDatabase::WriteFile(const QString& name, const QByteArray& bytes) {
  ReplaceFile(Path(name), bytes);
  return Path(name);
}

}  // namespace orv
