#pragma once

#include <memory>

#include "composition/CardPreview.h"
#include "editors/PictureFitter.h"
#include "editors/PicturePlacing.h"
#include "editors/RecordEditor.h"
#include "forms/Layout.h"

namespace orv {

// How the card editors of the two editions differ, apart from the layout of their previews.
struct CardEditorKind {
  int edition;
  const char* form_name;
  const char* caption;
  const char* drop_text;         // of a card type, in the query's dialect
  const char* second_type_name;  // of a card type, beside UpperLeft, in the statistics
  bool has_type_catalogue;       // the "..." beside the type works
  bool has_card_list;            // "Card list" works
  const OutputKind& output;
};

// The editor of cards, of one edition. See RecordEditor for its model.
class CardEditor : public RecordEditor {
 public:
  void Form_Load() override;
  void Form_Unload() override;
  void DrawRecord() override { DrawCard(); }
  // Brings the preview into line with the current record.
  void DrawCard() { preview_.DrawCard(); }

  Panel pic2ndCard;  // the previews of front and back
  SurfaceView viewCard;
  SurfaceView viewBack;
  Panel picCardRest;  // the input side
  Frame fraTitle;
  FormLabel lblTitleName;
  TextBox txtTitle;
  FormLabel lblTypeName;
  ComboBox cboType;
  CommandButton cmdGetType;
  FormLabel lblNumberName;
  ComboBox cboNumber;
  CheckBox chkOneLine;
  FormLabel lblCopyName;
  TextBox txtCopy;
  UpDown udCopy;
  Frame fraPicture;
  CheckBox chkShowPicture;
  CheckBox chkFrame;
  CheckBox chkResize;
  FormLabel lblPictureName;
  CommandButton cmdGetPic;
  CommandButton cmdDelPic;
  FormLabel lblPicDim;
  FormLabel lblPicScale;
  FormLabel lblArtistName;
  TextBox txtArtist;
  Frame fraTexts;
  FormLabel lblBoldName;
  TextBox txtBold;
  FormLabel lblInfoName;
  TextBox txtInfo;
  Frame fraBack;
  FormLabel lblBackgroundName;
  CommandButton cmdBackPic;
  CommandButton cmdLastBackPic;
  CommandButton cmdDelBackPic;
  FormLabel lblColourName;
  Surface picColour;
  SurfaceView viewColour;
  CommandButton cmdColour;
  FormLabel lblCardBackName;
  ComboBox cboCardBack;
  CommandButton cmdGetCardBack;
  CommandButton cmdSort;
  CommandButton cmdStat;

  CardPreview& Preview() { return preview_; }
  // The keys that change the frame's size while the picture has the focus.
  static QStringList HandleCommands();

 protected:
  explicit CardEditor(const CardEditorKind& kind);
  // Opens the recordset anew and sets the form up for the current set.
  void InitCards() { Initialise(); }

  void FillLists() override;
  void EnableCardControls(bool show) override;
  void SetCardDefaults() override;
  void ShowCard() override;
  Control* FieldOf(std::string_view column) override;
  TextBox& FirstField() override { return txtTitle; }
  PictureFitter& FirstPicture() override { return fitter_; }

 private:
  void Arrange();
  void ArrangeTitle();
  void ArrangePicture();
  void ArrangeTexts();
  void ArrangeBack();
  void Subscribe();
  void SubscribeTexts();
  void SubscribePicture();
  void FillTypes();
  void FillBacks();
  void ShowDimension();
  void FrameResized();
  QSize PictureRoom() const;
  void RedrawArtist();

  void cboType_Click();
  void cboNumber_Change();
  void cmdGetType_Click();
  void cmdGetCardBack_Click();
  void cboCardBack_Click();
  void chkShowPicture_Click();
  void chkFrame_Click();
  void chkResize_Click();
  void txtBold_Change();
  void txtArtist_Change();
  void cmdGetPic_Click();
  void cmdDelPic_Click();
  void cmdBackPic_Click();
  void cmdLastBackPic_Click();
  void cmdDelBackPic_Click();
  void cmdColour_Click();
  struct HandleKey;
  static const HandleKey kHandleKeys[];
  void picImage_KeyDown(const KeyEvent& key);
  void cmdSort_Click();
  void cmdStat_Click();

  const CardEditorKind kind_;
  CardPreview& preview_;
  PictureMover mover_;
  PictureFitter fitter_;
  HandleDrag handle_;
  QString LastBackPic;    // path of the background chosen last in this form's life
  QString LastPicFolder;  // folder of the picture chosen last, with its closing separator
};

}  // namespace orv
