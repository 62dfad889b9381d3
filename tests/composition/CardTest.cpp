#include "CompositionScene.h"
#include "composition/CardPreview.h"

namespace orv {
namespace {

constexpr Colour kCardColour = Rgb(1, 2, 3);

// Both editions run through the same tests; what differs is read from the layout.
class CardTest : public CompositionScene, public testing::WithParamInterface<int> {
 protected:
  CardTest() : CompositionScene(modData::rsCard) {
    const int set = database_.AddSet("Set", GetParam());
    database_.AddCard(set, 1, QString());
    database_.SelectSet(set);
    Set("BGColour", kCardColour);
  }

  Picture Compose() {
    modData::rsCard.MoveFirst();
    preview_.DrawCard();
    if (GetParam() == 2) {
      frmCard->CreateCard2nd();
    } else {
      frmCard->CreateCard3rd();
    }
    return frmCard->picACard.Picture();
  }
  // Where the ink of one more text lies on the card.
  QRect InkOf(const char* column, const QString& text) {
    const Picture without = Compose();
    Set(column, text);
    return Difference(without, Compose());
  }
  // Around what is not the card's colour within a place.
  static QRect InkIn(const Picture& card, const QRect& place) {
    QRect ink;
    for (int x = place.left(); x <= place.right(); ++x) {
      for (int y = place.top(); y <= place.bottom(); ++y) {
        if (PixelAt(card, x, y) != kCardColour) ink |= QRect(x, y, 1, 1);
      }
    }
    return ink;
  }
  const PixelRect& Frame() const { return preview_.Layout().frame; }

