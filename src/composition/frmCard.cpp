#include "composition/frmCard.h"

#include "composition/CardPreview.h"
#include "composition/Composing.h"
#include "composition/WrapText.h"
#include "forms/Layout.h"
#include "state/modData.h"

namespace orv {
namespace {

void ApplyFont(Surface& surface, std::int32_t font_id) {
  modData::strSQL = QStringLiteral("SELECT * FROM tblFont WHERE FontID = %1").arg(font_id);
  Recordset slot = modData::OpenSnapshot(modData::strSQL);
  if (slot.IsEOF()) {
    surface.SetFont({QStringLiteral("Small Fonts"), 7, false, false});
    surface.SetForeColor(kBlack);
    return;
  }
  surface.SetFont({slot["Font"].Text(), slot["Size"].Number(), slot["Bold"].Bool(), slot["Italic"].Bool()});
  surface.SetForeColor(slot["Colour"].Int32());
}

// Composes the current card from its preview, layer over layer.
class CardComposer {
 public:
  CardComposer(CardForm& form, CardPreview& preview)
      : form_(form), target_(form.picACard), preview_(preview) {}

  void Compose() {
    Clear();
    PaintPictureArea();
    PaintSymbolAndArtist();
    PrintTitle();
    PrintType();
    PrintNumber();
    PrintBold();
    PrintInformation();
    PrintAutonumber();
    TakeFontOf(target_, preview_.lblWatermark);
    PrintCentred(target_, preview_.lblWatermark, preview_.lblWatermark.Caption());
    target_.SetPicture(target_.Image());
  }

 private:
  void ApplySlot(const char* column) { form_.ApplyCardFont(set_[column].Int32()); }

  void Clear() {
    target_.SetHeight(preview_.picCard.Height());
    target_.SetWidth(preview_.picCard.Width());
    target_.SetPicture(LoadPicture());
    target_.SetBackColor(card_["BGColour"].Int32());
    target_.SetPicture(preview_.picCard.Picture());
  }

  void PaintPictureArea() {
    if (!card_["UsePicture"].Bool()) return;
    const bool outlined = card_["UseFrame"].Bool();
    PaintFramed(target_, form_.picWhite.Picture(),
                {preview_.picFrame, preview_.picImage, !card_["Picture"].IsNull(), outlined ? 1 : 0,
                 card_["PicLeft"].Number(), card_["PicTop"].Number(),
                 card_["Resize"].Bool() ? Hug::Width : Hug::Nothing});
    if (outlined) OutlineFrame(target_, preview_.picFrame);
  }

  void PaintSymbolAndArtist() {
    if (set_["UseSymbol"].Bool()) {
      target_.PaintPicture(preview_.picSymbol.Picture(), preview_.picSymbol.Left(), preview_.picSymbol.Top());
    }
    if (!card_["Artist"].TextOrEmpty().isEmpty()) {
      target_.PaintPicture(preview_.picArtistDest.Picture(), preview_.picArtistDest.Left(),
                           preview_.picArtistDest.Top());
    }
  }

  void PrintTitle() {
    ApplySlot("CardTitleFontID");
    const QString title = card_["Title"].Text();
    const Surface& measured_on = preview_.Layout().title_measured_on_preview ? preview_.picCard : target_;
    PrintCentred(target_, preview_.lblTitle, title, measured_on.TextWidth(title));
  }

  void PrintType() {
    ApplySlot("CardTypeFontID");
    const auto& words = preview_.lblType;
    if (preview_.Layout().has_one_line && card_["OneLine"].Bool()) {
      // The width that centres the line counts the hidden upper right word too.
      const double width = target_.TextWidth(words[0]->Caption() + words[1]->Caption());
      PrintCentred(target_, *words[0], words[0]->Caption(), width);
      return;
    }
    const int count = preview_.Layout().type_count;
    for (int i = 0; i < count; i += 2) PrintLeft(target_, *words[i], words[i]->Caption());
    for (int i = 1; i < count; i += 2) PrintRight(target_, *words[i], words[i]->Caption());
  }

  void PrintNumber() {
    const QString number = card_["Number"].TextOrEmpty();
    if (number.isEmpty()) return;
    ApplySlot("CardTypeFontID");
    PrintCentred(target_, preview_.lblNumber, number);
  }

  void PrintBold() {
    ApplySlot("CardBoldFontID");
    if (preview_.Layout().bold_in_label_colour) target_.SetForeColor(preview_.lblBold.ForeColor());
    PrintCentred(target_, preview_.lblBold, card_["BoldText"].Text());
  }

  void PrintInformation() {
    ApplySlot("CardInformationFontID");
    const Label& box = preview_.lblInformation;
    WrapText(card_["Information"].Text(), box, target_, [&](const QString& line, int number) {
      PrintLeft(target_, box, line, {0, number * target_.TextHeight(line)});
    });
  }

  void PrintAutonumber() {
    if (!set_["Autonumber"].Bool()) return;
    ApplySlot("AutonumberFontID");
    PrintRight(target_, preview_.lblAutonumber, card_["Nr"].Text());
  }

  CardForm& form_;
  Surface& target_;
  CardPreview& preview_;
  Recordset card_ = modData::rsCard;
  Recordset set_ = modData::rsSet;
};

}  // namespace

CardForm::CardForm() : Form(FormKind::Child), view_card_(*this, picACard), view_piece_(*this, picACardPP) {
  SetCaption(QStringLiteral("Card"));
  for (Surface* surface : {&picACard, &picACardPP}) {
    surface->Place(0, 0, 89, 121);
    surface->SetBorderStyle(1);
  }
  picACard.SetName(QStringLiteral("Composed card"));
  picACardPP.SetName(QStringLiteral("Composed playing piece"));
  picWhite.Place(0, 0, 16, 16);
  picWhite.SetPicture(picWhite.Image());
  BoxLayout row(*this, BoxLayout::Row);
  row.Add(view_card_);
  row.Add(view_piece_);
  row.AddStretch();
}

void CardForm::ApplyCardFont(std::int32_t FontID) {
  ApplyFont(picACard, FontID);
}
void CardForm::ApplyPieceFont(std::int32_t FontID) {
  ApplyFont(picACardPP, FontID);
}

void CardForm::CreateCard2nd() {
  CardComposer(*this, CardPreviewOf(2)).Compose();
}
void CardForm::CreateCard3rd() {
  CardComposer(*this, CardPreviewOf(3)).Compose();
}

}  // namespace orv
