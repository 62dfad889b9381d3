#include "catalogues/CatalogueForm.h"

#include "base/Quietly.h"
#include "base/RuntimeError.h"
#include "database/ListHelpers.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "state/modData.h"

namespace orv {

void OnEntry(const std::function<void()>& action) {
  Quietly({kErrObjectNotSet, kErrNoCurrentRecord, kErrInvalidPicture, kErrCancel}, action);
}

CatalogueForm::CatalogueForm(const CatalogueKind& kind)
    : Form(FormKind::Dialog),
      lvEntries(*this),
      cmdDelete(*this, QStringLiteral("&Delete")),
      cmdDefault(*this, QStringLiteral("&Set as default")),
      cmdOK(*this, QStringLiteral("OK")),
      cmdCancel(*this, QStringLiteral("Cancel")),
      kind_(kind) {
  SetCaption(QString::fromLatin1(kind.caption));
  for (CommandButton* button : {&cmdDelete, &cmdDefault, &cmdOK}) button->SetEnabled(false);
  cmdOK.SetDefault(true);
  cmdCancel.SetCancel(true);
  lvEntries.SetAccessibleName(QString::fromLatin1(kind.caption));
  lvEntries.ItemClick = [this](const ListItem& entry) { OnEntry([&] { ItemClicked(entry); }); };
  lvEntries.ColumnClick = [this](int column) { SortList(column - 1); };
  cmdDelete.Click = [this] { OnEntry([this] { cmdDelete_Click(); }); };
  cmdDefault.Click = [this] { cmdDefault_Click(); };
  cmdOK.Click = [this] { End(true); };
  cmdCancel.Click = [this] { End(false); };
}

void CatalogueForm::Form_Load() {
  lvEntries.ClearColumns();
  for (const CatalogueColumn& column : kind_.columns) {
    lvEntries.AddColumn(QString::fromLatin1(column.header), column.width, column.alignment);
  }
}

void CatalogueForm::FillList() {
  lvEntries.Clear();
  if (rows_.IsEmpty()) return;
  for (rows_.MoveFirst(); !rows_.IsEOF(); rows_.MoveNext()) {
    ListItem entry = EntryOf(rows_);
    entry.Key = KeyOf(rows_[kind_.id_column].Int32());
    lvEntries.Add(entry);
  }
}

void CatalogueForm::SortList(int column) {
  SortListView(lvEntries, column, true);
}

void CatalogueForm::RefillSorted(std::int32_t shown) {
  FillList();
  SortList(0);
  if (const int index = lvEntries.IndexOf(KeyOf(shown)); index >= 0) lvEntries.EnsureVisible(index);
}

void CatalogueForm::RefillWithAdded() {
  rows_.MoveLast();
  const std::int32_t added = rows_[kind_.id_column].Int32();
  RefillSorted(added);
  Choose(added);
}

void CatalogueForm::Choose(std::int32_t id) {
  const int index = lvEntries.IndexOf(KeyOf(id));
  if (index < 0) return;
  lvEntries.Select(index);
  OnEntry([&] { ItemClicked(lvEntries.Item(index)); });
}

QString CatalogueForm::KeyOf(std::int32_t id) const {
  return QString::fromLatin1(kind_.key_prefix) + QString::number(id);
}

std::int32_t CatalogueForm::IdOf(const ListItem& entry) const {
  return Value(entry.Key.mid(2)).Int32();
}

void CatalogueForm::FindRow(std::int32_t id) {
  FindByKey(rows_, kind_.id_column, id);
}

bool CatalogueForm::HasRow(std::int32_t id) {
  if (rows_.IsEmpty()) return false;
  FindRow(id);
  return !rows_.IsEOF();
}

bool CatalogueForm::IsCustom(const ListItem& entry) const {
  return entry.SubItems.value(kind_.custom_column - 1) == YesNo(true);
}

void CatalogueForm::ItemClicked(const ListItem& entry) {
  ShowEntry(entry);
  SelectedID = IdOf(entry);
  cmdDelete.SetEnabled(IsCustom(entry));
  cmdOK.SetEnabled(true);
  cmdDefault.SetEnabled(true);
}

void CatalogueForm::cmdDelete_Click() {
  const std::int32_t id = IdOf(lvEntries.SelectedItem());
  if (modData::RecordExists(QString::fromLatin1(kind_.is_used).arg(id))) {
    MsgBox(QString::fromLatin1(kind_.used_message), Icon::Exclamation, {});
    return;
  }
  FindRow(id);
  rows_.Delete();
  RefillSorted();
  lvEntries.SetFocus();  // not on the button, where the next Enter would delete one more
}

void CatalogueForm::cmdDefault_Click() {
  if (!HasRow(SelectedID)) return;
  modData::rsSet[kind_.default_column] = SelectedID;
  modData::rsSet.Update();
}

// An entry that was deleted since it was clicked is no choice.
void CatalogueForm::End(bool ok) {
  OK = ok && HasRow(SelectedID);
  Hide();
}

}  // namespace orv
