#include "exchange/SetFile.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "base/Files.h"
#include "exchange/CopyRecord.h"
#include "output/modFile.h"
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
  // A statement of another hand on the file.
  void Tamper(const QString& statement) {
    sqlite3* file = nullptr;
    sqlite3_open(File().toUtf8().constData(), &file);
    EXPECT_EQ(sqlite3_exec(file, statement.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(file);
    sqlite3_close(file);
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
  TestDatabase::MakeFile(database_.Path("second.mdb"));
  modData::cn = Connection::Open(database_.Path("second.mdb"));
  Run("UPDATE tblCardBack SET BackText = 'Another' WHERE CardBackID = 1");
  const int brought = BringIn(modData::cn);
  EXPECT_EQ(Listing(brought), before);
  EXPECT_EQ(
      Scalar(QStringLiteral("SELECT COUNT(*) FROM tblCard AS c, tblCardBack AS b WHERE c.SetID = %1 AND "
                            "b.CardBackID = c.CardBackID AND b.CardBackID > 6 AND b.Original = 0")
                 .arg(brought)),
      "2");
}

TEST_F(SetFileTest, AFileOfAnotherHandChangesNothing) {
  SaveSet(modData::cn, set_, File());
  const QByteArray good = ReadWhole(File());
  const QString sets = Scalar("SELECT COUNT(*) FROM tblSet");
  const QString types = Scalar("SELECT COUNT(*) FROM tblCardType");
  for (const char* statement :
       {"UPDATE tblCard_rows SET Nr = 'many' WHERE Title = 'Net'", "UPDATE tblCard_rows SET Title = x'00FF'",
        "UPDATE tblCard_rows SET BGColour = 99999999999", "UPDATE tblFont SET Size = 'x'",
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

}  // namespace
}  // namespace orv
