#pragma once

#include "base/Instance.h"
#include "forms/Surface.h"

namespace orv {

// The form on whose surfaces cards are composed. It stands hidden until the first batch run of the main
// window shows it; nothing depends on its being seen, and until then it has no window. Each composer repeats
// on picACard what the preview of its editor shows for the current record, so the preview must have drawn
// that record before.
class CardForm {
 public:
  CardForm();

  // Shows the surfaces in a window behind the editors.
  void ShowBehind();

  // Puts the font of a slot, a key of tblFont, on picACard; a key without a row gives a small black font.
  void ApplyCardFont(std::int32_t FontID);
  // The same for picACardPP.
  void ApplyPieceFont(std::int32_t FontID);
  // ApplyCardFont for the slot that the current set keeps in a column.
  void ApplySlot(const char* column);

  // The finished front stands in the picture of picACard, of the card's inside size.
  void CreateCard2nd();
  void CreateCard3rd();
  // Two images: the sheet stands on picACard, not yet in its picture, the piece on picACardPP likewise.
  void CreateCharacter2nd();
  // The front stands on picACard, not yet in its picture.
  void CreateLargeCard2nd();

  Surface picACard;    // the composed card, character or large card
  Surface picACardPP;  // the composed playing piece
  Surface picWhite;    // 16 by 16 white pixels to paint with
};

inline Instance<CardForm> frmCard;

}  // namespace orv
