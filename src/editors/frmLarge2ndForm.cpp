// The large-card editor's controls: their making, their arrangement and their events.
#include "editors/frmLarge2nd.h"
#include "editors/inner/EditorLayout.h"
#include "forms/ControlHelpers.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kHandleLowest = 30;
constexpr int kHandleHighest = 180;

}  // namespace

Large2ndForm::Large2ndForm()
    : RecordEditor(
          {"frmLarge2nd", "tblLargeCard", "LargeCardID", "large card", modData::rsLargeCard, kLargeCards2nd}),
      pic2ndCardLarge(*this),
      viewCard(pic2ndCardLarge, TheLargeCardPreview().picCardLarge),
      viewBack(pic2ndCardLarge, TheLargeCardPreview().picBackLarge),
      picLargeCard(*this),
      fraTexts(picLargeCard, QStringLiteral("Texts")),
      lblTitleName(fraTexts, QStringLiteral("&Title:")),
      txtTitleLarge(fraTexts, TextBox::MultiLine),
      lblInfoName(fraTexts, QStringLiteral("&Information:")),
      txtInfoLarge(fraTexts, TextBox::MultiLine),
      lblCopyName(fraTexts, QStringLiteral("&Multiple:")),
      txtCopyLarge(fraTexts),
      udCopyLarge(fraTexts, txtCopyLarge, 1, 99),
      fraPicture(picLargeCard, QStringLiteral("Picture")),
      chkShowPictureLarge(fraPicture, QStringLiteral("&Use picture")),
      chkFrameLarge(fraPicture, QStringLiteral("Use &frames")),
      chkResizeLarge(fraPicture, QStringLiteral("&Resize")),
      lblPictureName(fraPicture, QStringLiteral("&Picture:")),
      cmdGetPicLarge(fraPicture, QStringLiteral("Select")),
      cmdDelPicLarge(fraPicture, QStringLiteral("Remove")),
      lblPicDimLarge(fraPicture, QStringLiteral("121W * 238H")),
      lblPicScaleLarge(fraPicture),
      fraBack(picLargeCard, QStringLiteral("Background and back")),
      lblBackgroundName(fraBack, QStringLiteral("&Background:")),
      cmdBackPicLarge(fraBack, QStringLiteral("Select")),
      cmdDelBackPicLarge(fraBack, QStringLiteral("Remove")),
      lblColourName(fraBack, QStringLiteral("&Colour:")),
      viewColour(fraBack, picColourLarge),
      cmdColourLarge(fraBack, QStringLiteral("...")),
      lblCardBackName(fraBack, QStringLiteral("C&ard back:")),
      cmdCardbackLarge(fraBack, QStringLiteral("Select")),
      cmdDelCardbackLarge(fraBack, QStringLiteral("Remove")),
      preview_(TheLargeCardPreview()),
      mover_(Record(), "PicLeft", "PicTop", preview_.picFrameLarge, preview_.picImageLarge,
             [this] { preview_.PlacePicture(); }),
      fitter_({Record(), "tblLargeCard", "Picture", "PicLeft", "PicTop", preview_.picFrameLarge,
               preview_.picImageLarge, lblPicScaleLarge, [this] { return PictureRoom(); },
               [this] { preview_.PlacePicture(); }, [this] { cmdDelPicLarge_Click(); }}),
      handle_(Record(), preview_.lblPicSizeLarge, HandleDrag::Across, kHandleLowest, kHandleHighest,
              [this] { FrameResized(); }) {
  SetCaption(QStringLiteral("Large card (2nd)"));
  Arrange();
  Subscribe();
}

void Large2ndForm::Arrange() {
  ArrangeBar({});
  BoxLayout previews(pic2ndCardLarge, BoxLayout::Column, 0);
  previews.Add(viewCard);
  previews.Add(viewBack);
  ArrangeTexts();
  ArrangePicture();
  ArrangeBack();
  BoxLayout rest(picLargeCard, BoxLayout::Column, 0);
  rest.Add(fraTexts, 1);
  rest.Add(fraPicture);
  rest.Add(fraBack);
  ArrangeSides(pic2ndCardLarge, picLargeCard);
}

void Large2ndForm::ArrangeTexts() {
  GridLayout grid(fraTexts);
  lblCopyName.SetBuddy(txtCopyLarge);
  txtCopyLarge.SetToolTip(QStringLiteral("How many of this card you want, for your own use"));
  AddField(grid, 0, lblTitleName, txtTitleLarge);
  AddField(grid, 1, lblInfoName, txtInfoLarge);
  AddRow(grid, 2, lblCopyName, {&txtCopyLarge, &udCopyLarge});
  grid.SetColumnStretch(1, 1);
  grid.SetRowStretch(0, 1);
  grid.SetRowStretch(1, 3);
  SetMinimumSize(txtTitleLarge, 240, 40);
  SetMinimumSize(txtInfoLarge, 240, 120);
  SetFixedWidth(txtCopyLarge, 40);
}

