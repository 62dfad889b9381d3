#include "editors/frmCardList.h"

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "database/ListHelpers.h"
#include "editors/inner/EditorLayout.h"
#include "forms/ControlHelpers.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kListWidth = 7200;  // twips

QString KeyOf(std::int32_t id) {
  return u'C' + QString::number(id);
}

ListItem EntryOf(const Recordset& row) {
  ListItem item;
  item.Key = KeyOf(row["CardID"].Int32());
  item.Text = row["Title"].TextOrEmpty();
  item.SubItems = {TypeText(row), row["BackText"].TextOrEmpty()};
  item.Tag = row["BoldText"].TextOrEmpty();
  item.ToolTipText = row["Information"].TextOrEmpty();
  return item;
}

}  // namespace

CardListForm::CardListForm()
    : Form(FormKind::Dialog),
      lvCard(*this),
      cmdUp(*this, QString(), QStringLiteral("up")),
      cmdDown(*this, QString(), QStringLiteral("down")),
      cmdGoTo(*this, QStringLiteral("Go to")),
      cmdClose(*this, QStringLiteral("Close")),
      fraCardText(*this, QStringLiteral("Card text")),
      viewCardText(fraCardText, picCardText) {
  SetCaption(QStringLiteral("Card List"));
  Arrange();
  lvCard.ItemClick = [this](const ListItem& item) { lvCard_ItemClick(item); };
  lvCard.DblClick = [this] { End(true); };
  cmdUp.Click = [this] { Swap(&Recordset::MovePrevious, &Recordset::MoveNext); };
  cmdDown.Click = [this] { Swap(&Recordset::MoveNext, &Recordset::MovePrevious); };
  cmdGoTo.Click = [this] { End(true); };
  cmdClose.Click = [this] { End(false); };
}

void CardListForm::Arrange() {
  SetClientSize(8820, 7080);
  lvCard.Place(120, 120, kListWidth, 4800);
  cmdUp.Place(7440, 120, 1260, 435);
  cmdDown.Place(7440, 660, 1260, 435);
  cmdGoTo.Place(7440, 3945, 1260, 435);
  cmdClose.Place(7440, 4485, 1260, 435);
  fraCardText.Place(120, 5040, 8580, 1920);
  viewCardText.Place(120, 300, 8340, 1500);
  picCardText.Place(0, 0, 556, 100);
  const Font font{QStringLiteral("Small Fonts"), 6.75, false, false};
  lblBold.Place(4, 2, 548, 12);
  lblBold.SetFont({font.Name, font.Size, true, false});
  lblInformation.Place(4, 16, 548, 82);
  lblInformation.SetFont(font);
  lblInformation.SetWordWrap(true);
  lvCard.SetAccessibleName(QStringLiteral("Cards"));
  Explain(cmdUp, QStringLiteral("Move up"));
  Explain(cmdDown, QStringLiteral("Move down"));
  cmdClose.SetCancel(true);
}

void CardListForm::Form_Load() {
  GoTo = false;
  lvCard.ClearColumns();
  for (const char* header : {"Card", "Type", "Back"}) {
    lvCard.AddColumn(QString::fromLatin1(header), kListWidth / kTwipsPerPixel / 3 - 10);
  }
}

void CardListForm::FillList() {
  modData::strSQL =
      QStringLiteral(
          "SELECT tblCard.CardID, tblCard.Nr, tblCard.Title, tblCardType.UpperLeft, tblCardType.LowerLeft, "
          "tblCardType.UpperRight, tblCardType.LowerRight, tblCard.Number, tblCardBack.BackText, "
          "tblCard.BoldText, tblCard.Information"
          " FROM tblCardBack INNER JOIN (tblCardType INNER JOIN tblCard ON tblCardType.CardTypeID = "
          "tblCard.CardTypeID) ON tblCardBack.CardBackID = tblCard.CardBackID"
          " WHERE tblCard.SetID=%1"
          " ORDER BY tblCard.Nr, tblCard.Title")
          .arg(modData::CurrentSetID);
  modData::OpenEditable(modData::strSQL, rows_);
  lvCard.Clear();
  Transaction transaction(modData::cn);
  int counter = 0;
  for (; !rows_.IsEOF(); rows_.MoveNext()) {
    ++counter;
    rows_["Nr"] = int{ToInt16(counter)};
    rows_.Update();
    lvCard.Add(EntryOf(rows_));
  }
  transaction.Commit();
  SelectedCardID = 0;
}

void CardListForm::Choose(std::int32_t id) {
  const int index = lvCard.IndexOf(KeyOf(id));
  if (index < 0) return;
  lvCard.Select(index);
  lvCard_ItemClick(lvCard.Item(index));
}

void CardListForm::lvCard_ItemClick(const ListItem& item) {
  // The list deals in 16-bit keys: a card past them is shown and can't be moved or gone to.
  const int id = Value(item.Key.mid(1)).Int32();
  SelectedCardID = static_cast<std::int16_t>(id <= INT16_MAX ? id : 0);
  lblBold.SetCaption(item.Tag);
  lblInformation.SetCaption(item.ToolTipText);
}

void CardListForm::Swap(void (Recordset::*to_neighbour)(), void (Recordset::*back)()) {
  if (SelectedCardID == 0) return;
  FindByKey(rows_, "CardID", SelectedCardID);
  if (rows_.IsEOF()) return;
  const Value nr = rows_["Nr"].Get();
  (rows_.*to_neighbour)();
  if (rows_.IsBOF() || rows_.IsEOF()) return;
  Transaction transaction(modData::cn);
  const Value other = rows_["Nr"].Get();
  rows_["Nr"] = nr;
  rows_.Update();
  (rows_.*back)();
  rows_["Nr"] = other;
  rows_.Update();
  const std::int16_t id = SelectedCardID;
  FillList();
  transaction.Commit();
  SelectedCardID = id;
  lvCard.Select(lvCard.IndexOf(KeyOf(id)));
}

void CardListForm::End(bool go_to) {
  GoTo = go_to && SelectedCardID != 0;
  Hide();
}

}  // namespace orv
