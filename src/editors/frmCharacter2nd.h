#pragma once

#include "composition/CharacterPreview.h"
#include "editors/PictureFitter.h"
#include "editors/PicturePlacing.h"
#include "editors/RecordEditor.h"
#include "forms/Layout.h"

namespace orv {

// The editor of characters, with previews of the sheet's front and back and of the playing piece. See
// RecordEditor for its model. A character can be neither deleted nor listed from here: these two buttons
// do nothing.
class Character2ndForm : public RecordEditor {
 public:
  Character2ndForm();
  void Form_Load() override;
  void Form_Unload() override;
  void DrawRecord() override { DrawCharacter(); }

  // Opens the recordset anew and sets the form up for the current set; nothing while it is filling lists.
  void Initialise();
  // Brings the previews into line with the current record.
  void DrawCharacter() { preview_.DrawCharacter(); }
  void ShowPictureCharacter() { preview_.ShowPictureCharacter(); }

  Panel pic2ndCharacter;  // the previews
  SurfaceView viewCharacter;
  SurfaceView viewBack;
  SurfaceView viewPiece;
  Panel picCharacterRest;  // the input side
  Frame fraCharacter;
  FormLabel lblNameName;
  TextBox txtCharName;
  FormLabel lblStartAreaName;
  ComboBox cboStartArea;
  CheckBox chkIncludeBoard;
  FormLabel lblAlignmentName;
  ComboBox cboAlignment;
  Frame fraAttributes;
  std::array<FormLabel, 4> lblCharAttrName;
  std::array<ComboBox, 4> cboCharAttr;  // strength, craft, gold, lives
  Frame fraPictures;
  CheckBox chkShowPictureCharacter;
  CheckBox chkFrameCharacter;
  FormLabel lblPictureName;
  CommandButton cmdGetCharPic;
  CommandButton cmdDelCharPic;
  FormLabel lblPicDimChar;
  FormLabel lblPicScaleChar;
  FormLabel lblPieceName;
  CommandButton cmdGetPlayingPiecePic;
  CommandButton cmdDelPlayingPiecePic;
  FormLabel lblPicDimPlay;
  FormLabel lblPicScalePlay;
  Frame fraAbilities;
  FormLabel lblAbilitiesName;
  TextBox txtSpecialAbilities;
  Frame fraBack;
  FormLabel lblBackgroundName;
  CommandButton cmdBackCharPic;
  CommandButton cmdDelBackCharPic;
  FormLabel lblCardBackName;
  ComboBox cboCharacterCardback;
  CommandButton cmdSortCharacter;

  // The row of buttons under this editor's own names.
  std::array<CommandButton, 4>& cmdCharNav = cmdCardNav;
  FormLabel& lblCurrentCardCharacter = lblCurrentCard;
  CommandButton& cmdCharacterAdd = cmdCardAdd;
  CommandButton& cmdCharacterDelete = cmdCardDelete;

  CharacterPreview& Preview() { return preview_; }

 protected:
  void FillLists() override;
  void EnableCardControls(bool show) override;
  void SetCardDefaults() override;
  void ShowCard() override;
  Control* FieldOf(std::string_view column) override;
  TextBox& FirstField() override { return txtCharName; }
  PictureFitter& FirstPicture() override { return picture_fitter_; }
  PictureFitter& PastedPicture() override {
    return piece_fitter_.HasFocus() ? piece_fitter_ : picture_fitter_;
  }

 private:
  void Arrange();
  void ArrangePreviews();
  void ArrangeCharacter();
  void ArrangeAttributes();
  void ArrangePictures();
  void ArrangeTextAndBack();
  void Subscribe();
  void SubscribePictures();
  void ShowDimensions();
  void FrameResized();

  void txtCharName_Change();
  void cboStartArea_Click();
  void chkIncludeBoard_Click();
  void cboAlignment_Click();
  void cboCharAttr_Change(int Index);
  void cboCharacterCardback_Click();
  void chkShowPictureCharacter_Click();
  void chkFrameCharacter_Click();
  void cmdGetCharPic_Click();
  void cmdDelCharPic_Click();
  void cmdGetPlayingPiecePic_Click();
  void cmdDelPlayingPiecePic_Click();
  void cmdBackCharPic_Click();
  void cmdDelBackCharPic_Click();
  void picImageCharacter_KeyDown(const KeyEvent& key);
  void picPlayingPieceImage_KeyDown(const KeyEvent& key);

  CharacterPreview& preview_;
  PictureMover picture_mover_;
  PictureMover piece_mover_;
  PictureFitter picture_fitter_;
  PictureFitter piece_fitter_;
  HandleDrag handle_;
  QString LastPicFolder;  // folders of the pictures chosen last, with their closing separators
  QString LastPieceFolder;
  QString LastBackFolder;
};

inline FormInstance<Character2ndForm> frmCharacter2nd;

}  // namespace orv
