#include "CompositionScene.h"
#include "composition/LargeCardPreview.h"

namespace orv {
namespace {

constexpr Colour kCardColour = Rgb(1, 2, 3);

class LargeCardTest : public CompositionScene {
 protected:
  LargeCardTest() : CompositionScene(modData::rsLargeCard) {
    const int set = database_.AddSet("Set", 2);
    database_.AddLargeCard(set, 1, QString());
    database_.SelectSet(set);
    Set("BGColour", kCardColour);
  }

  const Picture& Compose() {
    modData::rsLargeCard.MoveFirst();
    preview_.DrawLargeCard();
    return ComposeAlone();
  }
  const Picture& ComposeAlone() {
    frmCard->CreateLargeCard2nd();
    return card_ = frmCard->picACard.Image();
  }

  LargeCardPreview& preview_ = TheLargeCardPreview();
  Picture card_;
};

// The frame is at (8, 8), 121 by 238; with Resize it has the picture's height and moves by PicTop.
TEST_F(LargeCardTest, PictureArea) {
  const PictureCase rows[] = {
      PictureCase(
          "white area", kShown | kOutlined, 0, 0, 0, 0,
          {{8, 8, kBlack}, {128, 245, kBlack}, {9, 9, kWhite}, {7, 8, kCardColour}, {129, 100, kCardColour}}),
      PictureCase("just a picture", kShown, 60, 50, 0, 0,
                  {{8, 8, GradientAt(0, 0)}, {67, 57, GradientAt(59, 49)}, {68, 57, kWhite}}),
      PictureCase("pulled left: the last column stays white", kShown, 255, 250, -20, 0,
                  {{8, 8, GradientAt(20, 0)},
                   {127, 100, GradientAt(139, 92)},
                   {128, 100, kWhite},
                   {129, 100, kCardColour}}),
      PictureCase("pulled up: the last row stays white", kShown, 121, 250, 0, -5,
                  {{8, 8, GradientAt(0, 5)}, {50, 244, GradientAt(42, 241)}, {50, 245, kWhite}}),
      PictureCase("larger, at the corner", kShown | kOutlined, 255, 250, 0, 0,
                  {{9, 9, GradientAt(0, 0)}, {127, 244, GradientAt(118, 235)}, {128, 244, kBlack}}),
      PictureCase("resize: the frame hugs the height", kShown | kOutlined | kResized, 60, 50, 0, 20,
                  {{8, 28, kBlack},
                   {9, 29, GradientAt(0, 0)},
                   {9, 76, GradientAt(0, 47)},
                   {9, 77, kBlack},
                   {9, 78, kCardColour},
                   {69, 40, kWhite},
                   {20, 27, kCardColour}}),
      PictureCase("resize, above the card's edge", kShown | kOutlined | kResized, 60, 50, 0, -10,
                  {{9, 5, GradientAt(0, 16)}, {8, 20, kBlack}, {20, 47, kBlack}, {20, 48, kCardColour}}),
      PictureCase("resize, sideways in the frame", kShown | kOutlined | kResized, 60, 50, 30, 0,
                  {{38, 20, kWhite}, {39, 20, GradientAt(0, 11)}, {128, 20, kBlack}}),
      PictureCase("switched off", kHidden | kOutlined, 60, 50, 0, 0,
                  {{8, 8, kCardColour}, {9, 40, kCardColour}, {100, 100, kCardColour}}),
  };
  for (const PictureCase& row : rows) {
    SCOPED_TRACE(row.what);
    Arrange(row);
    Set("Resize", (row.flags & kResized) != 0);
    ExpectPixels(Compose(), row.pixels);
  }
  EXPECT_EQ(card_.Width(), 302);
  EXPECT_EQ(card_.Height(), 254);
}

TEST_F(LargeCardTest, TextsFollowThePictureAndTitleLinesAreCentredEach) {
  Compose();
  frmCard->ApplySlot("CardLargeTitleFontID");
  const int height = static_cast<int>(frmCard->picACard.TextHeight(QString()));
  const struct {
    bool use;
    int width;
    int left;
  } rows[] = {{true, 121, 134}, {true, 22, 35}, {false, 121, 10}};
  for (const auto& row : rows) {
    Set("UsePicture", row.use);
    Set("PicWidth", row.width);
    Set("Title", "");
    Set("Information", "");
    const Picture empty = Compose();
    EXPECT_EQ(preview_.lblTitleLarge.Left(), row.left);
    EXPECT_EQ(preview_.lblInformationLarge.Width(), 296 - row.left);
    const double centre = row.left + (296 - row.left) / 2.0;
    for (const char* title : {"AAA", "\r\nAAA", "\r\n\r\nAAAAAAA"}) {
      Set("Title", title);
      const QRect ink = Difference(empty, Compose());
      const int line = static_cast<int>(QString::fromLatin1(title).count(QLatin1Char('\r')));
      EXPECT_NEAR(ink.left() + ink.width() / 2.0, centre, 2) << row.left << ' ' << line;
      EXPECT_GE(ink.top(), 8 + line * height);
      EXPECT_LT(ink.bottom(), 8 + (line + 1) * height);
    }
    Set("Title", "");
    Set("Information", "\r\nHHH");
    const QRect ink = Difference(empty, Compose());
    EXPECT_NEAR(ink.left(), row.left, 1);
    EXPECT_GE(ink.top(), 32 + height);
  }
}

TEST_F(LargeCardTest, ALongTitleRunsOverTheRuleText) {
  const Picture empty = Compose();
  Set("Title", QStringLiteral("WORD ").repeated(30));
  const QRect ink = Difference(empty, Compose());
  EXPECT_GT(ink.bottom(), 50);
  EXPECT_GE(ink.left(), 134);
  EXPECT_LE(ink.right(), 296);
}

TEST_F(LargeCardTest, BackgroundComesFromTheRecordAndStaysBehindTheColour) {
  Set("UsePicture", false);
  Set("BGPicture", TestDatabase::PlainPicture(100, 100, Rgb(50, 60, 70)));
  Compose();
  EXPECT_EQ(PixelAt(card_, 20, 90), Rgb(50, 60, 70)) << "setting the colour afterwards keeps the picture";
  EXPECT_EQ(PixelAt(card_, 20, 120), kCardColour);
  Set("BGPicture", Value::Null());
  ComposeAlone();
  EXPECT_FALSE(preview_.picCardLarge.Picture().IsEmpty());
  EXPECT_EQ(PixelAt(card_, 20, 90), kCardColour) << "what the preview still shows does not reach the card";
}

TEST_F(LargeCardTest, SymbolOfTheSetAndNumber) {
  const Picture plain = Compose();
  modData::SetSymbol = LoadPicture(TestDatabase::PlainPicture(7, 6, Rgb(200, 0, 0)));
  SetOption("UseSymbol", true);
  EXPECT_EQ(Difference(plain, Compose()), QRect(295, 248, 7, 6));
  modData::SetSymbol = LoadPicture(TestDatabase::PlainPicture(7, 6, Rgb(0, 200, 0)));
  ComposeAlone();
  EXPECT_EQ(PixelAt(card_, 296, 249), Rgb(0, 200, 0)) << "the set's own, not the preview's";
  const Picture without = card_;
  SetOption("Autonumber", true);
  EXPECT_TRUE(QRect(0, 246, 13, 8).contains(Difference(without, Compose())));
  EXPECT_FALSE(Difference(without, card_).isEmpty());
}

TEST_F(LargeCardTest, ABrokenPictureIsABoxAndNoEnd) {
  for (const char* column : {"Picture", "BGPicture", "LargeCardBack"}) {
    dialogs_.boxes.clear();
    Set(column, QByteArray("no picture"));
    Compose();
    ASSERT_EQ(dialogs_.boxes.size(), 1U) << column;
    EXPECT_TRUE(dialogs_.LastPrompt().contains("481, ")) << dialogs_.LastPrompt().toStdString();
    Set(column, Value::Null());
  }
}

}  // namespace
}  // namespace orv
