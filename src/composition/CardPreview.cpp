#include "composition/CardPreview.h"

#include "base/Instance.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "builtin/BuiltIn.h"
#include "composition/PreviewDrawing.h"
#include "composition/modRotatePic.h"
#include "database/ListHelpers.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

const Font kSmall{QStringLiteral("Small Fonts"), 7, false, false};

template <int edition>
struct PreviewOfEdition : CardPreview {
  PreviewOfEdition() : CardPreview(CardLayoutOf(edition)) {}
};

}  // namespace

CardPreview::CardPreview(const CardLayout& layout) : layout_(layout) {
  for (int i = 0; i < layout_.type_count; ++i) lblType[i] = std::make_unique<Label>(&picCard);
  Design();
  Reset();
}

void CardPreview::Design() {
  PlaceAt(picCard, layout_.card);
  picCard.SetBorderStyle(1);
  picCard.SetName(QStringLiteral("Preview of the card"));
  // Where a title is measured on the preview, one in the usual font is centred.
  picCard.SetFont(layout_.title_font);
  PlaceAt(picFrame, layout_.frame);
  picFrame.SetScaleMode(ScaleMode::Twips);
  picImage.SetScaleMode(ScaleMode::Twips);
  picImage.SetAutoSize(true);
  picImage.SetTabStop(true);
  picImage.SetName(QStringLiteral("Picture of the card"));
  PlaceAt(picSymbol, layout_.symbol);
  picSymbol.SetAutoSize(true);
  PlaceAt(picArtistDest, layout_.artist);
  picArtistDest.SetScaleMode(ScaleMode::Twips);
  DesignLabel(lblTitle, layout_.title, layout_.title_font, Alignment::Centre);
  for (int i = 0; i < layout_.type_count; ++i) {
    DesignLabel(*lblType[i], layout_.type[i], kSmall, i % 2 == 0 ? Alignment::Left : Alignment::Right);
  }
  DesignLabel(lblNumber, layout_.number, kSmall, Alignment::Centre);
  DesignLabel(lblBold, layout_.bold, layout_.bold_font, Alignment::Centre);
  DesignLabel(lblInformation, layout_.information, kSmall, Alignment::Left);
  lblInformation.SetWordWrap(true);
  DesignLabel(lblAutonumber, layout_.autonumber, {QStringLiteral("Small Fonts"), 5, false, false},
              Alignment::Right);
  DesignWatermark(lblWatermark, layout_.watermark);
  PlaceAt(lblPicSize, layout_.handle);
  lblPicSize.SetHandle(true);
  lblPicSize.SetName(QStringLiteral("Size of the picture"));
  PlaceAt(picBack, layout_.card);
  picBack.SetBorderStyle(1);
  picBack.SetName(QStringLiteral("Back of the card"));
}

void CardPreview::Reset() {
  const bool second = layout_.edition == 2;
  picBack.SetPicture(LoadPicture(second ? builtin::CardBack2nd() : builtin::CardBack3rd()));
  picCard.SetPicture(second ? LoadPicture() : LoadPicture(builtin::CardFace3rd()));
}

void CardPreview::DrawCard() {
  Recordset& card = modData::rsCard;
  LetGoOfLargePictures({&picImage, &picCard, &picBack});
  DrawInSteps({
      [&] { lblTitle.SetCaption(card["Title"].TextOrEmpty()); },
      [&] { FindByKey(modData::rsCardType, "CardTypeID", card["CardTypeID"].Int32Or(0)); },
      [&] { DrawType(); },
      [&] { DrawTexts(); },
      [&] { DrawFrame(); },
      [&] { LoadPictureFromField(picImage, card["Picture"]); },
      [&] { PlacePicture(); },
      [&] { DrawBackground(); },
      [&] { FindByKey(modData::rsCardBack, "CardBackID", card["CardBackID"].Int32Or(0)); },
      [&] { DrawBack(); },
      [&] { PlaceSymbol(picSymbol, picCard, -1, 2); },
  });
}

void CardPreview::DrawType() {
  Recordset& type = modData::rsCardType;
  const QString words[] = {type["UpperLeft"].TextOrEmpty(), type["UpperRight"].TextOrEmpty(),
                           type["LowerLeft"].TextOrEmpty(), type["LowerRight"].TextOrEmpty()};
  if (layout_.has_one_line) {
    const bool one_line = modData::rsCard["OneLine"].BoolOrFalse();
    lblType[0]->SetWidth(one_line ? layout_.one_line_width : layout_.type[0].width);
    lblType[0]->SetAlignment(one_line ? Alignment::Centre : Alignment::Left);
    for (int i = 1; i < layout_.type_count; ++i) lblType[i]->SetVisible(!one_line);
    lblNumber.SetTop(one_line ? layout_.one_line_number_top : layout_.number.top);
    lblType[0]->SetCaption(one_line ? words[0] + u' ' + words[2] : words[0]);
  } else {
    lblType[0]->SetCaption(words[0]);
  }
  for (int i = 1; i < layout_.type_count; ++i) lblType[i]->SetCaption(words[i]);
  lblNumber.SetCaption(modData::rsCard["Number"].TextOrEmpty());
}

