#include "composition/LargeCardPreview.h"
#include "composition/PreviewDrawing.h"
#include "composition/WrapText.h"
#include "composition/frmCard.h"
#include "composition/inner/Composing.h"
#include "state/modData.h"

namespace orv {
namespace {

// Where a picture reaches over the whole frame from beyond its corner, the last pixel stays white.
constexpr int kSlack = 1;

// Composes the current large card from its preview, layer over layer.
class LargeCardComposer {
 public:
  explicit LargeCardComposer(CardForm& form) : form_(form) {}

  void Compose() {
    const ReadScope reading(modData::cn);
    Clear();
    const Hug hug = card_["Resize"].BoolOrFalse() ? Hug::Height : Hug::Nothing;
    PaintPictureArea(target_, form_.picWhite.Picture(),
                     {preview_.picFrameLarge, preview_.picImageLarge, hug, kSlack}, card_);
    PaintSymbol();
    PrintTitle();
    form_.ApplySlot("CardLargeInfoFontID");
    PrintLines(target_, preview_.lblInformationLarge, card_["Information"].Text());
    PrintAutonumber();
    PrintWatermark(target_, preview_.lblWatermark);
  }

 private:
  void Clear() {
    target_.SetHeight(preview_.picCardLarge.Height());
    target_.SetWidth(preview_.picCardLarge.Width());
    target_.SetPicture(LoadPicture());
    if (!card_["BGPicture"].IsNull()) target_.SetPicture(preview_.picCardLarge.Picture());
    target_.SetBackColor(card_["BGColour"].Int32Or(kWhite));
  }

  // The symbol of the set itself, at the place that it has in the preview.
  void PaintSymbol() {
    if (!set_["UseSymbol"].BoolOrFalse()) return;
    target_.PaintPicture(SymbolOfSet(), preview_.picSymbolLarge.Left(), preview_.picSymbolLarge.Top());
  }

  // Each line is centred by itself; the box's height reserves no room.
  void PrintTitle() {
    form_.ApplySlot("CardLargeTitleFontID");
    const Label& box = preview_.lblTitleLarge;
    WrapText(WrappablePart(card_["Title"].Text()), box, target_, [&](const QString& line, int number) {
      const double indent = box.Width() / 2 - target_.TextWidth(line) / 2;
      PrintLeft(target_, box, line, {indent, number * target_.TextHeight(line)});
    });
  }

  void PrintAutonumber() {
    if (!set_["Autonumber"].BoolOrFalse()) return;
    form_.ApplySlot("AutonumberFontID");
    PrintLeft(target_, preview_.lblAutonumberLarge, card_["Nr"].TextOrEmpty());
  }

  CardForm& form_;
  Surface& target_ = form_.picACard;
  LargeCardPreview& preview_ = TheLargeCardPreview();
  Recordset card_ = modData::rsLargeCard;
  Recordset set_ = modData::rsSet;
};

}  // namespace

void CardForm::CreateLargeCard2nd() {
  LargeCardComposer(*this).Compose();
}

}  // namespace orv
