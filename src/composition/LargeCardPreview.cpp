#include "composition/LargeCardPreview.h"

#include "base/Instance.h"
#include "base/Rounding.h"
#include "composition/PreviewDrawing.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr PixelRect kCard{0, 0, 304, 256};
constexpr PixelRect kFrame{8, 8, 121, LargeCardPreview::kFrameHeight};
constexpr int kTextsRight = 296;
constexpr int kHandleWithoutPicture = 5;

}  // namespace

LargeCardPreview::LargeCardPreview() {
  PlaceAt(picCardLarge, kCard);
  picCardLarge.SetBorderStyle(1);
  picCardLarge.SetName(QStringLiteral("Preview of the large card"));
  PlaceAt(picFrameLarge, kFrame);
  picFrameLarge.SetScaleMode(ScaleMode::Twips);
  picImageLarge.SetScaleMode(ScaleMode::Twips);
  picImageLarge.SetAutoSize(true);
  picImageLarge.SetTabStop(true);
  picImageLarge.SetName(QStringLiteral("Picture of the large card"));
  PlaceAt(picSymbolLarge, {294, 246, 9, 9});
  picSymbolLarge.SetAutoSize(true);
  PlaceAt(lblPicSizeLarge, {128, 8, 5, 238});
  lblPicSizeLarge.SetHandle(true);
  lblPicSizeLarge.SetName(QStringLiteral("Size of the picture"));
  const QString small = QStringLiteral("Small Fonts");
  DesignLabel(lblTitleLarge, {134, 8, 162, 25}, {small, 7, true, false}, Alignment::Centre);
  DesignLabel(lblInformationLarge, {134, 32, 162, 212}, {small, 7, false, false}, Alignment::Left);
  lblTitleLarge.SetWordWrap(true);
  lblInformationLarge.SetWordWrap(true);
  DesignLabel(lblAutonumberLarge, {0, 246, 13, 9}, {small, 5, false, false}, Alignment::Left);
  DesignWatermark(lblWatermark, {132, 246, 40, 9});
  PlaceAt(picBackLarge, kCard);
  picBackLarge.SetBorderStyle(1);
  picBackLarge.SetName(QStringLiteral("Back of the large card"));
}

void LargeCardPreview::Reset() {
  for (Surface* surface : {&picCardLarge, &picImageLarge, &picBackLarge}) surface->SetPicture(LoadPicture());
}

void LargeCardPreview::DrawLargeCard() {
  Recordset& card = modData::rsLargeCard;
  LetGoOfLargePictures({&picImageLarge, &picCardLarge, &picBackLarge});
  DrawInSteps({
      [&] { DrawTexts(); },
      [&] { DrawFrame(); },
      [&] { LoadPictureFromField(picImageLarge, card["Picture"]); },
      [&] { PlacePicture(); },
      [&] { DrawBackground(); },
      [&] { LoadPictureFromField(picBackLarge, card["LargeCardBack"]); },
      [&] { PlaceSymbol(picSymbolLarge, picCardLarge, 2, 2); },
  });
}

void LargeCardPreview::DrawTexts() {
  Recordset& card = modData::rsLargeCard;
  lblTitleLarge.SetCaption(card["Title"].TextOrEmpty());
  lblInformationLarge.SetCaption(card["Information"].TextOrEmpty());
  lblAutonumberLarge.SetCaption(card["Nr"].TextOrEmpty());
  lblAutonumberLarge.SetVisible(modData::rsSet["Autonumber"].BoolOrFalse());
}

void LargeCardPreview::DrawFrame() {
  Recordset& card = modData::rsLargeCard;
  picFrameLarge.SetVisible(card["UsePicture"].BoolOrFalse());
  lblPicSizeLarge.SetVisible(picFrameLarge.Visible());
  picFrameLarge.SetBorderStyle(card["UseFrame"].BoolOrFalse() ? 1 : 0);
  picFrameLarge.SetWidth(card["PicWidth"].NumberOr(kFrame.width));
  PlaceHandle();
}

void LargeCardPreview::PlaceHandle() {
  lblPicSizeLarge.SetLeft(picFrameLarge.Visible() ? picFrameLarge.Left() + picFrameLarge.Width()
                                                  : kHandleWithoutPicture);
  PlaceTexts();
}

void LargeCardPreview::PlaceTexts() {
  for (Label* label : {&lblTitleLarge, &lblInformationLarge}) {
    label->SetLeft(lblPicSizeLarge.Left() + lblPicSizeLarge.Width());
    label->SetWidth(kTextsRight - label->Left());
  }
}

void LargeCardPreview::PlacePicture() {
  Recordset& card = modData::rsLargeCard;
  const double top = card["PicTop"].NumberOr(0);
  // Without a picture there is nothing to hug, and the frame stays what it is.
  if (card["Resize"].BoolOrFalse() && !picImageLarge.Picture().IsEmpty()) {
    picFrameLarge.SetTop(top / kTwipsPerPixel + kFrame.top);
    picFrameLarge.SetHeight(picImageLarge.Height() / kTwipsPerPixel);
    picImageLarge.SetTop(0);
  } else {
    picFrameLarge.SetTop(kFrame.top);
    picFrameLarge.SetHeight(kFrame.height);
    picImageLarge.SetTop(top);
  }
  picImageLarge.SetLeft(card["PicLeft"].NumberOr(0));
}

void LargeCardPreview::DrawBackground() {
  LoadPictureFromField(picCardLarge, modData::rsLargeCard["BGPicture"]);
  picCardLarge.SetBackColor(modData::rsLargeCard["BGColour"].Int32Or(kWhite));
}

LargeCardPreview& TheLargeCardPreview() {
  static Instance<LargeCardPreview> preview;
  return *preview;
}

}  // namespace orv
