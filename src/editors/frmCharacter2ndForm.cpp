// The character editor's controls: their making, their arrangement and their events.
#include "editors/frmCharacter2nd.h"
#include "editors/inner/EditorLayout.h"
#include "forms/ControlHelpers.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kHandleLowest = 15;
constexpr int kHandleHighest = 154;

}  // namespace

Character2ndForm::Character2ndForm()
    : RecordEditor({"frmCharacter2nd", "tblCharacter", "CharacterID", "character", modData::rsCharacter,
                    kCharacters2nd, false, "Name"}),
      pic2ndCharacter(*this),
      viewCharacter(pic2ndCharacter, TheCharacterPreview().picCharacter),
      viewBack(pic2ndCharacter, TheCharacterPreview().picCharacterBack),
      viewPiece(pic2ndCharacter, TheCharacterPreview().picPlayingPiece),
      picCharacterRest(*this),
      fraCharacter(picCharacterRest, QStringLiteral("Character")),
      lblNameName(fraCharacter, QStringLiteral("&Name:")),
      txtCharName(fraCharacter),
      lblStartAreaName(fraCharacter, QStringLiteral("Starting &area:")),
      cboStartArea(fraCharacter),
      chkIncludeBoard(fraCharacter, QStringLiteral("Include Board name")),
      lblAlignmentName(fraCharacter, QStringLiteral("Alignmen&t:")),
      cboAlignment(fraCharacter),
      fraAttributes(pic2ndCharacter, QStringLiteral("Attributes")),
      lblCharAttrName{FormLabel(fraAttributes, QStringLiteral("&Strength:")),
                      FormLabel(fraAttributes, QStringLiteral("&Craft:")),
                      FormLabel(fraAttributes, QStringLiteral("&Gold:")),
                      FormLabel(fraAttributes, QStringLiteral("&Lives:"))},
      cboCharAttr{
          ComboBox(fraAttributes, ComboBox::DropDownCombo), ComboBox(fraAttributes, ComboBox::DropDownCombo),
          ComboBox(fraAttributes, ComboBox::DropDownCombo), ComboBox(fraAttributes, ComboBox::DropDownCombo)},
      fraPictures(picCharacterRest, QStringLiteral("Pictures")),
      chkShowPictureCharacter(fraPictures, QStringLiteral("&Use picture")),
      chkFrameCharacter(fraPictures, QStringLiteral("Use &frames")),
      lblPictureName(fraPictures, QStringLiteral("&Picture:")),
      cmdGetCharPic(fraPictures, QStringLiteral("Select")),
      cmdDelCharPic(fraPictures, QStringLiteral("Remove")),
      lblPicDimChar(fraPictures, QStringLiteral("(100W*200H)")),
      lblPicScaleChar(fraPictures),
      lblPieceName(fraPictures, QStringLiteral("Playing piece:")),
      cmdGetPlayingPiecePic(fraPictures, QStringLiteral("Select")),
      cmdDelPlayingPiecePic(fraPictures, QStringLiteral("Remove")),
      lblPicDimPlay(fraPictures, QStringLiteral("(100W*200H)")),
      lblPicScalePlay(fraPictures),
      fraAbilities(picCharacterRest, QStringLiteral("Text")),
      lblAbilitiesName(fraAbilities, QStringLiteral("Sp&ecial abilities:")),
      txtSpecialAbilities(fraAbilities, TextBox::MultiLine),
      fraBack(picCharacterRest, QStringLiteral("Background and back")),
      lblBackgroundName(fraBack, QStringLiteral("&Background:")),
      cmdBackCharPic(fraBack, QStringLiteral("Select")),
      cmdDelBackCharPic(fraBack, QStringLiteral("Remove")),
      lblCardBackName(fraBack, QStringLiteral("Ca&rd back:")),
      cboCharacterCardback(fraBack),
      cmdSortCharacter(pnlBar, QStringLiteral("List")),
      preview_(TheCharacterPreview()),
      picture_mover_(Record(), "PicLeft", "PicTop", preview_.picFrameCharacter, preview_.picImageCharacter,
                     [this] { preview_.PlacePicture(); }),
      piece_mover_(Record(), "PPLeft", "PPTop", preview_.picPlayingPieceFrame, preview_.picPlayingPieceImage,
                   [this] { preview_.PlacePiece(); }),
      picture_fitter_({Record(), "tblCharacter", "Picture", "PicLeft", "PicTop", preview_.picFrameCharacter,
                       preview_.picImageCharacter, lblPicScaleChar,
                       [this] { return InsideOf(preview_.picFrameCharacter); },
                       [this] { preview_.PlacePicture(); }, [this] { cmdDelCharPic_Click(); }}),
      piece_fitter_({Record(), "tblCharacter", "PlayingPiece", "PPLeft", "PPTop",
                     preview_.picPlayingPieceFrame, preview_.picPlayingPieceImage, lblPicScalePlay,
                     [this] { return InsideOf(preview_.picPlayingPieceFrame); },
                     [this] { preview_.PlacePiece(); }, [this] { cmdDelPlayingPiecePic_Click(); }}),
      handle_(Record(), preview_.lblPicSizeCharacter, HandleDrag::Across, kHandleLowest, kHandleHighest,
              [this] { FrameResized(); }) {
  SetCaption(QStringLiteral("Character (2nd)"));
  lblCurrentCardCharacter.SetCaption(QStringLiteral("1 (1)"));
  Arrange();
  Subscribe();
}

