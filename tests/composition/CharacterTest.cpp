#include "CompositionScene.h"
#include "composition/CharacterPreview.h"

namespace orv {
namespace {

constexpr Colour kPanelColour = Rgb(1, 2, 3);

class CharacterTest : public CompositionScene {
 protected:
  CharacterTest() : CompositionScene(modData::rsCharacter) {
    const int set = database_.AddSet("Set", 2);
    database_.AddCharacter(set, 1, "NAME");
    database_.SelectSet(set);
    Set("Background", TestDatabase::PlainPicture(276, 228, kPanelColour));
  }

  void Compose() {
    modData::rsCharacter.MoveFirst();
    preview_.DrawCharacter();
    frmCard->CreateCharacter2nd();
    sheet_ = frmCard->picACard.Image();
    piece_ = frmCard->picACardPP.Image();
  }

  CharacterPreview& preview_ = TheCharacterPreview();
  Picture sheet_, piece_;
};

// The panel's corner is at (13, 13) of the sheet, the frame's at (14, 14), 121 wide and 220 or, with an
// outline, 218 high.
TEST_F(CharacterTest, PictureAreaInThePanel) {
  const PictureCase rows[] = {
      PictureCase("white area with an outline", kShown | kOutlined, 0, 0, 0, 0,
                  {{14, 14, kBlack},
                   {134, 231, kBlack},
                   {15, 15, kWhite},
                   {133, 230, kWhite},
                   {13, 14, kPanelColour},
                   {135, 14, kPanelColour},
                   {14, 232, kPanelColour}}),
      PictureCase("white area alone", kShown, 0, 0, 0, 0,
                  {{14, 14, kWhite}, {134, 233, kWhite}, {14, 234, kPanelColour}}),
      PictureCase("no picture wanted: no outline", kHidden | kOutlined, 200, 200, 0, 0,
                  {{14, 14, kPanelColour}, {60, 150, kPanelColour}}),
      PictureCase("small picture", kShown | kOutlined, 50, 50, 0, 0,
                  {{15, 15, GradientAt(0, 0)}, {64, 64, GradientAt(49, 49)}, {65, 15, kWhite}}),
      PictureCase(
          "shifted, no outline", kShown, 50, 50, 10, 5,
          {{24, 19, GradientAt(0, 0)}, {23, 19, kWhite}, {73, 68, GradientAt(49, 49)}, {74, 68, kWhite}}),
      PictureCase("pulled left and up", kShown | kOutlined, 255, 255, -20, -30,
                  {{15, 15, GradientAt(20, 30)}, {134, 20, kBlack}, {135, 20, GradientAt(140, 35)}}),
      PictureCase("beyond the window", kShown | kOutlined, 50, 50, 121, 0,
                  {{15, 15, kWhite}, {133, 15, kWhite}, {136, 150, kPanelColour}}),
      PictureCase("narrow frame", kShown | kOutlined, 200, 200, 0, 0,
                  {{103, 100, kBlack}, {102, 100, GradientAt(87, 85)}, {104, 150, kPanelColour}}, 90),
  };
  for (const PictureCase& row : rows) {
    SCOPED_TRACE(row.what);
    Arrange(row);
    Set("PicWidth", row.frame_width);
    Compose();
    ExpectPixels(sheet_, row.pixels);
  }
  EXPECT_EQ(sheet_.Width(), 302);
  EXPECT_EQ(sheet_.Height(), 254);
}

// Each strip is the word on black, turned; the left pair reads downwards, the right pair upwards.
TEST_F(CharacterTest, AttributeStrips) {
  const struct {
    const char* column;
    const char* value;
    const char* text;
    Colour colour;
    int left, top;
    bool clockwise;
    double points = 6;
  } rows[] = {
      {"Strength", "3", "STRENGTH 3", Rgb(0xFF, 0x1F, 0x10), 0, 44, true},
      {"Strength", "+9", "STRENGTH+9", Rgb(0xFF, 0x1F, 0x10), 0, 44, true, 5.25},
      {"Craft", "+9", "CRAFT+9", Rgb(0, 0xBF, 0xF0), 0, 159, true},
      {"Gold", "---", "GOLD", Rgb(0xFF, 0xB0, 0x0F), 290, 44, false},
      {"Lives", "2d", "LIVES 2d", Rgb(0, 0xB7, 0), 290, 159, false},
      {"Lives", "", "LIVES ", Rgb(0, 0xB7, 0), 290, 159, false},
  };
  for (const auto& row : rows) {
    Set(row.column, row.value);
    Compose();
    Surface flat;
    flat.Place(0, 0, 52, 12);
    flat.SetBackColor(kBlack);
    flat.SetFont({"Small Fonts", row.points, false, false});
    flat.SetForeColor(row.colour);
    const QString text = QString::fromLatin1(row.text);
    EXPECT_LE(flat.TextWidth(text), 52) << "nothing of it is cut";
    flat.SetCurrentX(26 - flat.TextWidth(text) / 2);
    flat.SetCurrentY(6 - flat.TextHeight(text) / 2);
    flat.Print(text);
    for (int x = 0; x < 52; ++x) {
      for (int y = 0; y < 12; ++y) {
        const int at_x = row.left + (row.clockwise ? 11 - y : y);
        const int at_y = row.top + (row.clockwise ? x : 51 - x);
        ASSERT_EQ(PixelAt(sheet_, at_x, at_y), flat.GetPixel(x, y)) << row.text << ' ' << x << ' ' << y;
      }
    }
  }
}

// What each field changes on the sheet and on the piece lies where its label or strip is.
TEST_F(CharacterTest, EachFieldHasItsPlace) {
  modData::SetSymbol = LoadPicture(TestDatabase::PlainPicture(9, 9, Rgb(9, 9, 9)));
  Set("Picture", TestDatabase::PlainPicture(20, 20, kBlack));
  const struct {
    const char* column;
    Value value;
    QRect sheet, piece;
    bool option = false;  // of the set
  } rows[] = {
      {"Name", "OTHER", {80, 0, 140, 13}, {8, 10, 132, 13}},
      {"StartingAreaID", 2, {182, 28, 103, 12}, {}},
      {"IncludeBoard", true, {182, 28, 103, 12}, {}},
      {"AlignmentID", 3, {206, 16, 79, 12}, {}},
      {"Gold", "---", {290, 44, 12, 52}, {}},
      {"Abilities", "Short.", {141, 56, 144, 12}, {}},
      {"CharacterBackID", 2, {}, {}},
      {"Autonumber", true, {15, 233, 13, 9}, {}, true},
      {"UseSymbol", true, {279, 231, 9, 9}, {}, true},
      {"PlayingPiece", TestDatabase::PlainPicture(300, 300, kBlack), {}, {9, 24, 132, 222}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.column);
    Compose();
    const Picture sheet = sheet_, piece = piece_;
    if (row.option) {
      SetOption(row.column, row.value);
    } else {
      Set(row.column, row.value);
    }
    Compose();
    for (const auto& [changed, place] :
         {std::pair(Difference(sheet, sheet_), row.sheet), {Difference(piece, piece_), row.piece}}) {
      EXPECT_EQ(changed.isEmpty(), place.isEmpty());
      EXPECT_EQ(changed.united(place), place);
    }
  }
  EXPECT_TRUE(dialogs_.boxes.empty()) << dialogs_.LastPrompt().toStdString();
}

TEST_F(CharacterTest, AbilitiesKeepBlankLinesAndRunOn) {
  const int height = static_cast<int>(preview_.lblSpecial.Container()->TextHeight(QString()));
  Set("Abilities", "");
  Compose();
  const Picture empty = sheet_;
  const struct {
    const char* text;
    int line;
  } rows[] = {{"A", 0}, {"\r\nA", 1}, {"\r\n\r\nA", 2}, {"\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\nA", 9}};
  for (const auto& row : rows) {
    Set("Abilities", row.text);
    Compose();
    const QRect ink = Difference(empty, sheet_);
    EXPECT_GE(ink.top(), 56 + row.line * height) << row.line;
    EXPECT_LT(ink.bottom(), 56 + (row.line + 1) * height) << row.line;
  }
  Set("Abilities", QStringLiteral("A ").repeated(2000));
  Compose();
  EXPECT_EQ(Difference(empty, sheet_).bottom(), 253)
      << "lines below the column are lost at the card's edge alone";
}

TEST_F(CharacterTest, PieceHasItsOutlineAndItsPicture) {
  const struct {
    int side, left, top;
    std::vector<Pixel> pixels;
  } rows[] = {
      {0, 0, 0, {{9, 24, kWhite}, {140, 245, kWhite}, {4, 100, kWhite}}},
      {250, 0, 0, {{9, 24, GradientAt(0, 0)}, {140, 245, GradientAt(131, 221)}, {142, 30, kWhite}}},
      {250, -7, -9, {{9, 24, GradientAt(7, 9)}, {140, 30, GradientAt(138, 15)}}},
      {40, 100, 200, {{108, 224, kWhite}, {109, 224, GradientAt(0, 0)}, {140, 245, GradientAt(31, 21)}}},
      {40, 132, 0, {{140, 30, kWhite}, {30, 30, kWhite}}},
  };
  for (const auto& row : rows) {
    Set("PPLeft", row.left * kTwipsPerPixel);
    Set("PPTop", row.top * kTwipsPerPixel);
    Set("PlayingPiece", row.side == 0 ? Value() : TestDatabase::GradientPicture(row.side, row.side));
    Compose();
    SCOPED_TRACE(row.side);
    ExpectPixels(piece_, row.pixels);
    ExpectPixels(piece_, {{8, 8, kBlack},
                          {141, 8, kBlack},
                          {8, 246, kBlack},
                          {141, 246, kBlack},
                          {60, 8, kBlack},
                          {141, 130, kBlack}});
  }
  EXPECT_EQ(piece_.Width(), 150);
  EXPECT_EQ(piece_.Height(), 254);
}

TEST_F(CharacterTest, TextsFollowThePicture) {
  const struct {
    bool use;
    int width;
    double handle, left, text_width, alignment;
  } rows[] = {{true, 121, 122, 128, 144, 193}, {true, 14, 15, 21, 251, 86}, {false, 121, 0, 6, 266, 71}};
  for (const auto& row : rows) {
    Set("UsePicture", row.use);
    Set("PicWidth", row.width);
    Compose();
    EXPECT_EQ(preview_.lblPicSizeCharacter.Left(), row.handle);
    EXPECT_EQ(preview_.lblPicSizeCharacter.Visible(), row.use);
    EXPECT_EQ(preview_.picFrameCharacter.Visible(), row.use);
    EXPECT_EQ(preview_.lblSpecial.Left(), row.left);
    EXPECT_EQ(preview_.lblSpecial.Width(), row.text_width);
    EXPECT_EQ(preview_.lblAlignment.Left(), row.alignment);
    EXPECT_EQ(preview_.lblAlignment.Width(), 272 - row.alignment);
  }
}

TEST_F(CharacterTest, BackgroundFillsThePanelOrTheSheetShowsThrough) {
  Set("Background", TestDatabase::PlainPicture(100, 100, kPanelColour));
  Set("UsePicture", false);
  Compose();
  EXPECT_EQ(PixelAt(sheet_, 20, 80), kPanelColour);
  EXPECT_EQ(PixelAt(sheet_, 20, 120), kWhite) << "the rest of the panel";
  Set("Background", Value::Null());
  Compose();
  const Picture& original = preview_.picCharacter.Picture();
  for (const auto& [x, y] : {std::pair(20, 120), {20, 200}, {280, 220}}) {
    EXPECT_EQ(PixelAt(sheet_, x, y), PixelAt(original, x, y));
    EXPECT_EQ(preview_.picBackgroundChar.GetPixel(x - 13, y - 13), PixelAt(original, x, y));
  }
  EXPECT_TRUE(preview_.picBackgroundChar.Picture().IsEmpty());
}

TEST_F(CharacterTest, WhatIsBrokenOrMissingIsABoxAndNoEnd) {
  const struct {
    const char* column;
    Value value;
    const char* box;  // the number that it tells, or nothing
  } rows[] = {
      {"Picture", QByteArray("no picture"), "481"},
      {"Background", QByteArray("no picture"), "481"},
      {"PlayingPiece", QByteArray("no picture"), "481"},
      {"CharacterBackID", 99, "3021"},
      {"CharacterBackID", Value::Null(), "3021"},
      {"StartingAreaID", 99, nullptr},
      {"AlignmentID", 99, nullptr},
      {"AlignmentID", Value::Null(), nullptr},
  };
  for (const auto& row : rows) {
    const Value former = modData::rsCharacter[row.column].Get();
    dialogs_.boxes.clear();
    Set(row.column, row.value);
    Compose();
    ASSERT_EQ(dialogs_.boxes.size(), row.box == nullptr ? 0U : 1U) << row.column;
    if (row.box != nullptr) {
      EXPECT_EQ(dialogs_.boxes[0].title, "Cannot draw picture correct");
      EXPECT_TRUE(dialogs_.boxes[0].prompt.startsWith(
          QStringLiteral("Error while drawing the card.\r\n\r\n%1, ").arg(row.box)))
          << dialogs_.LastPrompt().toStdString();
    }
    Set(row.column, former);
  }
  EXPECT_EQ(preview_.lblAlignment.Caption(), QString());
  database_.Execute("DELETE FROM tblCharacterBack");
  modData::rsCharacterBack = modData::OpenSnapshot("SELECT * FROM tblCharacterBack");
  Compose();
  EXPECT_TRUE(dialogs_.LastPrompt().contains("3021")) << "no backs at all";
}

}  // namespace
}  // namespace orv
