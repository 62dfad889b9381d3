#include <gtest/gtest.h>

#include <QDir>

#include "composition/CharacterPreview.h"
#include "composition/LargeCardPreview.h"
#include "composition/frmCard.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "output/Saving.h"
#include "output/frmCreate.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Pixels.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

class CharacterSheetTest : public testing::Test {
 protected:
  CharacterSheetTest() : set_(database_.AddSet(QStringLiteral("Set"), 2)) {
    database_.AddCharacter(set_, 4, QStringLiteral("ADA"));
    database_.AddCharacter(set_, 9, QStringLiteral("BEN"));
    const int land = database_.AddLargeCard(set_, 2, QStringLiteral("LAND"));
    database_.Store(QStringLiteral("tblLargeCard"), land, QStringLiteral("LargeCardBack"),
                    TestDatabase::PlainPicture(302, 254, Rgb(7, 8, 9)));
    database_.SelectSet(set_);
  }

  void SetOption(const char* column, const Value& value) {
    modData::rsSet[column] = value;
    modData::rsSet.Update();
  }
  void Compose() {
    TheCharacterPreview().DrawCharacter();
    frmCard->CreateCharacter2nd();
  }
  Picture File(const QString& name) { return LoadPicture(database_.Path(name)); }
  QStringList Files() { return QDir(database_.Folder()).entryList({QStringLiteral("*.BMP")}); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_;
};

TEST_F(CharacterSheetTest, FrontAndBackInTheirOutlines) {
  Compose();
  SaveTheCharacter2nd();
  const Picture sheet = File(QStringLiteral("CH2 ADA.BMP"));
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
    SetOption("NoBack", no_back);
    Compose();
    SaveTheCharacter2nd();
    SaveThePlayingPiece2nd();
    EXPECT_EQ(File(QStringLiteral("CH2 ADA.BMP")).Width(), no_back ? 304 : 608);
    const Picture piece = File(QStringLiteral("PP2 ADA.BMP"));
    ASSERT_EQ(piece.Width(), 304);
    for (int y = 0; y < 256; ++y) {
      for (int x = 0; x < 152; ++x)
        ASSERT_EQ(PixelAt(piece, x, y), PixelAt(piece, x + 152, y)) << x << ' ' << y;
    }
    for (const auto& [x, y] : {std::pair(0, 0), {151, 255}, {9, 9}, {142, 247}}) {
      EXPECT_EQ(PixelAt(piece, x, y), kBlack);
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
  } causes[] = {{"SaveTo", database_.Path(QStringLiteral("nowhere")), "76, "},
                {"FilenamePrefix", "a:b", "75, "},
                {"SaveTo", Value::Null(), "94, "}};
  for (const auto& cause : causes) {
    SetOption(cause.column, cause.value);
    for (const auto& row : rows) {
      dialogs_.boxes.clear();
      row.save();
      ASSERT_EQ(dialogs_.boxes.size(), 1U);
      EXPECT_EQ(dialogs_.boxes[0].title, QString::fromLatin1(row.title));
      const QString text = QStringLiteral("Something went wrong.");
      if (row.tells) {
        EXPECT_TRUE(dialogs_.LastPrompt().startsWith(text + "\r\n\r\n" + cause.number))
            << dialogs_.LastPrompt().toStdString();
      } else {
        EXPECT_EQ(dialogs_.LastPrompt(), text);
      }
    }
    SetOption("SaveTo", database_.Folder());
  }
  EXPECT_EQ(Files(), QStringList());
}

TEST_F(CharacterSheetTest, TheRunNumbersAndWritesEveryRecord) {
  SetOption("FileCardNr", true);
  frmCreate->CreateAllCards(false, true, true, false, true, true);
  EXPECT_EQ(Files(), QStringList({"CH2 001 ADA.BMP", "CH2 002 BEN.BMP", "LC2 001 LAND.BMP", "PP2 001 ADA.BMP",
                                  "PP2 002 BEN.BMP"}));
  EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT Nr FROM tblCharacter WHERE Name = 'BEN'")), "2");
  EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT Nr FROM tblLargeCard")), "1");
  EXPECT_EQ(frmCreate->lblNr2ndChar.Caption(), "2");
  EXPECT_EQ(frmCreate->lblNr2ndLarge.Caption(), "1");
  EXPECT_EQ(frmCreate->lblNr2ndCards.Caption(), "");
  EXPECT_EQ(frmCharacter2nd->lblCurrentCardCharacter.Caption(), "2 (2)");
  EXPECT_EQ(frmLarge2nd->lblCurrentCard.Tag(), "1");
  EXPECT_EQ(dialogs_.LastPrompt(), "Done creating cards.");
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_EQ(PixelAt(File(QStringLiteral("LC2 001 LAND.BMP")), 305, 1), Rgb(7, 8, 9));
  EXPECT_FALSE(
      Difference(File(QStringLiteral("PP2 001 ADA.BMP")), File(QStringLiteral("PP2 002 BEN.BMP"))).isEmpty());
}

TEST_F(CharacterSheetTest, ABrokenPictureDoesNotEndTheRun) {
  database_.Store(QStringLiteral("tblCharacter"), 1, QStringLiteral("Picture"), "no picture");
  frmCreate->CreateAllCards(false, true, false, false, false, false);
  EXPECT_EQ(Files().size(), 4);
  EXPECT_EQ(dialogs_.LastPrompt(), "Done creating cards.");
}

}  // namespace
}  // namespace orv
