#pragma once

#include "composition/LargeCardPreview.h"
#include "editors/PictureFitter.h"
#include "editors/PicturePlacing.h"
#include "editors/RecordEditor.h"
#include "forms/Layout.h"

namespace orv {

// The editor of large cards. See RecordEditor for its model.
class Large2ndForm : public RecordEditor {
 public:
  Large2ndForm();
  void Form_Load() override;
  void Form_Unload() override;
  void DrawRecord() override { DrawLargeCard(); }

  // Follows the current set.
  void InitLarge2nd() { Initialise(); }
  // Brings the preview into line with the current record.
  void DrawLargeCard() { preview_.DrawLargeCard(); }

  Panel pic2ndCardLarge;  // the previews of front and back
  SurfaceView viewCard;
  SurfaceView viewBack;
  Panel picLargeCard;  // the input side
  Frame fraTexts;
  FormLabel lblTitleName;
  TextBox txtTitleLarge;
  FormLabel lblInfoName;
  TextBox txtInfoLarge;
  FormLabel lblCopyName;
  TextBox txtCopyLarge;
  UpDown udCopyLarge;
  Frame fraPicture;
  CheckBox chkShowPictureLarge;
  CheckBox chkFrameLarge;
  CheckBox chkResizeLarge;
  FormLabel lblPictureName;
  CommandButton cmdGetPicLarge;
  CommandButton cmdDelPicLarge;
  FormLabel lblPicDimLarge;
  FormLabel lblPicScaleLarge;
  Frame fraBack;
  FormLabel lblBackgroundName;
  CommandButton cmdBackPicLarge;
  CommandButton cmdDelBackPicLarge;
  FormLabel lblColourName;
  Surface picColourLarge;
  SurfaceView viewColour;
  CommandButton cmdColourLarge;
  FormLabel lblCardBackName;
  CommandButton cmdCardbackLarge;
  CommandButton cmdDelCardbackLarge;

  LargeCardPreview& Preview() { return preview_; }

 protected:
  void EnableCardControls(bool show) override;
  void SetCardDefaults() override;
  void ShowCard() override;
  Control* FieldOf(std::string_view column) override;
  TextBox& FirstField() override { return txtTitleLarge; }
  PictureFitter& FirstPicture() override { return fitter_; }

 private:
  void Arrange();
  void ArrangeTexts();
  void ArrangePicture();
  void ArrangeBack();
  void Subscribe();
  void SubscribePicture();
  void ShowDimension();
  void FrameResized();
  QSize PictureRoom() const;

  void chkShowPictureLarge_Click();
  void chkFrameLarge_Click();
  void chkResizeLarge_Click();
  void cmdGetPicLarge_Click();
  void cmdDelPicLarge_Click();
  void cmdBackPicLarge_Click();
  void cmdDelBackPicLarge_Click();
  void cmdCardbackLarge_Click();
  void cmdDelCardbackLarge_Click();
  void cmdColourLarge_Click();
  void picImageLarge_KeyDown(const KeyEvent& key);

  LargeCardPreview& preview_;
  PictureMover mover_;
  PictureFitter fitter_;
  HandleDrag handle_;
  QString LastPicFolder;  // folders of the pictures chosen last, with their closing separators
  QString LastCardbackFolder;
};

inline FormInstance<Large2ndForm> frmLarge2nd;

}  // namespace orv
