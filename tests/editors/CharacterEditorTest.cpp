#include "EditorScene.h"
#include "editors/frmCharacter2nd.h"
#include "state/modData.h"
#include "support/Pixels.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CharacterEditorTest : public testing::Test, protected EditorScene {
 protected:
  CharacterEditorTest() : EditorScene(kCharacter) { Open(3); }

  Character2ndForm& Form() { return *frmCharacter2nd; }

  CharacterPreview& preview_ = TheCharacterPreview();
};

TEST_F(CharacterEditorTest, ShowsTheRecordAndTheListsOfTheLanguage) {
  EXPECT_EQ(Form().Caption(), "Character (2nd)");
  EXPECT_EQ(Form().cboStartArea.Text(), "Plains : Village");
  EXPECT_EQ(Form().cboAlignment.Text(), "Neutral");
  EXPECT_EQ(Form().cboCharacterCardback.Text(), "Shield");
  EXPECT_EQ(Form().lblPicDimChar.Caption(), "(121W*218H)");
  EXPECT_EQ(Form().lblPicDimPlay.Caption(), "(132W*222H)");
  EXPECT_EQ(preview_.lblWatermark[1].Caption(), "ORV 1.2");
  const int other = database_.AddSet("Other", 2, 2);
  database_.AddCharacter(other, 1, "ANDERER");
  database_.SelectSet(other);
  Form().Initialise();
  EXPECT_EQ(Position(), "1 (1)");
  EXPECT_EQ(Form().cboStartArea.ListCount(), 1);
  EXPECT_EQ(Form().cboAlignment.List(0), "Gut");
}

TEST_F(CharacterEditorTest, EachControlWritesItsFieldAtOnce) {
  Character2ndForm& form = Form();
  ExpectEdits({
      {"Name", [&] { form.txtCharName.SetText("ADA"); }, "ADA",
       [&] { return preview_.lblPlayingPieceName.Caption(); }, "ADA"},
      {"IncludeBoard", [&] { form.chkIncludeBoard.SetValue(1); }, "-1",
       [&] { return preview_.lblStart.Caption(); }, "Village (Plains)"},
      {"AlignmentID", [&] { Choose(form.cboAlignment, 2); }, "3",
       [&] { return preview_.lblAlignment.Caption(); }, "Evil"},
      {"Abilities", [&] { form.txtSpecialAbilities.SetText("A\r\nB"); }, "A\r\nB",
       [&] { return preview_.lblSpecial.Caption(); }, "A\r\nB"},
      {"Strength", [&] { form.cboCharAttr[0].SetText("2d6"); }, "2d6"},
      {"Lives", [&] { Choose(form.cboCharAttr[3], 9); }, "---"},
      {"UsePicture", [&] { form.chkShowPictureCharacter.SetValue(0); }, "0",
       [&] { return QString::number(preview_.lblSpecial.Left()); }, "6"},
      {"UseFrame", [&] { form.chkFrameCharacter.SetValue(0); }, "0",
       [&] { return QString::number(preview_.picFrameCharacter.BorderStyle()); }, "0"},
      // Both backs of the list are there; the second one by text is the first key.
      {"CharacterBackID", [&] { Choose(form.cboCharacterCardback, 0); }, "2",
       [&] { return QString::number(preview_.picCharacterBack.GetPixel(9, 9)); }, "5120"},
  });
}

TEST_F(CharacterEditorTest, TheHandleStopsAtItsLimits) {
  Label& handle = preview_.lblPicSizeCharacter;
  const struct {
    int button;
    double by, handle;  // pixels
  } rows[] = {{1, 10, 132}, {1, 300, 154}, {1, -300, 15}, {3, 50, 15}, {2, 50, 15}};
  for (const auto& row : rows) {
    DragHandle(handle, row.button, row.by);
    EXPECT_EQ(handle.Left(), row.handle);
    EXPECT_EQ(preview_.picFrameCharacter.Width(), row.handle - 1);
    EXPECT_EQ(preview_.lblSpecial.Left(), row.handle + 6);
    EXPECT_EQ(Stored("CAST(PicWidth AS INT)"), QString::number(row.handle - 1));
  }
  EXPECT_EQ(Form().lblPicDimChar.Caption(), "(14W*218H)");
}

TEST_F(CharacterEditorTest, TheDeleteAndListButtonsDoNothing) {
  EXPECT_TRUE(Form().cmdCharacterDelete.Enabled());
  ClickOn(Form().cmdCharacterDelete);
  ClickOn(Form().cmdSortCharacter);
  EXPECT_EQ(database_.Scalar("SELECT COUNT(*) FROM tblCharacter"), "3");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(CharacterEditorTest, AttributesAreChosenOrTyped) {
  const ComboBox& list = Form().cboCharAttr[2];
  ASSERT_EQ(list.ListCount(), 19);
  EXPECT_EQ(list.List(0), "+9");
  EXPECT_EQ(list.List(9), "---");
  EXPECT_EQ(list.List(10), "1");
  const Picture before = preview_.picCharAttrDisp[2].Image();
  Choose(Form().cboCharAttr[2], 0);
  EXPECT_EQ(Stored("Gold"), "+9");
  EXPECT_FALSE(Difference(before, preview_.picCharAttrDisp[2].Image()).isEmpty());
}

TEST_F(CharacterEditorTest, TheStartAreaWaitsForTheNextUpdateOrMove) {
  Choose(Form().cboStartArea, 0);
  EXPECT_EQ(preview_.lblStart.Caption(), "Chapel");
  EXPECT_EQ(Stored("StartingAreaID"), "1");
  ClickOn(Form().cmdCharNav[2]);
  EXPECT_EQ(Stored("StartingAreaID"), "2") << "a move posts it";
  Choose(Form().cboStartArea, 0);
  Form().chkIncludeBoard.SetValue(1);
  EXPECT_EQ(Stored("StartingAreaID", 2), "2") << "an update posts it";
  EXPECT_EQ(preview_.lblStart.Caption(), "Chapel (Hills)");
  Choose(Form().cboStartArea, 1);
  EXPECT_EQ(preview_.lblStart.Caption(), "Village") << "without the board until the next drawing";
  modData::rsCharacter = Recordset();
  EXPECT_EQ(Stored("StartingAreaID", 2), "2") << "a release drops it";
}

TEST_F(CharacterEditorTest, BrokenPicturesAndMissingRowsEndNoHandler) {
  database_.Store("tblCharacter", 1, "PlayingPiece", "no picture");
  ClickOn(Form().cmdCharNav[0]);
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
  ClickOn(Form().cmdCharNav[2]);
  EXPECT_EQ(dialogs_.boxes.size(), 1U) << "the next character is whole";
  EXPECT_EQ(Form().txtCharName.Text(), "RECORD 2");
  database_.Execute("UPDATE tblCharacter SET CharacterBackID = 99, AlignmentID = NULL WHERE Nr = 3");
  ClickOn(Form().cmdCharNav[3]);
  EXPECT_EQ(dialogs_.boxes.size(), 2U);
  EXPECT_EQ(Position(), "3 (3)");
  for (Recordset* list : {&modData::rsArea, &modData::rsCharacterBack}) list->SetFilter("LanguageID = 9");
  ClickOn(Form().cmdCharacterAdd);
  EXPECT_EQ(Stored("StartingAreaID || CharacterBackID", 4), "00") << "no lists, no key";
}

}  // namespace
}  // namespace orv
