// What the card editor asks of other dialogs: the catalogues, the card list and the statistics.
#include <QScopedValueRollback>

#include "catalogues/frmCardBacks.h"
#include "catalogues/frmCardType.h"
#include "database/ListHelpers.h"
#include "database/ReferenceLists.h"
#include "editors/CardEditor.h"
#include "editors/frmCardList.h"
#include "editors/inner/Statistics.h"
#include "state/modData.h"

namespace orv {

void CardEditor::cmdGetType_Click() {
  if (!kind_.has_type_catalogue || !Record().Hold()) return;
  modData::rsCardType.Close();
  frmCardType->Choose(modData::rsCard["CardTypeID"].Int32Or(0));
  frmCardType->ShowModal();
  modData::rsCardType = modData::OpenSnapshot(QString::fromLatin1(kAllCardTypes));
  const QScopedValueRollback loading(Loading, true);
  FillTypes();
  if (frmCardType->OK) {
    if (Write("CardTypeID", frmCardType->SelectedTypeID)) DrawCard();
  }
  frmCardType.Unload();
  SelectItemData(cboType, modData::rsCard["CardTypeID"].Int32Or(0));
}

void CardEditor::cmdGetCardBack_Click() {
  if (!Record().Hold()) return;
  modData::rsCardBack.Close();
  frmCardBacks->InitBacks(2);  // in both editions
  frmCardBacks->Choose(modData::rsCard["CardBackID"].Int32Or(0));
  frmCardBacks->ShowModal();
  modData::rsCardBack = modData::OpenSnapshot(QString::fromLatin1(kAllCardBacks));
  const QScopedValueRollback loading(Loading, true);
  FillBacks();
  if (frmCardBacks->OK) {
    if (Write("CardBackID", frmCardBacks->SelectedBackID)) DrawCard();
  }
  frmCardBacks.Unload();
  SelectItemData(cboCardBack, modData::rsCard["CardBackID"].Int32Or(0));
}

void CardEditor::cmdSort_Click() {
  if (!kind_.has_card_list) return;
  frmCardList->FillList();
  if (Record().Hold()) frmCardList->Choose(modData::rsCard["CardID"].Int32());
  frmCardList->ShowModal();
  if (frmCardList->GoTo) {
    const int card = frmCardList->SelectedCardID;
    OpenCards();
    ShowRecord(card);
  }
  frmCardList.Unload();
}

void CardEditor::cmdStat_Click() {
  ShowStatistics(kind_.second_type_name);
}

}  // namespace orv