void CardPreview::DrawTexts() {
  Recordset& card = modData::rsCard;
  SetBoldText(card["BoldText"].TextOrEmpty());
  lblInformation.SetCaption(card["Information"].TextOrEmpty());
  lblAutonumber.SetCaption(card["Nr"].TextOrEmpty());
  lblAutonumber.SetVisible(modData::rsSet["Autonumber"].BoolOrFalse());
}

void CardPreview::SetBoldText(const QString& text) {
  lblBold.SetCaption(text);
  ColourBold();
  lblBold.SetHeight(text.isEmpty() ? 1 : layout_.bold_height);
  PlaceInformation();
}

void CardPreview::ColourBold() {
  if (!layout_.bold_in_label_colour) return;
  const QString text = lblBold.Caption().toUpper();
  if (text.contains(QStringLiteral("CRAFT"))) {
    lblBold.SetForeColor(Rgb(22, 38, 117));
  } else if (text.contains(QStringLiteral("STRENGTH"))) {
    lblBold.SetForeColor(Rgb(250, 46, 11));
  } else {
    lblBold.SetForeColor(kBlack);
  }
}

void CardPreview::DrawFrame() {
  Recordset& card = modData::rsCard;
  picFrame.SetVisible(card["UsePicture"].BoolOrFalse());
  picFrame.SetBorderStyle(card["UseFrame"].BoolOrFalse() ? 1 : 0);
  picFrame.SetHeight(card["PicHeight"].NumberOr(layout_.frame.height));
  lblPicSize.SetTop(picFrame.Top() + picFrame.Height());
  lblPicSize.SetVisible(picFrame.Visible());
  PlaceBold();
}

void CardPreview::PlaceBold() {
  const SurfaceItem& above = picFrame.Visible() ? static_cast<const SurfaceItem&>(picFrame) : lblTitle;
  lblBold.SetTop(above.Top() + above.Height() + 3);
  PlaceInformation();
}

void CardPreview::PlaceInformation() {
  lblInformation.SetTop(lblBold.Top() + lblBold.Height());
  lblInformation.SetHeight(layout_.information_bottom - lblInformation.Top());
}

void CardPreview::PlacePicture() {
  Recordset& card = modData::rsCard;
  picFrame.SetVisible(card["UsePicture"].BoolOrFalse());
  picFrame.SetBorderStyle(card["UseFrame"].BoolOrFalse() ? 1 : 0);
  picFrame.SetHeight(card["PicHeight"].NumberOr(layout_.frame.height));
  lblPicSize.SetTop(picFrame.Top() + picFrame.Height());
  const double left = card["PicLeft"].NumberOr(0);
  // Without a picture there is nothing to hug, and the frame stays what it is.
  if (card["Resize"].BoolOrFalse() && !picImage.Picture().IsEmpty()) {
    picFrame.SetLeft(left / kTwipsPerPixel + layout_.frame.left);
    picFrame.SetWidth(picImage.Width() / kTwipsPerPixel);
    picImage.SetLeft(0);
  } else {
    picFrame.SetLeft(layout_.frame.left);
    picFrame.SetWidth(layout_.frame.width);
    picImage.SetLeft(left);
  }
  picImage.SetTop(card["PicTop"].NumberOr(0));
}

void CardPreview::DrawBackground() {
  Recordset& card = modData::rsCard;
  LoadPictureFromField(picCard, card["Background"]);
  picCard.SetBackColor(card["BGColour"].Int32Or(kWhite));
  RotateArtist(card["Artist"].TextOrEmpty(), card["BGColour"].Int32Or(kWhite), !card["Background"].IsNull());
}

void CardPreview::DrawBack() {
  LoadPictureFromField(picBack, modData::rsCardBack["Picture"]);
}

void RotateArtist(const QString& artist, Colour colour, bool use_background) {
  CardPreview& second = CardPreviewOf(2);
  const Colour text_colour = modData::rsSet["ArtistColour"].Int32Or(kArtistColour);
  DrawArtistStrip(second.picArtistDest, second.picCard, artist, text_colour, colour, use_background);
}

CardPreview& CardPreviewOf(int edition) {
  static Instance<PreviewOfEdition<2>> second;
  static Instance<PreviewOfEdition<3>> third;
  return edition == 2 ? static_cast<CardPreview&>(*second) : *third;
}

}  // namespace orv
