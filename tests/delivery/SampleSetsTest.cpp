#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <array>

#include "DeliveredFile.h"
#include "composition/WrapText.h"
#include "pictures/FittedPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

int SetOf(int edition) {
  return Delivered(QString("SELECT * FROM tblSet WHERE EditionID = %1").arg(edition))["SetID"].Int32();
}

Recordset RecordsOf(const char* table, int set) {
  return Delivered(QString("SELECT * FROM %1 WHERE SetID = %2 ORDER BY Nr").arg(table).arg(set));
}

TEST(SampleSets, HaveTheirFontsAndRecords) {
  QSet<int> fonts;
  int slots_used = 0;
  ForEach(Delivered("SELECT * FROM tblSet"), [&](const Recordset& set) {
    for (const QString& slot : set.ColumnNames().filter("FontID")) {
      const QString sql = QString("SELECT * FROM tblFont WHERE FontID = %1").arg(set[slot].Int32());
      EXPECT_FALSE(Delivered(sql).IsEmpty()) << qPrintable(slot);
      fonts << set[slot].Int32();
      ++slots_used;
    }
    EXPECT_EQ(SizeOf(set["Symbol"]), QSize(11, 11));
  });
  EXPECT_EQ(slots_used, 13 * Delivered("SELECT * FROM tblSet").RecordCount());
  EXPECT_EQ(fonts.size(), slots_used) << "each slot has a font of its own";
  EXPECT_EQ(Delivered("SELECT * FROM tblFont").RecordCount(), slots_used);
  EXPECT_GE(RecordsOf("tblCard", SetOf(2)).RecordCount(), 12);
  EXPECT_GE(RecordsOf("tblCard", SetOf(3)).RecordCount(), 12);
  EXPECT_EQ(RecordsOf("tblCharacter", SetOf(2)).RecordCount(), 4);
  EXPECT_EQ(RecordsOf("tblLargeCard", SetOf(2)).RecordCount(), 3);
}

TEST(SampleSets, NumbersAreDenseAndReferencesSound) {
  for (const char* table : {"tblCard", "tblCharacter", "tblLargeCard"}) {
    const QString gaps =
        "SELECT SetID FROM %1 GROUP BY SetID HAVING MIN(Nr) <> 1 OR MAX(Nr) <> COUNT(*) OR COUNT(DISTINCT "
        "Nr) <> COUNT(*)";
    EXPECT_TRUE(Delivered(gaps.arg(table)).IsEmpty()) << table;
  }
  using Reference = std::array<const char*, 4>;  // table and column, table and key
  for (const auto& [table, column, to, key] :
       {Reference{"tblCard", "CardTypeID", "tblCardType", "CardTypeID"},
        Reference{"tblCard", "CardBackID", "tblCardBack", "CardBackID"},
        Reference{"tblCharacter", "StartingAreaID", "tblArea", "AreaID"},
        Reference{"tblCharacter", "CharacterBackID", "tblCharacterBack", "CharacterBackID"}}) {
    const QString unsound =
        "SELECT r.Nr FROM %1 r INNER JOIN tblSet s ON r.SetID = s.SetID WHERE r.%2 NOT IN (SELECT %4 FROM %3 "
        "WHERE LanguageID = s.LanguageID AND EditionID = s.EditionID)";
    EXPECT_TRUE(Delivered(unsound.arg(table, column, to, key)).IsEmpty()) << table << "." << column;
  }
}

// A picture that is too small for its place, or moved too far, would leave a white edge.
struct Place {
  const char* table;
  const char* picture;
  const char* left;  // columns of the offsets, in twips; none for a picture that stands at the corner
  const char* top;
  int edition;
  QSizeF size;         // of the place, frame and all
  const char* height;  // or the column that tells its height
};

QSizeF Shown(const Recordset& row, const Place& place) {
  const QSizeF image = SizeOf(row[place.picture]);
  if (place.left == nullptr) return image;
  EXPECT_LE(row[place.left].Number(), 0);
  EXPECT_LE(row[place.top].Number(), 0);
  return image + QSizeF(row[place.left].Number(), row[place.top].Number()) / 15;
}

