#include "platform/records/Sample.h"

namespace orv {
namespace {

class SnapshotTest : public Sample {};

TEST_F(SnapshotTest, HoldsItsRowsAndSeesNoLaterChange) {
  Recordset areas = Snapshot("SELECT * FROM tblArea ORDER BY AreaID");
  Raw("UPDATE tblArea SET Area = 'new'; DELETE FROM tblArea WHERE AreaID > 1");
  connection_ = {};
  EXPECT_EQ(Rows(areas, {"area"}), "Élan / East / Elan / ~ / Third");
}

TEST_F(SnapshotTest, MovesBetweenItsEnds) {
  Recordset rows = Snapshot("SELECT * FROM tblPicFormat");
  EXPECT_FALSE(rows.IsBOF() || rows.IsEOF());
  rows.MovePrevious();
  EXPECT_TRUE(rows.IsBOF() && !rows.IsEOF());
  EXPECT_EQ(ErrorOf([&] { rows.MovePrevious(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rows["PicFormat"].Get(); }), 3021);
  rows.MoveNext();
  EXPECT_EQ(rows["PicFormat"].Text(), "BMP");
  rows.MoveLast();
  rows.MoveNext();
  EXPECT_TRUE(rows.IsEOF() && !rows.IsBOF());
  EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), 3021);
  rows.MovePrevious();
  EXPECT_EQ(rows["PicFormat"].Text(), "GIF");

  Recordset none = Snapshot("SELECT * FROM tblPicFormat WHERE PicFormatID = 9");
  EXPECT_TRUE(none.IsEmpty());
  EXPECT_EQ(ErrorOf([&] { none.MoveFirst(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { none.MoveLast(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { none.Find("PicFormatID = 1"); }), 3021);
}

TEST_F(SnapshotTest, FindGoesForwardFromTheCurrentRowInclusive) {
  Recordset types = Snapshot("SELECT * FROM tblCardType ORDER BY CardTypeID");
  using Row = std::pair<const char*, int>;
  for (const auto& [criterion, key] :
       {Row("LowerLeft IS NULL AND CardTypeID > 1", 2), Row("CardTypeID = 3", 3), Row("CardTypeID=3", 3),
        Row("UpperLeft = 'ATNA'", 5), Row("[Number] = \"6\"", 6),
        Row("LowerLeft <> \"\" OR LanguageID = 2", 7)}) {
    types.Find(criterion);
    EXPECT_EQ(types["CardTypeID"].Int32(), key) << criterion;
  }
  types.Find("CardTypeID = 3");
  EXPECT_TRUE(types.IsEOF());
  types.MoveFirst();
  EXPECT_EQ(ErrorOf([&] { types.Find("Nowhere = 3"); }), 3265);
  EXPECT_EQ(ErrorOf([&] { types.Find("CardTypeID = "); }), 3000);
}

TEST_F(SnapshotTest, FilterShowsSomeRowsAndGoesToTheFirst) {
  Recordset areas =
      Snapshot("SELECT *, [Board] & \" : \" & [Area] AS StartArea FROM tblArea ORDER BY AreaID");
  areas.MoveLast();
  using Row = std::pair<const char*, const char*>;
  for (const auto& [filter, keys] :
       {Row("Board = 'OUTER'", "1 / 2"), Row("StartArea = \"inner : third\"", "5"), Row("AreaID = 77", ""),
        Row("", "1 / 2 / 3 / 4 / 5")}) {
    areas.SetFilter(filter);
    EXPECT_EQ(areas.RecordCount(), QString(keys).split(" / ", Qt::SkipEmptyParts).size()) << filter;
    EXPECT_EQ(Rows(areas, {"AreaID"}), keys) << filter;
  }
  areas.SetFilter("Board = 'OUTER'");
  areas.Find("AreaID = 5");
  EXPECT_TRUE(areas.IsEOF());
}

TEST_F(SnapshotTest, IsReadOnlyAndNamesItsColumns) {
  Recordset fonts = Snapshot("SELECT * FROM tblFont ORDER BY FontID");
  EXPECT_EQ(ErrorOf([&] { fonts["Font"] = "x"; }), 3000);
  EXPECT_EQ(ErrorOf([&] { fonts.AddNew(); }), 3000);
  EXPECT_EQ(ErrorOf([&] { fonts.Delete(); }), 3000);
  EXPECT_EQ(ErrorOf([&] { fonts["Face"]; }), 3265);
  EXPECT_EQ(fonts.ColumnNames(), QStringList({"FontID", "Font", "Size", "Bold", "Italic", "Colour"}));
  EXPECT_TRUE(fonts["bold"].Bool());
  EXPECT_TRUE(fonts["Colour"].IsNull());

  Recordset copy = fonts;
  fonts.Close();
  EXPECT_FALSE(fonts.IsOpen() || copy.IsOpen());
  EXPECT_EQ(ErrorOf([&] { copy.MoveFirst(); }), 91);
  EXPECT_EQ(ErrorOf([] { Recordset().MoveFirst(); }), 91);
}

TEST_F(SnapshotTest, GivesItsLongBinariesInChunks) {
  Recordset cards = Snapshot("SELECT * FROM tblCard WHERE SetID = 1 ORDER BY CardID");
  const Field picture = cards["Picture"];
  EXPECT_EQ(picture.ActualSize(), 3);
  EXPECT_EQ(picture.GetChunk(2).toHex(), "aabb");
  EXPECT_EQ(picture.GetChunk(9).toHex(), "cc");
  EXPECT_EQ(picture.GetChunk(9), QByteArray());
  picture.ActualSize();
  EXPECT_EQ(picture.GetChunk(9).toHex(), "aabbcc");
  cards.MoveNext();
  EXPECT_EQ(picture.ActualSize(), 0);
  EXPECT_TRUE(picture.GetChunk(9).isEmpty());
}

}  // namespace
}  // namespace orv
