#include "composition/CharacterPreview.h"
#include "composition/LargeCardPreview.h"
#include "composition/frmCard.h"
#include "output/OutputScene.h"
#include "output/WriteRecords.h"
#include "support/Pixels.h"

namespace orv {
namespace {

class CharacterSheetTest : public OutputScene {
 protected:
  CharacterSheetTest() {
    Open(2);
    database_.AddCharacter(set_, 4, "ADA");
    database_.AddCharacter(set_, 9, "BEN");
    const int land = database_.AddLargeCard(set_, 2, "LAND");
    database_.Store("tblLargeCard", land, "LargeCardBack",
                    TestDatabase::PlainPicture(302, 254, Rgb(7, 8, 9)));
    database_.SelectSet(set_);
  }
  static void Compose() {
    TheCharacterPreview().DrawCharacter();
    frmCard->CreateCharacter2nd();
  }
};

TEST_F(CharacterSheetTest, FrontAndBackInTheirOutlines) {
  Compose();
  SaveTheCharacter2nd();
  const Picture sheet = File("CH2 ADA.BMP");
  ASSERT_EQ(sheet.Width(), 608);
  ASSERT_EQ(sheet.Height(), 256);
  for (const int x : {0, 303, 304, 607}) EXPECT_EQ(PixelAt(sheet, x, 100), kBlack) << x;
  EXPECT_EQ(PixelAt(sheet, 1, 1), PixelAt(frmCard->picACard.Picture(), 0, 0));
  EXPECT_EQ(PixelAt(sheet, 302, 254), PixelAt(frmCard->picACard.Picture(), 301, 253));
  EXPECT_EQ(PixelAt(sheet, 305, 1), Rgb(0, 10, 0)) << "the back that the character names";
  EXPECT_EQ(PixelAt(sheet, 606, 254), Rgb(0, 10, 0));
}

TEST_F(CharacterSheetTest, ThePieceStandsTwiceWhateverTheSetSaysOfBacks) {
  for (const bool no_back : {false, true}) {
    Option("NoBack", no_back);
    Compose();
    SaveTheCharacter2nd();
    SaveThePlayingPiece2nd();
    EXPECT_EQ(File("CH2 ADA.BMP").Width(), no_back ? 304 : 608);
    const QImage piece = File("PP2 ADA.BMP").Image();
    ASSERT_EQ(piece.size(), QSize(304, 256));
    EXPECT_EQ(piece.copy(0, 0, 152, 256), piece.copy(152, 0, 152, 256));
    for (const QPoint at : {QPoint(0, 0), QPoint(151, 255), QPoint(9, 9), QPoint(142, 247)}) {
      EXPECT_EQ(piece.pixelColor(at), QColor(Qt::black));
    }
  }
}

TEST_F(CharacterSheetTest, OnlyALargeCardTellsWhyItFailed) {
  Compose();
  TheLargeCardPreview().DrawLargeCard();
  const struct {
    void (*save)();
    const char* title;
    bool tells;
  } rows[] = {{SaveTheCharacter2nd, "Saving the character 2nd", false},
              {SaveThePlayingPiece2nd, "Saving the playing piece 2nd.", false},
              {SaveTheLargeCard, "Saving the large card", true}};
  const struct {
    const char* column;
    Value value;
    const char* number;
  } causes[] = {{"SaveTo", database_.Path("nowhere"), "76, "},
                {"FilenamePrefix", "a:b", "75, "},
                {"SaveTo", Value::Null(), "94, "}};
  for (const auto& cause : causes) {
    Option(cause.column, cause.value);
    for (const auto& row : rows) {
      dialogs_.boxes.clear();
      row.save();
      ASSERT_EQ(dialogs_.boxes.size(), 1U);
      EXPECT_EQ(dialogs_.boxes[0].title, row.title);
      const QString text = "Something went wrong.";
      const QString start = row.tells ? text + "\r\n\r\n" + cause.number : text;
      EXPECT_EQ(dialogs_.LastPrompt().left(start.size()), start);
      EXPECT_EQ(dialogs_.LastPrompt().size() > start.size(), row.tells);
    }
    Option("SaveTo", Out());
  }
  EXPECT_EQ(Files(), QStringList());
}

TEST_F(CharacterSheetTest, TheRunNumbersAndWritesEveryRecordAlsoWithABrokenPicture) {
  database_.Store("tblCharacter", 1, "Picture", "no picture");
  Option("FileCardNr", true);
  for (const OutputKind* kind : {&kCharacters2nd, &kLargeCards2nd}) {
    WriteRecords(*kind, FormatOfSet(), [](int) {});
  }
  EXPECT_EQ(Files(), QStringList({"CH2 001 ADA.BMP", "CH2 002 BEN.BMP", "LC2 001 LAND.BMP", "PP2 001 ADA.BMP",
                                  "PP2 002 BEN.BMP"}));
  EXPECT_EQ(database_.Scalar("SELECT Nr FROM tblCharacter WHERE Name = 'BEN'"), "2");
  EXPECT_EQ(database_.Scalar("SELECT Nr FROM tblLargeCard"), "1");
  EXPECT_EQ(PixelAt(File("LC2 001 LAND.BMP"), 305, 1), Rgb(7, 8, 9));
  EXPECT_FALSE(Difference(File("PP2 001 ADA.BMP"), File("PP2 002 BEN.BMP")).isEmpty());
}

}  // namespace
}  // namespace orv