TEST(SampleSets, PicturesFillTheirPlaces) {
  const Place places[] = {{"tblCard", "Background", nullptr, nullptr, 2, {150, 254}, nullptr},
                          {"tblCard", "Background", nullptr, nullptr, 3, {161, 245}, nullptr},
                          {"tblCard", "Picture", "PicLeft", "PicTop", 2, {139, 105}, "PicHeight"},
                          {"tblCard", "Picture", "PicLeft", "PicTop", 3, {131, 105}, "PicHeight"},
                          {"tblCharacter", "Picture", "PicLeft", "PicTop", 2, {121, 220}, nullptr},
                          {"tblCharacter", "PlayingPiece", "PPLeft", "PPTop", 2, {132, 222}, nullptr},
                          {"tblCharacter", "Background", nullptr, nullptr, 2, {276, 228}, nullptr},
                          {"tblLargeCard", "Picture", "PicLeft", "PicTop", 2, {121, 238}, nullptr},
                          {"tblLargeCard", "BGPicture", nullptr, nullptr, 2, {302, 254}, nullptr},
                          {"tblLargeCard", "LargeCardBack", nullptr, nullptr, 2, {302, 254}, nullptr}};
  for (const Place& place : places) {
    int pictures = 0;
    ForEach(RecordsOf(place.table, SetOf(place.edition)), [&](const Recordset& row) {
      if (row[place.picture].IsNull()) return;
      ++pictures;
      if (place.height != nullptr && row["Resize"].Bool()) return;
      const QSizeF shown = Shown(row, place);
      EXPECT_GE(shown.width(), place.size.width()) << place.table << row["Nr"].Int32();
      const double height = place.height == nullptr ? place.size.height() : row[place.height].Number();
      EXPECT_GE(shown.height(), height) << place.table << row["Nr"].Int32();
    });
    EXPECT_GT(pictures, 0) << place.table << place.picture;
  }
}

// As if each had been dropped on its frame and scaled to a quarter.
TEST(SampleSets, FramedPicturesAreMadeOfTheirOriginals) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QFile::copy(ORV_DELIVERED_DATABASE, folder.filePath("orv.mdb")));
  modData::cn = Connection::Open(folder.filePath("orv.mdb"));
  int originals = 0;
  for (const auto& [table, key, column] : {std::array{"tblCard", "CardID", "Picture"},
                                           {"tblCharacter", "CharacterID", "Picture"},
                                           {"tblCharacter", "CharacterID", "PlayingPiece"},
                                           {"tblLargeCard", "LargeCardID", "Picture"}}) {
    ForEach(Delivered(QString("SELECT * FROM %1 WHERE NOT %2 IS NULL").arg(table, column)),
            [&, table = table, key = key, column = column](const Recordset& row) {
              FittedPicture fitted(table, column);
              fitted.Show(row[key].Int32(), row[column]);
              EXPECT_EQ(fitted.Scale(), 0.25) << table << row[key].Int32();
              ASSERT_TRUE(fitted.Prepare(row[column]));
              EXPECT_EQ(fitted.NaturalSize(), 4 * SizeOf(row[column]));
              EXPECT_EQ(fitted.Make(0.25).bytes, row[column].Bytes());
              ++originals;
            });
  }
  EXPECT_EQ(modData::OpenSnapshot("SELECT * FROM tblOriginal").RecordCount(), originals);
  modData::cn = Connection();
}

// A frame that closes around its picture moves with it, and stays on the card.
TEST(SampleSets, FramesAroundPicturesStayInTheirPlaces) {
  int resized = 0;
  for (const auto& [edition, width] : {std::pair(2, 139), std::pair(3, 131)}) {
    ForEach(RecordsOf("tblCard", SetOf(edition)), [&, width = width](const Recordset& card) {
      if (!card["Resize"].Bool()) return;
      ++resized;
      EXPECT_LE(card["PicLeft"].Number() / 15 + SizeOf(card["Picture"]).width(), width)
          << card["Title"].Text().toStdString();
    });
  }
  EXPECT_GE(resized, 2);
}

