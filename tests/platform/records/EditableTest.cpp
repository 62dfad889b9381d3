#include "base/Files.h"
#include "platform/records/Sample.h"

namespace orv {
namespace {

class EditableTest : public Sample {
 protected:
  // Keys of all rows, from the first on.
  static QString Keys(Recordset cards) {
    cards.MoveFirst();
    return Rows(cards, {"CardID"});
  }
  static int Key(const Recordset& cards) { return cards["CardID"].Int32(); }
};

TEST_F(EditableTest, APendingChangeIsPostedByMovesFindAndCloseAndDroppedByRelease) {
  using Post = std::pair<const char*, void (*)(Recordset&)>;
  for (const auto& [name, post] :
       {Post("MoveFirst", [](Recordset& r) { r.MoveFirst(); }),
        Post("MoveLast", [](Recordset& r) { r.MoveLast(); }),
        Post("MoveNext", [](Recordset& r) { r.MoveNext(); }),
        Post("MovePrevious", [](Recordset& r) { r.MovePrevious(); }),
        Post("Find", [](Recordset& r) { r.Find("Nr = 77"); }), Post("Close", [](Recordset& r) { r.Close(); }),
        Post("Update", [](Recordset& r) { r.Update(); }), Post("AddNew", [](Recordset& r) { r.AddNew(); })}) {
    Recordset cards = Cards();
    cards["Title"] = name;
    EXPECT_EQ(cards["title"].Text(), name);
    EXPECT_NE(StoredTitle(), name);
    post(cards);
    EXPECT_EQ(StoredTitle(), name);
  }
  {
    Recordset cards = Cards();
    cards["Title"] = "released";
    cards = {};
    cards = Cards();
    cards["Title"] = "cancelled";
    cards.CancelUpdate();
    EXPECT_EQ(cards["Title"].Text(), "AddNew");
    cards["Title"] = "destroyed";
  }
  EXPECT_EQ(StoredTitle(), "AddNew");
}

TEST_F(EditableTest, KeepsTheOrderOfItsOpeningAndReadsRowsWhenItMoves) {
  Recordset cards = Cards();
  cards["Nr"] = 9;
  cards.MoveNext();
  EXPECT_EQ(Key(cards), 1);
  Raw("UPDATE tblCard SET Title = 'elsewhere', Nr = 0 WHERE CardID IN (1, 3)");
  EXPECT_EQ(cards["Title"].Text(), "Bravo");
  cards.MoveNext();
  EXPECT_EQ(cards["Title"].Text(), "elsewhere");
  cards.MovePrevious();
  EXPECT_EQ(cards["Title"].Text(), "elsewhere");
  cards.MoveFirst();
  EXPECT_EQ(Rows(cards, {"CardID", "Nr"}), "2|9 / 1|0 / 3|0 / 4|3 / 5|4");
  EXPECT_EQ(Keys(Cards()), "1 / 3 / 4 / 5 / 2");
}

TEST_F(EditableTest, FindRunsForwardInTheOrderOfTheKeysAndKnowsOnlyThese) {
  Recordset cards = Cards();
  Raw("INSERT INTO tblCard (SetID, Nr) VALUES (1, 50)");
  using Row = std::pair<const char*, int>;
  for (const auto& [criterion, key] : {Row("Nr = 2", 1), Row("Nr=2", 1), Row("SetID = 1", 1),
                                       Row("CardID = 3", 3), Row("Title = \"DELTA\"", 4)}) {
    cards.Find(criterion);
    EXPECT_EQ(Key(cards), key) << criterion;
  }
  cards.Find("Nr = 1");
  EXPECT_TRUE(cards.IsEOF()) << "it stands before the current row";
  EXPECT_EQ(ErrorOf([&] { cards["Nr"].Get(); }), 3021);
  for (const char* foreign : {"CardID = 6", "Nr = 50"}) {
    cards.MoveFirst();
    cards.Find(foreign);
    EXPECT_TRUE(cards.IsEOF()) << foreign;
  }
  cards.MoveFirst();
  EXPECT_EQ(ErrorOf([&] { cards.Find("Nowhere = 1"); }), 3000);
  EXPECT_EQ(Key(cards), 2);

  // A row that leaves the condition by this recordset's own edit stays one of its rows.
  Recordset types = Editable("SELECT * FROM tblCardType WHERE LanguageID = 2 ORDER BY UpperLeft");
  types["LanguageID"] = 1;
  types.Update();
  types.FindFirst("CardTypeID = 7");
  EXPECT_FALSE(types.IsEOF());
}

TEST_F(EditableTest, ANewRowIsCurrentAndLastAfterItsUpdate) {
  Recordset sets = Editable("SELECT * FROM tblSet ORDER BY SetName");
  sets.AddNew();
  EXPECT_FALSE(sets.IsEOF() || sets.IsBOF());
  EXPECT_TRUE(sets["SetName"].IsNull());
  sets["SetName"] = "aaa";
  sets["EditionID"] = 3;
  EXPECT_EQ(sets["EditionID"].Int16(), 3);
  sets.Update();
  EXPECT_EQ(sets["SetID"].Int32(), 4);
  EXPECT_FALSE(sets["UseSymbol"].Bool()) << "the file's default";
  EXPECT_TRUE(sets["SaveTo"].IsNull());
  sets.MoveFirst();
  EXPECT_EQ(Rows(sets, {"SetID"}), "3 / 2 / 1 / 4");
  sets.FindFirst("SetID=4");
  EXPECT_EQ(sets["SetName"].Text(), "aaa");
  EXPECT_EQ(Rows(Editable("SELECT * FROM tblSet ORDER BY SetName"), {"SetID"}), "4 / 3 / 2 / 1");

  // A move posts it too; cancelling or dropping it leaves nothing.
  sets.AddNew();
  sets["SetName"] = "moved";
  sets.MoveFirst();
  sets.MoveLast();
  EXPECT_EQ(sets["SetName"].Text(), "moved");
  sets.AddNew();
  sets["SetName"] = "cancelled";
  sets.CancelUpdate();
  EXPECT_EQ(sets["SetName"].Text(), "moved");
  sets.AddNew();
  sets = {};
  EXPECT_EQ(Raw("SELECT COUNT(*) FROM tblSet"), "5");
}

TEST_F(EditableTest, AnEmptyRecordsetTakesItsFirstRow) {
  Recordset none = Editable("SELECT * FROM tblCard WHERE SetID = 99 ORDER BY Nr");
  EXPECT_TRUE(none.IsEmpty());
  EXPECT_EQ(ErrorOf([&] { none.Find("Nr = 1"); }), 3021);
  EXPECT_EQ(ErrorOf([&] { none.MoveFirst(); }), 3021);
  none.AddNew();
  none.Update();
  EXPECT_FALSE(none.IsEmpty());
  none.FindFirst("CardID = 7");
  EXPECT_EQ(Key(none), 7);
}

TEST_F(EditableTest, AFailureInAddNewLeavesNoRowBehind) {
  Raw("CREATE TRIGGER refuse BEFORE INSERT ON tblCard_rows WHEN NEW.Nr = 13 BEGIN SELECT RAISE(ABORT, "
      "'unlucky'); END");
  Recordset cards = Cards();
  cards.MoveNext();
  cards.AddNew();
  cards["Nr"] = 13;
  EXPECT_EQ(ErrorOf([&] { cards.Update(); }), 3000);
  EXPECT_EQ(Key(cards), 1);
  EXPECT_EQ(cards.RecordCount(), 5);
  // The picture and its row come together or not at all.
  Raw("CREATE TRIGGER refuseLong BEFORE INSERT ON tblCard_long BEGIN SELECT RAISE(ABORT, 'no picture'); END");
  cards.AddNew();
  cards["Nr"] = 14;
  cards["Picture"] = QByteArray("x");
  EXPECT_EQ(ErrorOf([&] { cards.MoveLast(); }), 3000);
  cards["Title"] = "both";
  cards["Picture"] = QByteArray("x");
  EXPECT_EQ(ErrorOf([&] { cards.Update(); }), 3000);
  EXPECT_EQ(cards["Title"].Text(), "both") << "waits on";
  EXPECT_EQ(Raw("SELECT COUNT(*) || MAX(Title) FROM tblCard WHERE SetID = 1"), "5alpha");
}

TEST_F(EditableTest, DeleteLeavesNoCurrentRowUntilAMoveAndKeysAreNotUsedAgain) {
  Recordset cards = Cards();
  cards.MoveLast();
  cards["Title"] = "dropped";
  cards.Delete();
  EXPECT_EQ(ErrorOf([&] { cards["Nr"].Get(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { cards.Delete(); }), 3021);
  EXPECT_FALSE(cards.IsEOF() || cards.IsBOF());
  cards.MovePrevious();
  EXPECT_EQ(Key(cards), 4);
  cards.MoveFirst();
  cards.MoveNext();
  cards.Delete();
  cards.MoveNext();
  EXPECT_EQ(Key(cards), 3);
  EXPECT_EQ(Keys(cards), "2 / 3 / 4");
  for (int i = 0; i < 3; ++i) {
    cards.MoveFirst();
    cards.Delete();
  }
  EXPECT_TRUE(cards.IsEmpty());
  EXPECT_EQ(ErrorOf([&] { cards.MoveFirst(); }), 3021);
  Raw("DELETE FROM tblCard");
  cards.AddNew();
  cards.Update();
  EXPECT_EQ(Key(cards), 7);
}

TEST_F(EditableTest, RowsDeletedElsewhereAreSkippedAndAChangeToOneIsAnError) {
  Recordset cards = Cards();
  connection_ = {};  // the recordset holds the file open by itself
  Raw("DELETE FROM tblCard WHERE CardID IN (1, 3, 5)");
  cards.MoveNext();
  EXPECT_EQ(Key(cards), 4);
  cards.MoveLast();
  EXPECT_EQ(Key(cards), 4);
  cards["Title"] = "late";
  Raw("DELETE FROM tblCard WHERE CardID = 4");
  EXPECT_EQ(ErrorOf([&] { cards.Update(); }), 3021);
  EXPECT_EQ(Keys(cards), "2");
  cards.MoveFirst();
  cards["Picture"] = QByteArray("late");
  Raw("DELETE FROM tblCard");
  EXPECT_EQ(ErrorOf([&] { cards.MoveNext(); }), 3021);
  EXPECT_EQ(Raw("SELECT COUNT(*) FROM tblCard_long"), "0");
  EXPECT_EQ(ErrorOf([&] { cards.MoveFirst(); }), 3021);
  EXPECT_TRUE(cards.IsEmpty());
}

TEST_F(EditableTest, AnUpdateWritesNothingWhereTheFileDiffersInNothing) {
  Raw("UPDATE tblCard SET PicTop = 1.5, OneLine = -1 WHERE CardID = 2");
  Recordset cards = Cards();
  const QByteArray before = ReadWhole(Path());
  cards["Title"] = "Alpha";
  cards["Nr"] = QString("1");
  cards["PicTop"] = 1.5;
  cards["OneLine"] = true;
  cards["Artist"] = Value::Null();
  cards["Picture"] = Value::Null();
  cards.Update();
  cards.MoveNext();
  cards["Picture"] = QByteArray::fromHex("AABBCC");
  cards.Update();
  EXPECT_TRUE(ReadWhole(Path()) == before);
  // Null is not the empty text, and the file is what counts, not what was read of it.
  cards.MoveFirst();
  cards["Artist"] = "";
  cards.Update();
  EXPECT_EQ(Raw("SELECT Artist IS NULL FROM tblCard WHERE CardID = 2"), "0");
  EXPECT_FALSE(cards["Artist"].IsNull());
  Raw("UPDATE tblCard SET Title = 'elsewhere' WHERE CardID = 2");
  cards["Title"] = "Alpha";
  cards.Update();
  EXPECT_EQ(StoredTitle(), "Alpha");
}

TEST_F(EditableTest, KeepsValuesAsTheyAre) {
  Recordset cards = Cards();
  const QString text = "Ünï \"q\" 'q' \r\nzwei 🐉";
  cards["Title"] = text;
  cards["PicLeft"] = -12.25;
  cards["UsePicture"] = true;
  cards["BGColour"] = 0xFFFFFF;
  cards["Number"] = 5;
  cards.Update();
  EXPECT_EQ(StoredTitle(), text);
  EXPECT_EQ(Raw("SELECT PicLeft || ' ' || UsePicture || ' ' || BGColour || ' ' || typeof(Number) FROM "
                "tblCard WHERE CardID = 2"),
            "-12.25 -1 16777215 text");
  EXPECT_EQ(cards["Number"].Text(), "5");
  EXPECT_EQ(cards["PicLeft"].Number(), -12.25);
  for (const char* column : {"CardID", "Nowhere"})
    EXPECT_NE(ErrorOf([&] { cards[column] = 1; }), 0) << column;
  EXPECT_EQ(ErrorOf([&] { cards.SetFilter("Nr = 1"); }), 3000);
  Recordset joined = Editable(
      "SELECT CardID, UpperLeft FROM tblCardType INNER JOIN tblCard ON "
      "tblCardType.CardTypeID = tblCard.CardTypeID");
  EXPECT_EQ(ErrorOf([&] { joined["UpperLeft"] = "x"; }), 3000) << "of the other table";
}

}  // namespace
}  // namespace orv
