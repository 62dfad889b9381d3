#include "composition/CardPreview.h"
#include "composition/frmCard.h"
#include "composition/inner/Composing.h"
#include "state/modData.h"

namespace orv {
namespace {

// Composes the current card from its preview, layer over layer.
class CardComposer {
 public:
  CardComposer(CardForm& form, CardPreview& preview)
      : form_(form), target_(form.picACard), preview_(preview) {}

  void Compose() {
    const ReadScope reading(modData::cn);
    Clear();
    const Hug hug = card_["Resize"].BoolOrFalse() ? Hug::Width : Hug::Nothing;
    PaintPictureArea(target_, form_.picWhite.Picture(), {preview_.picFrame, preview_.picImage, hug}, card_);
    PaintSymbolAndArtist();
    PrintTitle();
    PrintType();
    PrintNumber();
    PrintBold();
    PrintInformation();
    PrintAutonumber();
    PrintWatermark(target_, preview_.lblWatermark);
    target_.SetPicture(target_.Image());
  }

 private:
  void Clear() {
    target_.SetHeight(preview_.picCard.Height());
    target_.SetWidth(preview_.picCard.Width());
    target_.SetPicture(LoadPicture());
    target_.SetBackColor(card_["BGColour"].Int32Or(kWhite));
    target_.SetPicture(preview_.picCard.Picture());
  }

  void PaintSymbolAndArtist() {
    if (set_["UseSymbol"].BoolOrFalse()) {
      target_.PaintPicture(preview_.picSymbol.Picture(), preview_.picSymbol.Left(), preview_.picSymbol.Top());
    }
    if (!card_["Artist"].TextOrEmpty().isEmpty()) {
      target_.PaintPicture(preview_.picArtistDest.Picture(), preview_.picArtistDest.Left(),
                           preview_.picArtistDest.Top());
    }
  }

  void PrintTitle() {
    form_.ApplySlot("CardTitleFontID");
    const QString title = card_["Title"].Text();
    const Surface& measured_on = preview_.Layout().title_measured_on_preview ? preview_.picCard : target_;
    PrintCentred(target_, preview_.lblTitle, title, measured_on.TextWidth(title));
  }

  void PrintType() {
    form_.ApplySlot("CardTypeFontID");
    const auto& words = preview_.lblType;
    if (preview_.Layout().has_one_line && card_["OneLine"].BoolOrFalse()) {
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
    form_.ApplySlot("CardTypeFontID");
    PrintCentred(target_, preview_.lblNumber, number);
  }

  void PrintBold() {
    form_.ApplySlot("CardBoldFontID");
    if (preview_.Layout().bold_in_label_colour) target_.SetForeColor(preview_.lblBold.ForeColor());
    PrintCentred(target_, preview_.lblBold, card_["BoldText"].Text());
  }

  void PrintInformation() {
    form_.ApplySlot("CardInformationFontID");
    PrintLines(target_, preview_.lblInformation, card_["Information"].Text());
  }

  void PrintAutonumber() {
    if (!set_["Autonumber"].BoolOrFalse()) return;
    form_.ApplySlot("AutonumberFontID");
    PrintRight(target_, preview_.lblAutonumber, card_["Nr"].TextOrEmpty());
  }

  CardForm& form_;
  Surface& target_;
  CardPreview& preview_;
  Recordset card_ = modData::rsCard;
  Recordset set_ = modData::rsSet;
};

}  // namespace

void CardForm::CreateCard2nd() {
  CardComposer(*this, CardPreviewOf(2)).Compose();
}
void CardForm::CreateCard3rd() {
  CardComposer(*this, CardPreviewOf(3)).Compose();
}

}  // namespace orv
