#include <gtest/gtest.h>

#include <QImage>
#include <QRegularExpression>

#include "DeliveredFile.h"
#include "composition/WrapText.h"

namespace orv {
namespace {

const char* const kSlots[] = {"CardTypeFontID",         "CardNumberFontID",
                              "CardTitleFontID",        "CardBoldFontID",
                              "CardInformationFontID",  "AutonumberFontID",
                              "CardLargeTitleFontID",   "CardLargeInfoFontID",
                              "CharacterNameFontID",    "CharacterSpecialTitleFontID",
                              "CharacterSpecialFontID", "CharacterInfoFontID",
                              "CharacterPieceFontID"};

int SetOf(int edition) {
  return Delivered(QString("SELECT * FROM tblSet WHERE EditionID = %1").arg(edition))["SetID"].Int32();
}

Recordset RecordsOf(const char* table, int set) {
  return Delivered(QString("SELECT * FROM %1 WHERE SetID = %2 ORDER BY Nr").arg(table).arg(set));
}

bool Exists(const QString& table, const QString& key, const Field& reference, const QString& also = "1 = 1") {
  return !Delivered(QString("SELECT %2 FROM %1 WHERE %2 = %3 AND %4")
                        .arg(table, key)
                        .arg(reference.Int32())
                        .arg(also))
              .IsEmpty();
}

TEST(SampleSets, HaveTheirFontsAndRecords) {
  for (Recordset sets = Delivered("SELECT * FROM tblSet"); !sets.IsEOF(); sets.MoveNext()) {
    for (const char* slot : kSlots) EXPECT_TRUE(Exists("tblFont", "FontID", sets[slot])) << slot;
    EXPECT_EQ(QImage::fromData(sets["Symbol"].Get().Bytes()).size(), QSize(11, 11));
  }
  EXPECT_EQ(Delivered("SELECT * FROM tblFont").RecordCount(),
            13 * Delivered("SELECT * FROM tblSet").RecordCount());
  EXPECT_GE(RecordsOf("tblCard", SetOf(2)).RecordCount(), 12);
  EXPECT_GE(RecordsOf("tblCard", SetOf(3)).RecordCount(), 12);
  EXPECT_EQ(RecordsOf("tblCharacter", SetOf(2)).RecordCount(), 4);
  EXPECT_EQ(RecordsOf("tblLargeCard", SetOf(2)).RecordCount(), 3);
}

TEST(SampleSets, NumbersAreDenseAndReferencesSound) {
  for (Recordset sets = Delivered("SELECT * FROM tblSet"); !sets.IsEOF(); sets.MoveNext()) {
    const QString group = QString("LanguageID = %1 AND EditionID = %2")
                              .arg(sets["LanguageID"].Int32())
                              .arg(sets["EditionID"].Int32());
    for (const char* table : {"tblCard", "tblCharacter", "tblLargeCard"}) {
      int nr = 0;
      for (Recordset rows = RecordsOf(table, sets["SetID"].Int32()); !rows.IsEOF(); rows.MoveNext()) {
        EXPECT_EQ(rows["Nr"].Int32(), ++nr) << table;
        if (QString(table) == "tblCard") {
          EXPECT_TRUE(Exists("tblCardType", "CardTypeID", rows["CardTypeID"], group));
          EXPECT_TRUE(Exists("tblCardBack", "CardBackID", rows["CardBackID"], group));
        } else if (QString(table) == "tblCharacter") {
          EXPECT_TRUE(Exists("tblArea", "AreaID", rows["StartingAreaID"], group));
          EXPECT_TRUE(Exists("tblCharacterBack", "CharacterBackID", rows["CharacterBackID"], group));
        }
      }
    }
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
  const QSizeF image = QImage::fromData(row[place.picture].Get().Bytes()).size();
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
    for (Recordset rows = RecordsOf(place.table, SetOf(place.edition)); !rows.IsEOF(); rows.MoveNext()) {
      if (rows[place.picture].IsNull()) continue;
      ++pictures;
      if (place.height != nullptr && rows["Resize"].Bool()) continue;
      const QSizeF shown = Shown(rows, place);
      EXPECT_GE(shown.width(), place.size.width()) << place.table << rows["Nr"].Int32();
      const double height = place.height == nullptr ? place.size.height() : rows[place.height].Number();
      EXPECT_GE(shown.height(), height) << place.table << rows["Nr"].Int32();
    }
    EXPECT_GT(pictures, 0) << place.table << place.picture;
  }
}

// A frame that closes around its picture moves with it, and stays on the card.
TEST(SampleSets, FramesAroundPicturesStayInTheirPlaces) {
  int resized = 0;
  for (const auto& [edition, width] : {std::pair{2, 139}, std::pair{3, 131}}) {
    for (Recordset rows = RecordsOf("tblCard", SetOf(edition)); !rows.IsEOF(); rows.MoveNext()) {
      if (!rows["Resize"].Bool()) continue;
      ++resized;
      const QSize image = QImage::fromData(rows["Picture"].Get().Bytes()).size();
      EXPECT_LE(rows["PicLeft"].Number() / 15 + image.width(), width) << rows["Title"].Text().toStdString();
    }
  }
  EXPECT_GE(resized, 2);
}

// The file of a record is called by its title or name.
TEST(SampleSets, TitlesMakeFileNames) {
  for (const auto& [table, column] : {std::pair{"tblCard", "Title"}, std::pair{"tblLargeCard", "Title"},
                                      std::pair{"tblCharacter", "Name"}}) {
    for (Recordset rows = Delivered(QString("SELECT * FROM %1").arg(table)); !rows.IsEOF(); rows.MoveNext()) {
      const QString title = rows[column].Text();
      EXPECT_FALSE(title.isEmpty());
      EXPECT_FALSE(title.contains(QRegularExpression(R"([\\/:*?"<>|\x00-\x1f])"))) << title.toStdString();
    }
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
    for (Recordset card = RecordsOf("tblCard", set["SetID"].Int32()); !card.IsEOF(); card.MoveNext()) {
      const std::string name = card["Title"].Text().toStdString();
      EXPECT_LE(title.Width(card["Title"].Text()), box.title) << name;
      EXPECT_LE(bold.Width(card["BoldText"].Text()), box.bold) << name;
      EXPECT_LE(TopOfInformation(card, box) + info.Height(card["Information"].Text(), box.info), box.bottom)
          << name;
    }
  }
}

TEST(SampleSets, TextsOfCharactersAndLargeCardsFit) {
  const Recordset set = Delivered("SELECT * FROM tblSet WHERE EditionID = 2");
  const Measure abilities(set, "CharacterSpecialFontID");
  for (Recordset row = RecordsOf("tblCharacter", set["SetID"].Int32()); !row.IsEOF(); row.MoveNext()) {
    EXPECT_LE(abilities.Height(row["Abilities"].Text(), 144), 177) << row["Name"].Text().toStdString();
  }
  const Measure title(set, "CardLargeTitleFontID");
  const Measure info(set, "CardLargeInfoFontID");
  for (Recordset row = RecordsOf("tblLargeCard", set["SetID"].Int32()); !row.IsEOF(); row.MoveNext()) {
    const double width = 296 - (8 + row["PicWidth"].Number() + 5);
    EXPECT_LE(title.Height(row["Title"].Text(), width), 24) << row["Title"].Text().toStdString();
    EXPECT_LE(info.Height(row["Information"].Text(), width), 212) << row["Title"].Text().toStdString();
  }
}

}  // namespace
}  // namespace orv