void Character2ndForm::Arrange() {
  ArrangeBar({&cmdSortCharacter});
  ArrangePreviews();
  ArrangeCharacter();
  ArrangeAttributes();
  ArrangePictures();
  ArrangeTextAndBack();
  BoxLayout rest(picCharacterRest, BoxLayout::Column, 0);
  rest.Add(fraCharacter);
  rest.Add(fraPictures);
  rest.Add(fraAbilities, 1);
  rest.Add(fraBack);
  ArrangeSides(pic2ndCharacter, picCharacterRest);
}

void Character2ndForm::ArrangePreviews() {
  BoxLayout previews(pic2ndCharacter, BoxLayout::Row, 0);
  BoxLayout sheet = previews.AddBox(BoxLayout::Column);
  sheet.Add(viewCharacter);
  sheet.Add(viewBack);
  BoxLayout piece = previews.AddBox(BoxLayout::Column);
  piece.Add(viewPiece);
  piece.Add(fraAttributes);  // in the room that the back leaves free
  piece.AddStretch();
}

void Character2ndForm::ArrangeCharacter() {
  GridLayout grid(fraCharacter);
  chkIncludeBoard.SetToolTip(QStringLiteral("The board in brackets behind the starting area"));
  AddField(grid, 0, lblNameName, txtCharName);
  AddField(grid, 1, lblStartAreaName, cboStartArea);
  grid.Add(chkIncludeBoard, 2, 1);
  AddField(grid, 3, lblAlignmentName, cboAlignment);
  grid.SetColumnStretch(1, 1);
}

void Character2ndForm::ArrangeAttributes() {
  GridLayout grid(fraAttributes);
  for (int i = 0; i < 4; ++i) {
    cboCharAttr[i].SetToolTip(QStringLiteral("A number, a plus and a number, or --- for none"));
    AddField(grid, i, lblCharAttrName[i], cboCharAttr[i]);
    SetFixedWidth(cboCharAttr[i], 64);
  }
  grid.SetColumnStretch(0, 1);
}

void Character2ndForm::ArrangePictures() {
  GridLayout grid(fraPictures);
  lblPictureName.SetBuddy(cmdGetCharPic);
  cmdGetCharPic.SetAccessibleName(QStringLiteral("Select the picture"));
  cmdDelCharPic.SetAccessibleName(QStringLiteral("Remove the picture"));
  cmdGetPlayingPiecePic.SetAccessibleName(QStringLiteral("Select the picture of the playing piece"));
  cmdDelPlayingPiecePic.SetAccessibleName(QStringLiteral("Remove the picture of the playing piece"));
  for (FormLabel* label : {&lblPicDimChar, &lblPicDimPlay}) {
    label->SetToolTip(QStringLiteral("Size of the picture's frame in pixels"));
  }
  for (FormLabel* label : {&lblPicScaleChar, &lblPicScalePlay}) ExplainScale(*label);
  AddChecks(grid, {&chkShowPictureCharacter, &chkFrameCharacter});
  AddRow(grid, 1, lblPictureName, {&cmdGetCharPic, &cmdDelCharPic, &lblPicDimChar, &lblPicScaleChar});
  AddRow(grid, 2, lblPieceName,
         {&cmdGetPlayingPiecePic, &cmdDelPlayingPiecePic, &lblPicDimPlay, &lblPicScalePlay});
  grid.SetColumnStretch(1, 1);
}

