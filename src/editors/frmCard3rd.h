#pragma once

#include "editors/CardEditor.h"

namespace orv {

// The editor of 3rd-edition cards. It does not follow a change of the set by itself, although the
// recordset that it shares with the 2nd edition's editor is opened anew under it.
class Card3rdForm : public CardEditor {
 public:
  Card3rdForm();
  void InitCard3rd() { InitCards(); }
};

inline FormInstance<Card3rdForm> frmCard3rd;

}  // namespace orv
