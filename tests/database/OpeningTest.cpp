#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>

#include "base/Files.h"
#include "state/modData.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

// What another hand may make of the file.
class OpeningTest : public testing::Test {
 protected:
  OpeningTest() { modData::cn = Connection(); }

  // Makes a file anew, changes it and opens it; why it was refused, empty if it wasn't.
  QString Open(const QByteArray& change, TestDatabase::Age age = TestDatabase::Age::kNew) {
    modData::cn = Connection();
    const QString path = modData::DatabasePath();
    QFile::remove(path);
    TestDatabase::MakeFile(path, age);
    sqlite3* other = nullptr;
    sqlite3_open(path.toUtf8().constData(), &other);
    EXPECT_EQ(sqlite3_exec(other, change.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(other);
    sqlite3_close(other);
    const QByteArray before = ReadWhole(path);
    modData::OpenDatabase([] {});
    EXPECT_EQ(modData::DatabaseFound, modData::OpeningError.isEmpty());
    EXPECT_TRUE(ReadWhole(path) == before);
    return modData::OpeningError;
  }

  TestDatabase database_;
};

TEST_F(OpeningTest, WhatBearsOneOfOurNamesIsOurs) {
  struct Case {
    const char* change;
    const char* told;
  };
  QElapsedTimer timer;
  timer.start();
  for (const auto& [change, told] :
       {Case{"DROP TABLE tblLanguage; CREATE VIEW tblLanguage (LanguageID, Language) AS WITH RECURSIVE n(i) "
             "AS "
             "(SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i, i FROM n",
             "view tblLanguage is not the program's"},
        Case{"DROP VIEW tblCardBack; CREATE VIEW tblCardBack AS SELECT CardBackID, BackText, "
             "zeroblob(900000000) AS Picture, Original, LanguageID, EditionID FROM tblCardBack_rows",
             "view tblCardBack is not the program's"},
        Case{
            "CREATE TRIGGER more AFTER UPDATE ON tblCard_rows BEGIN UPDATE tblSet_rows SET SetName = ''; END",
            "trigger more on tblCard_rows is none of the program's"},
        Case{"CREATE TRIGGER more INSTEAD OF UPDATE ON TBLCARD BEGIN SELECT 1; END", "trigger more on "},
        Case{"DROP TRIGGER tblSet_deleted; CREATE TRIGGER tblSet_deleted AFTER DELETE ON tblSet_rows BEGIN "
             "DELETE FROM tblCard_rows; END",
             "trigger tblSet_deleted is not the program's"},
        Case{"DROP INDEX tblCard_bySet; CREATE INDEX tblCard_bySet ON tblCard_rows (hex(Title))",
             "index tblCard_bySet is not the program's"},
        Case{"ALTER TABLE tblFont ADD COLUMN x DEFAULT (hex(1))", "table tblFont is not the program's"},
        Case{"DROP TABLE tblArea", "no such table: tblArea"},
        Case{"DROP TABLE tblArea; CREATE VIRTUAL TABLE tblArea USING fts5(x)", "table tblArea is not"}}) {
    EXPECT_TRUE(Open(change).contains(told)) << change << "\n" << modData::OpeningError.toStdString();
  }
  EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(OpeningTest, OtherNamesAndOtherBlanksAreLeftAlone) {
  for (const auto age : {TestDatabase::Age::kNew, TestDatabase::Age::kOlder}) {
    for (const char* change :
         {"VACUUM",
          "CREATE TABLE notes (x); CREATE INDEX more ON tblCard_rows (Artist); CREATE VIEW v AS "
          "SELECT * FROM tblCard; CREATE TRIGGER t AFTER INSERT ON notes BEGIN SELECT 1; END",
          "DROP INDEX tblCard_byType; DROP TRIGGER tblCard_delete; ANALYZE",
          "ALTER TABLE tblLanguage RENAME TO other; ALTER TABLE other RENAME TO tblLanguage",
          "DROP TABLE tblPicFormat; create table [tblPicFormat] (\"PicFormatID\" integer primary key "
          "autoincrement,\n\t`PicFormat` text /* 1 BMP */ )"})
      EXPECT_EQ(Open(change, age), "") << change;
  }
}

}  // namespace
}  // namespace orv
