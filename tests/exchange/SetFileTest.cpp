#include "exchange/SetFile.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>

#include "base/Files.h"
#include "exchange/CopyRecord.h"
#include "output/modFile.h"
#include "pictures/FittedPicture.h"
#include "schema/Schema.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Errors.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

// A set with a record of each kind, a type of its own and a picture, and a second set.
class SetFileTest : public testing::Test {
 protected:
  SetFileTest() {
    set_ = database_.AddSet("Harbour", 2);
    card_ = database_.AddCard(set_, 1, "Eel");
    database_.AddCard(set_, 2, "Net");
    database_.AddCharacter(set_, 1, "Pilot");
    database_.AddLargeCard(set_, 1, "Quay");
    database_.Store("tblCard", card_, "Picture", TestDatabase::GradientPicture(30, 20));
    Run("INSERT INTO tblCardType (UpperLeft, LowerLeft, LanguageID, EditionID, Original, UsedInSet) "
        "VALUES ('TIDE', 'LOW', 1, 2, 0, %1)");
    type_ = database_.Scalar("SELECT Max(CardTypeID) FROM tblCardType").toInt();
    Run(QStringLiteral("UPDATE tblCard SET CardTypeID = %1, FileName = 'Eel' WHERE CardID = %2")
            .arg(type_)
            .arg(card_));
    Run(QStringLiteral("UPDATE tblSet SET DefaultCardTypeID = %1, SaveTo = '/home/anna' WHERE SetID = %2")
            .arg(type_)
            .arg(set_));
    other_ = database_.AddSet("Moor", 2);
  }
  void Run(const QString& statement) {
    database_.Execute(statement.contains("%1") ? statement.arg(set_) : statement);
  }
  QString Scalar(const QString& query) { return database_.Scalar(query); }
  QString File() const { return database_.Path("harbour.orvset"); }
  // What the set's listing says.
  QByteArray Listing(int set) {
    database_.SelectSet(set);
    ExportSet(database_.Path("listing.txt"), set);
    return ReadWhole(database_.Path("listing.txt"));
  }
  int BringIn(const Connection& to) {
    const auto keys = BringInSets(to, File());
    EXPECT_EQ(keys.size(), 1u);
    return keys.front();
  }
  // A statement of another hand on a file.
  static void Tamper(const QString& path, const QString& statement) {
    sqlite3* file = nullptr;
    sqlite3_open(path.toUtf8().constData(), &file);
    EXPECT_EQ(sqlite3_exec(file, statement.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(file);
    sqlite3_close(file);
  }
  void Tamper(const QString& statement) { Tamper(File(), statement); }

  // The record of a picture.
  static Recordset RowOf(const char* table, int key) {
    return Recordset::OpenEditable(
        modData::cn, QStringLiteral("SELECT * FROM %1 WHERE %2ID = %3").arg(table, table + 3).arg(key));
  }
  // Fits a file to half its size into a record, as the editors do.
  static void Fit(const char* table, int key, const char* column, const QByteArray& file) {
    Recordset row = RowOf(table, key);
    FittedPicture picture(table, column);
    picture.Show(key, row[column]);
    picture.Take(file);
    const FittedPicture::Made made = picture.Make(0.5);
    row[column] = made.bytes;
    row.Update();
    picture.Keep(0.5, made);
  }
  // The file of which a record's picture can be made at other sizes; empty where it is its own.
  static QByteArray OriginalOf(const char* table, int key, const char* column) {
    Recordset row = RowOf(table, key);
    FittedPicture picture(table, column);
    picture.Show(key, row[column]);
    return picture.Scale() == 0.5 && picture.Prepare(row[column]) ? picture.File(row[column]) : QByteArray();
  }
  int KeyOf(const QString& title, int set) {
    return Scalar(QStringLiteral("SELECT Max(CardID) FROM tblCard WHERE Title = '%1' AND SetID = %2")
                      .arg(title)
                      .arg(set))
        .toInt();
  }
  void GoToAnotherDatabase() {
    TestDatabase::MakeFile(database_.Path("second.mdb"));
    modData::cn = Connection::Open(database_.Path("second.mdb"));
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_ = 0, card_ = 0, type_ = 0, other_ = 0;
};

TEST_F(SetFileTest, OneSetWithWhatItUses) {
  SaveSet(modData::cn, set_, File());
  EXPECT_EQ(SetsInFile(File()), QStringList{"Harbour"});
  const Connection file = Connection::OpenToRead(File());
  const auto count = [&](const char* rows) {
    return Recordset::OpenSnapshot(file, QStringLiteral("SELECT COUNT(*) AS n FROM ") + rows)["n"].Int32();
  };
  EXPECT_EQ(count("tblCard"), 2);
  EXPECT_EQ(count("tblFont"), 13);
  EXPECT_EQ(count("tblCardType"), 2);
  EXPECT_EQ(count("tblCardBack"), 1);
  EXPECT_EQ(count("tblSet WHERE SaveTo IS NULL"), 1);
}

TEST_F(SetFileTest, BroughtIntoTheSameDatabase) {
  const QByteArray before = Listing(set_);
  SaveSet(modData::cn, set_, File());
  const QString backs = Scalar("SELECT COUNT(*) FROM tblCardBack");
  const int brought = BringIn(modData::cn);
  EXPECT_EQ(Scalar(QStringLiteral("SELECT SetName FROM tblSet WHERE SetID = %1").arg(brought)),
            "Harbour (2)");
  EXPECT_EQ(Listing(brought).replace("Harbour (2)", "Harbour"), before);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblCardBack"), backs);
  // The type that is locked to the set has a twin, locked to the new one, which is its default too.
  EXPECT_EQ(
      Scalar(QStringLiteral("SELECT t.UpperLeft FROM tblCardType AS t, tblSet AS s WHERE s.SetID = %1 AND "
                            "t.UsedInSet = %1 AND t.CardTypeID = s.DefaultCardTypeID")
                 .arg(brought)),
      "TIDE");
  EXPECT_EQ(Scalar(QStringLiteral(
                       "SELECT COUNT(*) FROM tblCard AS a, tblCard AS b WHERE a.Title = b.Title AND a.SetID "
                       "= %1 AND b.SetID = %2 AND a.Picture = b.Picture AND a.CardTypeID <> b.CardTypeID")
                       .arg(set_)
                       .arg(brought)),
            "1");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblFont"), "39");
}

TEST_F(SetFileTest, BroughtIntoAnotherDatabase) {
  const QByteArray before = Listing(set_);
  SaveSet(modData::cn, set_, File());
  GoToAnotherDatabase();
  Run("UPDATE tblCardBack SET BackText = 'Another' WHERE CardBackID = 1");
  const int brought = BringIn(modData::cn);
  EXPECT_EQ(Listing(brought), before);
  EXPECT_EQ(
      Scalar(QStringLiteral("SELECT COUNT(*) FROM tblCard AS c, tblCardBack AS b WHERE c.SetID = %1 AND "
                            "b.CardBackID = c.CardBackID AND b.CardBackID > 6 AND b.Original = 0")
                 .arg(brought)),
      "2");
}

TEST_F(SetFileTest, OriginalsGoAlong) {
  const QByteArray file = TestDatabase::GradientPicture(90, 60);
  const QByteArray symbol = TestDatabase::GradientPicture(40, 44);
  Fit("tblCard", card_, "Picture", file);
  Fit("tblSet", set_, "Symbol", symbol);
  Fit("tblCardBack", 1, "Picture", file);
  // That of a picture which another program has replaced since stays at home.
  const int net = KeyOf("Net", set_);
  Fit("tblCard", net, "Picture", symbol);
  database_.Store("tblCard", net, "Picture", file);

  const int duplicate = DuplicateRecord(modData::cn, "tblCard", card_);
  EXPECT_EQ(OriginalOf("tblCard", duplicate, "Picture"), file);
  EXPECT_EQ(OriginalOf("tblCard", CopyRecordToSet(modData::cn, "tblCard", card_, other_), "Picture"), file);
  database_.Execute(QStringLiteral("DELETE FROM tblCard WHERE CardID = %1").arg(duplicate));
  EXPECT_EQ(OriginalOf("tblCard", card_, "Picture"), file);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblOriginal"), "5");

  SaveSet(modData::cn, set_, File());
  EXPECT_EQ(
      Recordset::OpenSnapshot(Connection::OpenToRead(File()), "SELECT * FROM tblOriginal").RecordCount(), 3);
  BringIn(modData::cn);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblOriginal"), "7") << "a back that is there needs none";
  GoToAnotherDatabase();
  const int brought = BringIn(modData::cn);
  EXPECT_EQ(OriginalOf("tblCard", KeyOf("Eel", brought), "Picture"), file);
  EXPECT_EQ(OriginalOf("tblSet", brought, "Symbol"), symbol);
  const int back = Scalar("SELECT CardBackID FROM tblCard").toInt();
  EXPECT_GT(back, 6);
  EXPECT_EQ(OriginalOf("tblCardBack", back, "Picture"), file);
  Run("DELETE FROM tblSet");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblOriginal_long"), "1");
}

TEST_F(SetFileTest, ADatabaseWithoutOriginalsTakesThePictures) {
  Fit("tblCard", card_, "Picture", TestDatabase::GradientPicture(90, 60));
  SaveSet(modData::cn, set_, File());
  const QByteArray before = Listing(set_);
  TestDatabase::MakeFile(database_.Path("second.mdb"));
  const auto objects = schema::OriginalObjects();
  for (auto object = objects.rbegin(); object != objects.rend(); ++object) {
    const bool owned = qstrcmp(object->type, "trigger") == 0 && !object->name.startsWith("tblOriginal_of");
    if (owned || qstrcmp(object->type, "index") == 0) continue;  // goes with its table
    Tamper(database_.Path("second.mdb"), QStringLiteral("DROP %1 %2").arg(object->type, object->name));
  }
  modData::cn = Connection::Open(database_.Path("second.mdb"));
  modData::CheckSchema(modData::cn);
  const int brought = BringIn(modData::cn);
  EXPECT_EQ(Listing(brought), before);
  const int copy = DuplicateRecord(modData::cn, "tblCard", KeyOf("Eel", brought));
  EXPECT_GT(RowOf("tblCard", copy)["Picture"].Bytes().size(), 1000);
  SaveSet(modData::cn, brought, File());
  EXPECT_EQ(SetsInFile(File()), QStringList{"Harbour"});
}

// What another hand has put beside the pictures of a file.
TEST_F(SetFileTest, OnlyOriginalsOfTheFilesPicturesAreBroughtIn) {
  const QByteArray file = TestDatabase::GradientPicture(90, 60);
  Fit("tblCard", card_, "Picture", file);
  SaveSet(modData::cn, set_, File());
  const QByteArray good = ReadWhole(File());
  const struct {
    const char* statement;
    int brought;
    bool is_original;
  } cases[] = {
      {"UPDATE tblOriginal_rows SET RecordID = 4711", 0, false},
      {"UPDATE tblOriginal_rows SET TableName = 'tblSet'", 0, false},
      {"UPDATE tblOriginal_rows SET ColumnName = 'Title'", 0, false},
      {"UPDATE tblOriginal_rows SET Digest = 'x'", 0, false},
      {"INSERT INTO tblOriginal_rows SELECT 9, TableName, RecordID, ColumnName, 3, 0, Digest FROM "
       "tblOriginal_rows",
       1, true},
      {"DELETE FROM tblOriginal_long", 1, false},
      {"UPDATE tblOriginal_long SET File = zeroblob(90000000)", 1, false},
      {"UPDATE tblOriginal_long SET File = 'text'", -1, false},
      {"UPDATE tblOriginal_rows SET Scale = 9e999", -1, false},
      {"UPDATE tblOriginal_rows SET Scale = 'x'", -1, false},
      {"UPDATE tblOriginal_rows SET Scale = 0", 1, false},
      {"UPDATE tblOriginal_rows SET Scale = 1e300", 1, false},
  };
  for (const auto& [statement, brought, is_original] : cases) {
    ReplaceFile(File(), good);
    Tamper(QString::fromLatin1(statement));
    const QString sets = Scalar("SELECT COUNT(*) FROM tblSet");
    const int failed = ErrorOf([&] { BringInSets(modData::cn, File()); });
    EXPECT_EQ(failed != 0, brought < 0) << statement << failed;
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblSet") == sets, brought < 0) << statement;
    if (brought < 0) continue;
    const int card = Scalar("SELECT Max(CardID) FROM tblCard WHERE Title = 'Eel'").toInt();
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM tblOriginal WHERE RecordID >= %1").arg(card)),
              QString::number(brought))
        << statement;
    EXPECT_EQ(OriginalOf("tblCard", card, "Picture") == file, is_original) << statement;
  }
}

// Each is looked up in what has been added before it.
TEST_F(SetFileTest, VeryManyTypesTakeAsLongEach) {
  SaveSet(modData::cn, set_, File());
  Tamper(QStringLiteral(
             "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 3000) INSERT INTO "
             "tblCardType SELECT 9000 + i, 'ZZ' || i, '', '', '', 0, 1, 2, 0, %1 FROM n")
             .arg(set_));
  QElapsedTimer timer;
  timer.start();
  BringIn(modData::cn);
  EXPECT_LT(timer.elapsed(), 15000);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblCardType WHERE UpperLeft LIKE 'ZZ%'"), "3000");
}

TEST_F(SetFileTest, AFileOfAnotherHandChangesNothing) {
  SaveSet(modData::cn, set_, File());
  const QByteArray good = ReadWhole(File());
  const QString sets = Scalar("SELECT COUNT(*) FROM tblSet");
  const QString types = Scalar("SELECT COUNT(*) FROM tblCardType");
  for (const char* statement :
       {"UPDATE tblCard_rows SET Nr = 'many' WHERE Title = 'Net'", "UPDATE tblCard_rows SET Title = x'00FF'",
        "UPDATE tblCard_rows SET BGColour = 99999999999", "UPDATE tblFont SET Size = 'x'",
        "UPDATE tblCard_rows SET Nr = 99999", "UPDATE tblSet_rows SET EditionID = 7",
        "DELETE FROM tblSet_rows", "DROP TABLE tblArea", "UPDATE tblCard_rows SET PicTop = 9e999"}) {
    ReplaceFile(File(), good);
    Tamper(QString::fromLatin1(statement));
    const QByteArray tampered = ReadWhole(File());
    EXPECT_NE(ErrorOf([&] { BringInSets(modData::cn, File()); }), 0) << statement;
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblSet"), sets) << statement;
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblCardType"), types) << statement;
    EXPECT_EQ(ReadWhole(File()), tampered) << statement;
  }
  ReplaceFile(File(), good.left(good.size() / 2));
  EXPECT_EQ(ErrorOf([&] { BringInSets(modData::cn, File()); }), 3000);
}

// What may be told: nothing is written over, nothing hangs, and nothing of the database changes.
TEST_F(SetFileTest, PlacesThatAreNoFilesOfSets) {
  SaveSet(modData::cn, set_, File());
  const QString own = database_.Path("orv.mdb"), folder = database_.Path("folder"),
                fifo = database_.Path("fifo");
  const QString empty = database_.WriteFile("empty.orvset", ""), link = database_.Path("link.orvset");
  QDir().mkdir(folder);
  ASSERT_EQ(mkfifo(fifo.toUtf8().constData(), 0600), 0);
  QFile::link(own, link);
  const QByteArray before = ReadWhole(own);
  EXPECT_EQ(ErrorOf([&] { BringInSets(modData::cn, empty); }), 3000);
  const struct {
    QString path;
    int saving, bringing;
  } cases[] = {{own, 70, 3000},
               {link, 70, 3000},
               {folder, 75, 75},
               {fifo, 75, 75},
               {database_.Path("no/set.orvset"), 75, 53},
               {database_.Path("a?b.orvset"), 75, 53}};
  for (const auto& [path, saving, bringing] : cases) {
    EXPECT_EQ(ErrorOf([&] { SaveSet(modData::cn, set_, path); }), saving) << path.toStdString();
    EXPECT_EQ(ErrorOf([&] { BringInSets(modData::cn, path); }), bringing) << path.toStdString();
    EXPECT_EQ(ReadWhole(own), before) << path.toStdString();
  }
  const Connection reader = Connection::OpenToRead(File());
  EXPECT_EQ(ErrorOf([&] { SaveSet(modData::cn, set_, File()); }), 70) << "somebody has it open";
  EXPECT_EQ(ErrorOf([&] { SaveSet(modData::cn, 4711, database_.Path("none.orvset")); }), 3021);
  EXPECT_FALSE(FileExists(database_.Path("none.orvset")));
}

TEST_F(SetFileTest, ASavedSetTakesNoJournalOfTheFileBefore) {
  const QString journal = database_.WriteFile("harbour.orvset-journal", QByteArray(600, 'x'));
  database_.WriteFile("harbour.orvset", "what was there");
  SaveSet(modData::cn, set_, File());
  EXPECT_FALSE(FileExists(journal));
  EXPECT_EQ(SetsInFile(File()), QStringList{"Harbour"});
}

// As the old database may have it.
TEST_F(SetFileTest, RecordsThatShareAFontAreSaved) {
  Run(QStringLiteral("UPDATE tblSet SET CardTypeFontID = CardNumberFontID WHERE SetID = %1").arg(set_));
  SaveSet(modData::cn, set_, File());
  EXPECT_EQ(Scalar(QStringLiteral(
                       "SELECT COUNT(*) FROM tblSet WHERE SetID = %1 AND CardTypeFontID <> CardNumberFontID")
                       .arg(BringIn(modData::cn))),
            "1");
}

TEST_F(SetFileTest, ADuplicateStandsBehindItsOriginal) {
  const int copy = DuplicateRecord(modData::cn, "tblCard", card_);
  database_.SelectSet(set_);
  QStringList cards;
  for (Recordset& rows = modData::rsCard; !rows.IsEOF(); rows.MoveNext())
    cards.append(rows["Nr"].Text() + rows["Title"].Text() + rows["FileName"].TextOrEmpty());
  EXPECT_EQ(cards, (QStringList{"1EelEel", "2Eel", "3Net"}));
  EXPECT_EQ(
      Scalar(QStringLiteral("SELECT COUNT(*) FROM tblCard WHERE Picture = (SELECT Picture FROM tblCard WHERE "
                            "CardID = %1)")
                 .arg(copy)),
      "2");
  EXPECT_EQ(ErrorOf([] { DuplicateRecord(modData::cn, "tblCard", 9999); }), 3021);
}

// A file of an earlier version may hold copies without one.
TEST_F(SetFileTest, ACardWithoutAFileNameComesInWithAnEmptyOne) {
  SaveSet(modData::cn, set_, File());
  Tamper("UPDATE tblCard_rows SET FileName = NULL");
  BringInSets(modData::cn, File());
  EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM tblCard WHERE FileName IS NULL")), "0");
}

TEST_F(SetFileTest, ACopyInAnotherSetHasItsLockedType) {
  database_.AddCard(other_, 1, "Heather");
  for (const char* expected : {"2", "3"}) {
    const int copy = CopyRecordToSet(modData::cn, "tblCard", card_, other_);
    EXPECT_EQ(Scalar(QStringLiteral(
                         "SELECT c.Nr FROM tblCard AS c, tblCardType AS t WHERE c.CardID = %1 AND c.SetID = "
                         "%2 AND t.CardTypeID = c.CardTypeID AND t.UsedInSet = %2")
                         .arg(copy)
                         .arg(other_)),
              expected);
  }
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblCardType WHERE UpperLeft = 'TIDE'"), "2");
}

TEST_F(SetFileTest, TenThousandSetsOfOneNameComeInWithinSeconds) {
  SaveSet(modData::cn, set_, File());
  Tamper(File(),
         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 9999) "
         "INSERT INTO tblSet (SetName, LanguageID, EditionID, PicFormatID) SELECT 'HARBOUR', 1, 2, 1 FROM n");
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(BringInSets(modData::cn, File()).size(), 10000u);
  EXPECT_LT(time.elapsed(), 60'000);
  EXPECT_EQ(Scalar("SELECT count(DISTINCT lower(SetName)) FROM tblSet"), "10002");
  EXPECT_EQ(Scalar("SELECT count(*) FROM tblSet WHERE SetName IN ('Harbour (2)', 'HARBOUR (10001)')"), "2");
}

}  // namespace
}  // namespace orv