// The file of a record is called by its title or name.
TEST(SampleSets, TitlesMakeFileNames) {
  const QRegularExpression good(R"(^[^\\/:*?"<>|\x00-\x1f]+$)");
  for (const auto& [table, column] : {std::pair("tblCard", "Title"), std::pair("tblLargeCard", "Title"),
                                      std::pair("tblCharacter", "Name")}) {
    ForEach(Delivered(QString("SELECT * FROM %1").arg(table)), [&, column = column](const Recordset& row) {
      EXPECT_TRUE(good.match(row[column].Text()).hasMatch()) << row[column].Text().toStdString();
    });
  }
}

// ---- texts stay in their boxes ----------------------------------------------------------------

class Measure {
 public:
  Measure(const Recordset& set, const char* slot) {
    const Recordset font =
        Delivered(QString("SELECT * FROM tblFont WHERE FontID = %1").arg(set[slot].Int32()));
    surface_.SetFont(
        {font["Font"].Text(), font["Size"].Number(), font["Bold"].Bool(), font["Italic"].Bool()});
  }
  double Width(const QString& text) const { return surface_.TextWidth(text); }
  // Height of the wrapped text.
  double Height(const QString& text, double width) const {
    Label box(nullptr);
    box.SetWidth(width);
    int lines = 0;
    WrapText(text, box, surface_, [&](const QString&, int number) { lines = number + 1; });
    return lines * surface_.TextHeight("Ag");
  }

 private:
  Surface surface_;
};

struct CardBox {
  int edition;
  double title, bold, info;  // widths
  double title_bottom, frame_top, bold_height, bottom;
};

double TopOfInformation(const Recordset& card, const CardBox& box) {
  const double above =
      card["UsePicture"].Bool() ? box.frame_top + card["PicHeight"].Number() : box.title_bottom;
  return above + 3 + (card["BoldText"].Text().isEmpty() ? 1 : box.bold_height);
}

TEST(SampleSets, TextsOfCardsFit) {
  for (const CardBox& box :
       {CardBox{2, 139, 139, 139, 41, 40, 12, 241}, CardBox{3, 137, 137, 133, 33, 32, 20, 219}}) {
    const Recordset set = Delivered(QString("SELECT * FROM tblSet WHERE EditionID = %1").arg(box.edition));
    const Measure title(set, "CardTitleFontID");
    const Measure bold(set, "CardBoldFontID");
    const Measure info(set, "CardInformationFontID");
    ForEach(RecordsOf("tblCard", set["SetID"].Int32()), [&](const Recordset& card) {
      const std::string name = card["Title"].Text().toStdString();
      EXPECT_LE(title.Width(card["Title"].Text()), box.title) << name;
      EXPECT_LE(bold.Width(card["BoldText"].Text()), box.bold) << name;
      EXPECT_LE(TopOfInformation(card, box) + info.Height(card["Information"].Text(), box.info), box.bottom)
          << name;
    });
  }
}

TEST(SampleSets, TextsOfCharactersAndLargeCardsFit) {
  const Recordset set = Delivered("SELECT * FROM tblSet WHERE EditionID = 2");
  const Measure abilities(set, "CharacterSpecialFontID");
  ForEach(RecordsOf("tblCharacter", set["SetID"].Int32()), [&](const Recordset& row) {
    EXPECT_LE(abilities.Height(row["Abilities"].Text(), 144), 177) << row["Name"].Text().toStdString();
  });
  const Measure title(set, "CardLargeTitleFontID");
  const Measure info(set, "CardLargeInfoFontID");
  ForEach(RecordsOf("tblLargeCard", set["SetID"].Int32()), [&](const Recordset& row) {
    const double width = 296 - (8 + row["PicWidth"].Number() + 5);
    EXPECT_LE(title.Height(row["Title"].Text(), width), 24) << row["Title"].Text().toStdString();
    EXPECT_LE(info.Height(row["Information"].Text(), width), 212) << row["Title"].Text().toStdString();
  });
}

}  // namespace
}  // namespace orv