  CardPreview& preview_ = CardPreviewOf(GetParam());
};

TEST_P(CardTest, AFrontHasTheInsideSizeAndNothingOfTheCardBefore) {
  Set("Background", TestDatabase::PlainPicture(200, 300, Rgb(9, 9, 9)));
  Set("Information", "Some text");
  Compose();
  Set("Background", Value::Null());
  Set("Information", "");
  Set("BGColour", kWhite);
  Set("UsePicture", false);
  Set("Number", "");
  const Picture card = Compose();
  EXPECT_EQ(card.Width(), preview_.Layout().card.width - 2);
  EXPECT_EQ(card.Height(), preview_.Layout().card.height - 2);
  for (int y = 60; y < 200; ++y) ASSERT_EQ(PixelAt(card, 70, y), kWhite);
}

TEST_P(CardTest, ABackgroundLeavesTheColourWhereItIsSmaller) {
  Set("UsePicture", false);
  Set("Background", TestDatabase::GradientPicture(100, 120));
  ExpectPixels(Compose(), {{99, 119, GradientAt(99, 119)}, {100, 119, kCardColour}, {99, 120, kCardColour}});
}

// Pixels from the standard frame's corner.
TEST_P(CardTest, PictureArea) {
  const PictureCase rows[] = {
      PictureCase("switched off", kHidden | kOutlined, 50, 40, 0, 0,
                  {{0, 0, kCardColour}, {20, 20, kCardColour}}),
      PictureCase(
          "white area with an outline", kShown | kOutlined, 0, 0, 0, 0,
          {{0, 0, kBlack}, {1, 1, kWhite}, {30, 104, kBlack}, {-1, 5, kCardColour}, {30, 105, kCardColour}}),
      PictureCase("white area without", kShown, 0, 0, 0, 0, {{0, 0, kWhite}, {30, 104, kWhite}}),
      PictureCase(
          "a picture in the corner", kShown | kOutlined, 50, 40, 0, 0,
          {{1, 1, GradientAt(0, 0)}, {50, 40, GradientAt(49, 39)}, {51, 40, kWhite}, {50, 41, kWhite}}),
      PictureCase(
          "shifted in", kShown, 50, 40, 20, 10,
          {{19, 10, kWhite}, {20, 10, GradientAt(0, 0)}, {69, 49, GradientAt(49, 39)}, {70, 49, kWhite}}),
      PictureCase("pulled left and up", kShown | kOutlined, 90, 80, -20, -30,
                  {{1, 1, GradientAt(20, 30)}, {70, 50, GradientAt(89, 79)}, {71, 50, kWhite}}),
      PictureCase("larger than the frame", kShown | kOutlined, 250, 250, -20, -30,
                  {{1, 1, GradientAt(20, 30)},
                   {100, 103, GradientAt(119, 132)},
                   {20, 104, kBlack},
                   {20, 105, GradientAt(39, 134)}}),
      PictureCase("a fraction of a pixel, half to even", kShown, 50, 40, 2.5, 3.5,
                  {{2, 4, GradientAt(0, 0)}, {1, 4, kWhite}, {2, 3, kWhite}}),
      PictureCase("dragged out of sight", kShown | kOutlined, 50, 40, 400, 0,
                  {{1, 1, kWhite}, {60, 60, kWhite}}),
      PictureCase("a frame that hugs its picture", kShown | kOutlined | kResized, 60, 40, 10, 5,
                  {{9, 20, kCardColour},
                   {10, 20, kBlack},
                   {11, 6, GradientAt(0, 0)},
                   {68, 6, GradientAt(57, 0)},
                   {69, 20, kBlack},
                   {70, 20, kCardColour}}),
      PictureCase(
          "a frame without one to hug", kShown | kOutlined | kResized, 0, 0, 10, 0,
          {{0, 0, kBlack}, {1, 1, kWhite}, {129, 103, kWhite}, {30, 104, kBlack}, {-1, 5, kCardColour}}),
  };
  Set("Number", "");
  for (const PictureCase& row : rows) {
    SCOPED_TRACE(row.what);
    Arrange(row);
    Set("Resize", (row.flags & kResized) != 0);
    ExpectPixels(Compose(), row.pixels, Frame().left, Frame().top);
  }
}

TEST_P(CardTest, TheFramesHeightIsTheRecords) {
  Set("PicHeight", 50);
  ExpectPixels(Compose(), {{5, 49, kBlack}, {5, 50, kCardColour}}, Frame().left, Frame().top);
}

TEST_P(CardTest, SymbolStandsInTheLowerLeftCorner) {
  modData::SetSymbol = LoadPicture(TestDatabase::PlainPicture(9, 7, Rgb(200, 0, 0)));
  const Picture plain = Compose();
  SetOption("UseSymbol", true);
  const Picture card = Compose();
  EXPECT_EQ(Difference(plain, card), QRect(0, card.Height() - 7, 9, 7));
  EXPECT_EQ(PixelAt(card, 8, card.Height() - 7), Rgb(200, 0, 0));
}

TEST_P(CardTest, RuleTextFollowsTheBoldLineAndThePicture) {
  const int bold_height = preview_.Layout().bold_height;
  const QRect below_picture = InkOf("Information", "HHHH");
  EXPECT_EQ(preview_.lblInformation.Top(), Frame().top + 105 + 3 + 1);
  EXPECT_GE(below_picture.top(), preview_.lblInformation.Top());
  EXPECT_GE(below_picture.left(), preview_.Layout().information.left);
  Set("BoldText", "STRENGTH 3");
  Compose();
  EXPECT_EQ(preview_.lblInformation.Top(), Frame().top + 105 + 3 + bold_height);
  Set("UsePicture", false);
  Set("BoldText", "");
  Set("Information", "");
  const QRect below_title = InkOf("Information", "HHHH");
  const PixelRect& title = preview_.Layout().title;
  EXPECT_EQ(preview_.lblInformation.Top(), title.top + title.height + 4);
  EXPECT_LT(below_title.top(), below_picture.top());
}

TEST_P(CardTest, NumberIsCentredAndAutonumberEndsAtItsRight) {
  const QRect number = InkOf("Number", "HH");
  const Label& label = preview_.lblNumber;
  EXPECT_NEAR(number.center().x(), label.Left() + label.Width() / 2, 2);
  EXPECT_GE(number.top(), label.Top());
  const Picture without = Compose();
  SetOption("Autonumber", true);
  const QRect autonumber = Difference(without, Compose());
  const PixelRect& place = preview_.Layout().autonumber;
  EXPECT_LE(autonumber.right(), place.left + place.width);
  EXPECT_GE(autonumber.right(), place.left + place.width - 4);
}

TEST_P(CardTest, ABrokenPictureOrAMissingBackIsABoxAndTheRestIsComposed) {
  Set("Picture", QByteArray("this is no picture"));
  const Picture card = Compose();
  ASSERT_EQ(dialogs_.boxes.size(), 1u);
  EXPECT_EQ(dialogs_.boxes[0].prompt, "Error while drawing the card.\r\n\r\n481, Invalid picture");
  EXPECT_EQ(dialogs_.boxes[0].title, "Cannot draw picture correct");
  EXPECT_EQ(card.Width(), preview_.Layout().card.width - 2);
  Set("Picture", Value::Null());
  Set("CardBackID", 77);
  Compose();
  EXPECT_EQ(dialogs_.boxes.size(), 2u);
  Set("CardBackID", GetParam() == 2 ? 1 : 4);
  Set("CardTypeID", 77);
  Compose();
  EXPECT_EQ(dialogs_.boxes.size(), 3u);
}

TEST_P(CardTest, AFontSlotWithoutARowDrawsInTheFallback) {
  SetOption("CardTitleFontID", 9999);
  frmCard->ApplyCardFont(9999);
  EXPECT_EQ(frmCard->picACard.GetFont(), (Font{"Small Fonts", 7, false, false}));
  EXPECT_EQ(frmCard->picACard.ForeColor(), kBlack);
  const Font card_font = frmCard->picACard.GetFont();
  frmCard->ApplyPieceFont(modData::rsSet["CharacterNameFontID"].Int32());
  EXPECT_EQ(frmCard->picACardPP.ForeColor(), kWhite);
  EXPECT_TRUE(frmCard->picACardPP.GetFont().Bold);
  EXPECT_EQ(frmCard->picACard.GetFont(), card_font);
}

INSTANTIATE_TEST_SUITE_P(Editions, CardTest, testing::Values(2, 3));

// What the editions do not share.
class SecondEditionTest : public CardTest {};
class ThirdEditionTest : public CardTest {};

TEST_P(SecondEditionTest, OneLineCountsTheHiddenWordWhenItIsCentred) {
  Set("Number", "");
  Set("CardTypeID", 2);
  Set("OneLine", true);
  Compose();
  const Label& line = *preview_.lblType[0];
  EXPECT_EQ(line.Caption(), "FOE- Beast");
  EXPECT_EQ(preview_.lblNumber.Top(), 16);
  EXPECT_FALSE(preview_.lblType[1]->Visible());
  database_.Execute("UPDATE tblCardType SET UpperRight = '' WHERE CardTypeID = 2");
  database_.SelectSet(modData::CurrentSetID);
  const QRect line_place(0, 3, preview_.Layout().card.width - 2, 10);
  const int centred = InkIn(Compose(), line_place).left();
  database_.Execute("UPDATE tblCardType SET UpperRight = 'WWWW' WHERE CardTypeID = 2");
  database_.SelectSet(modData::CurrentSetID);
  EXPECT_LT(InkIn(Compose(), line_place).left(), centred - 10)
      << "left of the true centre by half the hidden word's width";
}

TEST_P(SecondEditionTest, TypeWordsStandInTheFourCorners) {
  Set("Number", "");
  Set("CardTypeID", 2);
  const Picture card = Compose();
  for (const PixelRect& place : preview_.Layout().type) {
    EXPECT_FALSE(InkIn(card, QRect(place.left, place.top, place.width, place.height)).isEmpty())
        << place.left << ", " << place.top;
  }
}

TEST_P(SecondEditionTest, TheTitleIsCentredByThePreviewsFont) {
  Set("UsePicture", false);
  const int font = modData::rsSet["CardTitleFontID"].Int32();
  const QRect small = InkOf("Title", "HIGH TOWER");
  EXPECT_NEAR(small.left() + small.right(), 2 * 5 + 139, 3) << "the usual font is centred";
  database_.Execute(QStringLiteral("UPDATE tblFont SET Size = 14 WHERE FontID = %1").arg(font));
  Set("Title", "");
  const QRect large = InkOf("Title", "HIGH TOWER");
  EXPECT_NEAR(large.left(), small.left(), 2) << "a larger font starts at the same place";
  EXPECT_GT(large.width(), small.width() * 3 / 2);
}

TEST_P(SecondEditionTest, TheArtistStripMatchesTheBackground) {
  Set("UsePicture", false);
  Set("Background", TestDatabase::GradientPicture(150, 254));
  const Picture without = Compose();
  Set("Artist", "Ann Painter");
  const QRect ink = Difference(without, Compose());
  EXPECT_TRUE(QRect(0, 40, 5, 180).contains(ink));
  EXPECT_GT(ink.height(), 20) << "the text runs down the strip";
  Set("Background", Value::Null());
  Compose();
  EXPECT_EQ(preview_.picArtistDest.GetPixel(2, 179), kCardColour);
  Set("Artist", "");
  Compose();
  EXPECT_FALSE(preview_.picArtistDest.Visible());
}

TEST_P(ThirdEditionTest, TheBoldLineIsColouredByItsWords) {
  Set("UsePicture", false);
  database_.Execute("UPDATE tblFont SET Colour = 255");
  const struct {
    const char* text;
    Colour colour;
  } rows[] = {{"strength 3", Rgb(250, 46, 11)},
              {"Craft 4", Rgb(22, 38, 117)},
              {"Strength and craft", Rgb(22, 38, 117)},
              {"Roll 1 die", kBlack}};
  for (const auto& row : rows) {
    Set("BoldText", row.text);
    const Picture card = Compose();
    int full = 0;
    for (int x = 0; x < card.Width(); ++x) {
      for (int y = 40; y < 80; ++y) full += PixelAt(card, x, y) == row.colour ? 1 : 0;
    }
    EXPECT_GT(full, 3) << row.text;
  }
}

TEST_P(ThirdEditionTest, OneLineAndTheArtistChangeNothingAndTheTitleIsTrulyCentred) {
  const Picture plain = Compose();
  Set("OneLine", true);
  Set("Artist", "Ann Painter");
  EXPECT_TRUE(Difference(plain, Compose()).isEmpty());
  const QRect title = InkOf("Title", "HIGH TOWER");
  EXPECT_NEAR(title.center().x(), 12 + 137 / 2, 2);
}

INSTANTIATE_TEST_SUITE_P(Editions, SecondEditionTest, testing::Values(2));
INSTANTIATE_TEST_SUITE_P(Editions, ThirdEditionTest, testing::Values(3));

}  // namespace
}  // namespace orv
