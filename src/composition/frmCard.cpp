#include "composition/frmCard.h"

#include "forms/Controls.h"
#include "forms/Form.h"
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

class CardWindow : public Form {
 public:
  CardWindow()
      : Form(FormKind::Child), view_card_(*this, frmCard->picACard), view_piece_(*this, frmCard->picACardPP) {
    SetCaption(QStringLiteral("Card"));
    BoxLayout row(*this, BoxLayout::Row);
    row.Add(view_card_);
    row.Add(view_piece_);
    row.AddStretch();
  }

 private:
  SurfaceView view_card_;
  SurfaceView view_piece_;
};

FormInstance<CardWindow> window;

}  // namespace

CardForm::CardForm() {
  for (Surface* surface : {&picACard, &picACardPP}) {
    surface->Place(0, 0, 89, 121);
    surface->SetBorderStyle(1);
  }
  picACard.SetName(QStringLiteral("Composed card"));
  picACardPP.SetName(QStringLiteral("Composed playing piece"));
  picWhite.Place(0, 0, 16, 16);
  picWhite.SetPicture(picWhite.Image());
}

void CardForm::ShowBehind() {
  window->ShowBehind();
}

void CardForm::ApplyCardFont(std::int32_t FontID) {
  ApplyFont(picACard, FontID);
}
void CardForm::ApplyPieceFont(std::int32_t FontID) {
  ApplyFont(picACardPP, FontID);
}

void CardForm::ApplySlot(const char* column) {
  ApplyCardFont(modData::rsSet[column].Int32());
}

}  // namespace orv
