#pragma once

#include "editors/CardEditor.h"

namespace orv {

// The editor of 2nd-edition cards.
class Card2ndForm : public CardEditor {
 public:
  Card2ndForm();
  // Follows the current set.
  void InitCard2nd() { InitCards(); }
};

inline FormInstance<Card2ndForm> frmCard2nd;

}  // namespace orv
