#include "editors/frmLarge2nd.h"

#include <QScopedValueRollback>

#include "composition/PreviewDrawing.h"
#include "composition/frmCard.h"
#include "editors/inner/ChooseColour.h"
#include "editors/inner/ChoosePicture.h"
#include "forms/ControlHelpers.h"
#include "state/modData.h"

namespace orv {

void Large2ndForm::Form_Load() {
  preview_.lblWatermark.SetCaption(Watermark());
  RecordEditor::Form_Load();
}

void Large2ndForm::Form_Unload() {
  preview_.Reset();
  RecordEditor::Form_Unload();
}

void Large2ndForm::EnableCardControls(bool show) {
  picLargeCard.SetVisible(show);
  pic2ndCardLarge.SetVisible(show);
  RecordEditor::EnableCardControls(show);
}

void Large2ndForm::SetCardDefaults() {
  Recordset& card = modData::rsLargeCard;
  card["SetID"] = modData::rsSet["SetID"].Get();
  // By its own number, unlike the title of a card.
  card["Title"] = QStringLiteral("LARGE CARD ") + card["Nr"].Text();
  card["Information"] = "";
  card["UsePicture"] = true;
  card["PicTop"] = 0;
  card["PicLeft"] = 0;
  card["PicWidth"] = 121;
  card["UseFrame"] = true;
  card["Resize"] = false;
  card["BGColour"] = kWhite;
  card["Copies"] = 1;
}

void Large2ndForm::ShowCard() {
  Recordset& card = modData::rsLargeCard;
  {
    const QScopedValueRollback loading(Loading, true);
    ShowCurrentPosition();
    txtTitleLarge.SetText(card["Title"].TextOrEmpty());
    udCopyLarge.SetValue(card["Copies"].Int32Or(1));
    chkShowPictureLarge.SetValue(BoolToCheck(card["UsePicture"].BoolOrFalse()));
    chkFrameLarge.SetValue(BoolToCheck(card["UseFrame"].BoolOrFalse()));
    chkResizeLarge.SetValue(BoolToCheck(card["Resize"].BoolOrFalse()));
    ShowDimension();
    txtInfoLarge.SetText(card["Information"].TextOrEmpty());
    picColourLarge.SetBackColor(card["BGColour"].Int32Or(kWhite));
  }
  fitter_.Show();
  frmCard->CreateLargeCard2nd();
}

void Large2ndForm::ShowDimension() {
  lblPicDimLarge.SetCaption(FrameDimension(preview_.picFrameLarge));
}

void Large2ndForm::chkShowPictureLarge_Click() {
  if (Loading) return;
  const bool show = chkShowPictureLarge.Value() == 1;
  if (!Write("UsePicture", show)) return;
  preview_.picFrameLarge.SetVisible(show);
  preview_.lblPicSizeLarge.SetVisible(show);
  preview_.PlaceHandle();
}

void Large2ndForm::chkFrameLarge_Click() {
  if (Loading) return;
  if (!Write("UseFrame", chkFrameLarge.Value() == 1)) return;
  preview_.picFrameLarge.SetBorderStyle(chkFrameLarge.Value());
}

void Large2ndForm::chkResizeLarge_Click() {
  if (!Loading && Write("Resize", chkResizeLarge.Value() == 1)) DrawLargeCard();
}

void Large2ndForm::cmdGetPicLarge_Click() {
  ChooseFramedPicture("Choose picture", Record(), "Picture", preview_.picImageLarge, LastPicFolder);
  fitter_.Show();
}

void Large2ndForm::cmdDelPicLarge_Click() {
  RemoveFramedPicture(Record(), preview_.picImageLarge);
  fitter_.Show();
}

void Large2ndForm::cmdBackPicLarge_Click() {
  ChoosePicture({.title = QStringLiteral("Choose background picture"),
                 .folder = nullptr,
                 .record = Record(),
                 .column = "BGPicture",
                 .surface = preview_.picCardLarge});
}

void Large2ndForm::cmdDelBackPicLarge_Click() {
  RemovePicture(Record(), "BGPicture", preview_.picCardLarge);
}

void Large2ndForm::cmdCardbackLarge_Click() {
  ChoosePicture({.title = QStringLiteral("Choose card back"),
                 .folder = &LastCardbackFolder,
                 .record = Record(),
                 .column = "LargeCardBack",
                 .surface = preview_.picBackLarge,
                 .stored = RememberFolder(LastCardbackFolder)});
}

void Large2ndForm::cmdDelCardbackLarge_Click() {
  RemovePicture(Record(), "LargeCardBack", preview_.picBackLarge);
}

void Large2ndForm::cmdColourLarge_Click() {
  ChooseBackgroundColour(Record(), picColourLarge, preview_.picCardLarge);
}

// What follows the frame's handle: the frame, the texts beside it and the record.
void Large2ndForm::FrameResized() {
  Surface& frame = preview_.picFrameLarge;
  frame.SetWidth(preview_.lblPicSizeLarge.Left() - frame.Left());
  preview_.PlaceTexts();
  Record()["PicWidth"] = frame.Width();
  Record().Update();
  ShowDimension();
}

// Where the frame hugs the picture, the room down is what it has without.
QSize Large2ndForm::PictureRoom() const {
  const Surface& frame = preview_.picFrameLarge;
  const bool hugs = modData::rsLargeCard["Resize"].BoolOrFalse();
  const int down = hugs ? LargeCardPreview::kFrameHeight - 2 * frame.BorderStyle() : frame.InsideHeight();
  return {frame.InsideWidth(), down};
}

void Large2ndForm::picImageLarge_KeyDown(const KeyEvent& key) {
  if (fitter_.KeyDown(key)) return;
  if (key.Shift == 0) mover_.KeyDown(key);
}

}  // namespace orv
