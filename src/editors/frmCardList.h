#pragma once

#include <cstdint>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/Surface.h"
#include "records/Recordset.h"

namespace orv {

// The list of all cards of the current set in their order, which moves cards up and down and sends the
// editor to one. A card without a valid type or back is not in it. The list writes through a recordset of
// its own, so the editor's recordset has to be opened again to see what it did.
class CardListForm : public Form {
 public:
  CardListForm();
  void Form_Load() override;

  // Lists the cards anew and numbers them 1, 2, 3 and so on as they stand, in one transaction.
  void FillList();
  // Comes up with a card as if it had been clicked; nothing if it is not in the list.
  void Choose(std::int32_t id);

  bool GoTo = false;                // left with "Go to"
  std::int16_t SelectedCardID = 0;  // of the entry clicked last, 0 when none

  ListView lvCard;
  CommandButton cmdUp;
  CommandButton cmdDown;
  CommandButton cmdGoTo;
  CommandButton cmdClose;
  Frame fraCardText;  // the texts of the selected card
  Surface picCardText;
  Label lblBold{&picCardText};
  Label lblInformation{&picCardText};
  SurfaceView viewCardText;

 private:
  void Arrange();
  void lvCard_ItemClick(const ListItem& item);
  // Swaps the selected card with its neighbour, in a direction of the recordset's moves.
  void Swap(void (Recordset::*to_neighbour)(), void (Recordset::*back)());
  void End(bool go_to);

  Recordset rows_;
};

inline FormInstance<CardListForm> frmCardList;

}  // namespace orv