void Large2ndForm::ArrangePicture() {
  GridLayout grid(fraPicture);
  lblPictureName.SetBuddy(cmdGetPicLarge);
  cmdGetPicLarge.SetAccessibleName(QStringLiteral("Select the picture"));
  cmdDelPicLarge.SetAccessibleName(QStringLiteral("Remove the picture"));
  chkResizeLarge.SetToolTip(QStringLiteral("The frame closes around the picture"));
  lblPicDimLarge.SetToolTip(QStringLiteral("Size of the picture's frame in pixels"));
  AddChecks(grid, {&chkShowPictureLarge, &chkFrameLarge, &chkResizeLarge});
  ExplainScale(lblPicScaleLarge);
  AddRow(grid, 1, lblPictureName, {&cmdGetPicLarge, &cmdDelPicLarge, &lblPicDimLarge, &lblPicScaleLarge});
  grid.SetColumnStretch(1, 1);
}

void Large2ndForm::ArrangeBack() {
  GridLayout grid(fraBack);
  lblBackgroundName.SetBuddy(cmdBackPicLarge);
  lblColourName.SetBuddy(cmdColourLarge);
  lblCardBackName.SetBuddy(cmdCardbackLarge);
  cmdBackPicLarge.SetAccessibleName(QStringLiteral("Select the background picture"));
  cmdDelBackPicLarge.SetAccessibleName(QStringLiteral("Remove the background picture"));
  cmdCardbackLarge.SetAccessibleName(QStringLiteral("Select the picture of the back"));
  cmdDelCardbackLarge.SetAccessibleName(QStringLiteral("Remove the picture of the back"));
  ArrangeColour(picColourLarge, cmdColourLarge);
  AddRow(grid, 0, lblBackgroundName, {&cmdBackPicLarge, &cmdDelBackPicLarge});
  AddRow(grid, 1, lblColourName, {&viewColour, &cmdColourLarge});
  AddRow(grid, 2, lblCardBackName, {&cmdCardbackLarge, &cmdDelCardbackLarge});
  grid.SetColumnStretch(1, 1);
}

void Large2ndForm::Subscribe() {
  SubscribePicture();
  txtTitleLarge.Change = [this] { WriteText("Title", txtTitleLarge, preview_.lblTitleLarge); };
  LeadTo(preview_.lblTitleLarge, txtTitleLarge);
  LeadTo(preview_.lblInformationLarge, txtInfoLarge);
  txtTitleLarge.GotFocus = [this] { SelectText(txtTitleLarge); };
  txtInfoLarge.Change = [this] { WriteText("Information", txtInfoLarge, preview_.lblInformationLarge); };
  udCopyLarge.Change = [this] {
    if (!Loading) (void)Write("Copies", udCopyLarge.Value());
  };
  cmdColourLarge.Click = [this] { cmdColourLarge_Click(); };
  picColourLarge.Click = [this] { cmdColourLarge_Click(); };
}

void Large2ndForm::SubscribePicture() {
  chkShowPictureLarge.Click = [this] { chkShowPictureLarge_Click(); };
  chkFrameLarge.Click = [this] { chkFrameLarge_Click(); };
  chkResizeLarge.Click = [this] { chkResizeLarge_Click(); };
  cmdGetPicLarge.Click = [this] { cmdGetPicLarge_Click(); };
  cmdDelPicLarge.Click = [this] {
    cmdDelPicLarge_Click();
    cmdGetPicLarge.SetFocus();
  };
  cmdBackPicLarge.Click = [this] { cmdBackPicLarge_Click(); };
  cmdDelBackPicLarge.Click = [this] {
    cmdDelBackPicLarge_Click();
    cmdBackPicLarge.SetFocus();
  };
  cmdCardbackLarge.Click = [this] { cmdCardbackLarge_Click(); };
  cmdDelCardbackLarge.Click = [this] {
    cmdDelCardbackLarge_Click();
    cmdCardbackLarge.SetFocus();
  };
  mover_.Attach();
  fitter_.Attach();
  TakeFillingPictures(preview_.picCardLarge, Record(), "BGPicture");
  TakeFillingPictures(preview_.picBackLarge, Record(), "LargeCardBack");
  handle_.Attach();
  preview_.picImageLarge.KeyDown = [this](const KeyEvent& key) { picImageLarge_KeyDown(key); };
}

Control* Large2ndForm::FieldOf(std::string_view column) {
  if (column == "Title") return &txtTitleLarge;
  if (column == "Information") return &txtInfoLarge;
  return nullptr;
}

}  // namespace orv
