#include "composition/CharacterPreview.h"
#include "composition/frmCard.h"
#include "composition/inner/Composing.h"
#include "state/modData.h"

namespace orv {
namespace {

// Makes what is drawn on a part of the preview its picture and paints it where it lies.
void PaintPart(Surface& target, Surface& part) {
  part.SetPicture(part.Image());
  target.PaintPicture(part.Picture(), part.Left(), part.Top());
}

void PrintCentred(Surface& target, const Label& label, Origin origin = {}) {
  orv::PrintCentred(target, label, label.Caption(), origin);
}

// Composes the current character from its preview: the sheet, layer over layer, and the piece.
class CharacterComposer {
 public:
  explicit CharacterComposer(CardForm& form) : form_(form) {}

  void ComposeSheet() {
    Clear(sheet_, preview_.picCharacter);
    sheet_.SetPicture(preview_.picCharacter.Picture());
    for (Surface& strip : preview_.picCharAttrDisp) PaintPart(sheet_, strip);
    if (!character_["Background"].IsNull()) PaintPart(sheet_, preview_.picBackgroundChar);
    panel_ = {preview_.picBackgroundChar.Left(), preview_.picBackgroundChar.Top()};
    PaintPictureArea(sheet_, form_.picWhite.Picture(),
                     {preview_.picFrameCharacter, preview_.picImageCharacter}, character_, panel_);
    PaintSymbol();
    PrintNames();
    PrintInformation();
    PrintAbilities();
    PrintAutonumber();
    PrintWatermark(sheet_, preview_.lblWatermark[0], panel_);
  }

  void ComposePiece() {
    Clear(piece_, preview_.picPlayingPiece);
    if (!character_["PlayingPiece"].IsNull()) {
      PaintFramed(piece_, form_.picWhite.Picture(),
                  {preview_.picPlayingPieceFrame, preview_.picPlayingPieceImage},
                  {true, 0, character_["PPLeft"].NumberOr(0), character_["PPTop"].NumberOr(0)});
    }
    piece_.LineB(8, 8, 141, 246, kBlack);
    form_.ApplyPieceFont(set_["CharacterPieceFontID"].Int32Or(0));
    PrintCentred(piece_, preview_.lblPlayingPieceName);
    PrintWatermark(piece_, preview_.lblWatermark[1]);
  }

 private:
  void Clear(Surface& target, const Surface& model) {
    target.SetHeight(model.Height());
    target.SetWidth(model.Width());
    target.SetPicture(LoadPicture());
  }

  void PaintSymbol() {
    if (!set_["UseSymbol"].BoolOrFalse()) return;
    const Surface& symbol = preview_.picSymbolCharacter;
    sheet_.PaintPicture(symbol.Picture(), symbol.Left() + panel_.x, symbol.Top() + panel_.y);
  }

  void PrintNames() {
    form_.ApplySlot("CharacterNameFontID");
    PrintCentred(sheet_, preview_.lblCharacter);
    PrintCentred(sheet_, preview_.lblObjects);
    PrintCentred(sheet_, preview_.lblFollowers);
  }

  void PrintInformation() {
    form_.ApplySlot("CharacterInfoFontID");
    for (const Label* label :
         {&preview_.lblAlignmentTitle, &preview_.lblAlignment, &preview_.lblStartTitle, &preview_.lblStart}) {
      PrintLeft(sheet_, *label, label->Caption(), panel_);
    }
  }

  void PrintAbilities() {
    form_.ApplySlot("CharacterSpecialTitleFontID");
    PrintCentred(sheet_, preview_.lblSpecialTitle, panel_);
    form_.ApplySlot("CharacterSpecialFontID");
    PrintLines(sheet_, preview_.lblSpecial, character_["Abilities"].TextOrEmpty(), panel_);
  }

  void PrintAutonumber() {
    if (!set_["Autonumber"].BoolOrFalse()) return;
    form_.ApplySlot("AutonumberFontID");
    PrintLeft(sheet_, preview_.lblAutonumberCharacter, character_["Nr"].TextOrEmpty(), panel_);
  }

  CardForm& form_;
  Surface& sheet_ = form_.picACard;
  Surface& piece_ = form_.picACardPP;
  CharacterPreview& preview_ = TheCharacterPreview();
  Recordset character_ = modData::rsCharacter;
  Recordset set_ = modData::rsSet;
  Origin panel_;
};

}  // namespace

void CardForm::CreateCharacter2nd() {
  const ReadScope reading(modData::cn);
  CharacterComposer composer(*this);
  composer.ComposeSheet();
  composer.ComposePiece();
}

}  // namespace orv