void Character2ndForm::ArrangeTextAndBack() {
  GridLayout text(fraAbilities);
  AddField(text, 0, lblAbilitiesName, txtSpecialAbilities);
  SetMinimumSize(txtSpecialAbilities, 240, 60);
  GridLayout grid(fraBack);
  lblBackgroundName.SetBuddy(cmdBackCharPic);
  cmdBackCharPic.SetAccessibleName(QStringLiteral("Select the background picture"));
  cmdDelBackCharPic.SetAccessibleName(QStringLiteral("Remove the background picture"));
  AddRow(grid, 0, lblBackgroundName, {&cmdBackCharPic, &cmdDelBackCharPic});
  AddField(grid, 1, lblCardBackName, cboCharacterCardback);
  grid.SetColumnStretch(1, 1);
}

void Character2ndForm::Subscribe() {
  LeadTo(preview_.lblCharacter, txtCharName);
  LeadTo(preview_.lblPlayingPieceName, txtCharName);
  LeadTo(preview_.lblStart, cboStartArea);
  LeadTo(preview_.lblAlignment, cboAlignment);
  LeadTo(preview_.lblSpecial, txtSpecialAbilities);
  SubscribePictures();
  txtCharName.Change = [this] { txtCharName_Change(); };
  txtCharName.GotFocus = [this] { SelectText(txtCharName); };
  cboStartArea.Click = [this] { cboStartArea_Click(); };
  chkIncludeBoard.Click = [this] { chkIncludeBoard_Click(); };
  cboAlignment.Click = [this] { cboAlignment_Click(); };
  for (int i = 0; i < 4; ++i) {
    cboCharAttr[i].Change = [this, i] { cboCharAttr_Change(i); };
    cboCharAttr[i].Click = [this, i] { cboCharAttr_Change(i); };
  }
  txtSpecialAbilities.Change = [this] { WriteText("Abilities", txtSpecialAbilities, preview_.lblSpecial); };
  cboCharacterCardback.Click = [this] { cboCharacterCardback_Click(); };
}

void Character2ndForm::SubscribePictures() {
  chkShowPictureCharacter.Click = [this] { chkShowPictureCharacter_Click(); };
  chkFrameCharacter.Click = [this] { chkFrameCharacter_Click(); };
  cmdGetCharPic.Click = [this] { cmdGetCharPic_Click(); };
  cmdDelCharPic.Click = [this] {
    cmdDelCharPic_Click();
    cmdGetCharPic.SetFocus();
  };
  cmdGetPlayingPiecePic.Click = [this] { cmdGetPlayingPiecePic_Click(); };
  cmdDelPlayingPiecePic.Click = [this] {
    cmdDelPlayingPiecePic_Click();
    cmdGetPlayingPiecePic.SetFocus();
  };
  cmdBackCharPic.Click = [this] { cmdBackCharPic_Click(); };
  cmdDelBackCharPic.Click = [this] {
    cmdDelBackCharPic_Click();
    cmdBackCharPic.SetFocus();
  };
  picture_mover_.Attach();
  piece_mover_.Attach();
  picture_fitter_.Attach();
  piece_fitter_.Attach();
  TakeFillingPictures(preview_.picBackgroundChar, Record(), "Background");
  handle_.Attach();
  preview_.picImageCharacter.KeyDown = [this](const KeyEvent& key) { picImageCharacter_KeyDown(key); };
  preview_.picPlayingPieceImage.KeyDown = [this](const KeyEvent& key) { picPlayingPieceImage_KeyDown(key); };
}

Control* Character2ndForm::FieldOf(std::string_view column) {
  if (column == "Name") return &txtCharName;
  if (column == "StartingAreaID") return &cboStartArea;
  if (column == "Abilities") return &txtSpecialAbilities;
  return nullptr;
}

}  // namespace orv
