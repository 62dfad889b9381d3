#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "records/Recordset.h"

namespace orv {

struct CatalogueColumn {
  const char* header;
  int width;  // pixels
  Alignment alignment = Alignment::Left;
};

// How the catalogues differ, apart from their forms.
struct CatalogueKind {
  const char* caption;
  const char* key_prefix;  // two letters before the id in the key of a list entry
  const char* id_column;
  const char* default_column;  // of tblSet
  const char* is_used;         // the query for a card that uses an entry; %1 is the id
  const char* used_message;
  std::span<const CatalogueColumn> columns;
  int custom_column;  // of the list; "Yes" for what a user added
};

// The dialog of a catalogue: a sorted list to choose from, whose entries a user adds and removes. OK and
// Cancel decide about the current card alone: what was added, deleted or made the default stands.
class CatalogueForm : public Form {
 public:
  void Form_Load() override;

  // Comes up with an entry as if it had been clicked; nothing if there is none with this id.
  void Choose(std::int32_t id);

  bool OK = false;              // the dialog ended by cmdOK
  std::int32_t SelectedID = 0;  // of the entry clicked last, whether or not it is still there

  ListView lvEntries;
  CommandButton cmdDelete;
  CommandButton cmdDefault;
  CommandButton cmdOK;
  CommandButton cmdCancel;

 protected:
  explicit CatalogueForm(const CatalogueKind& kind);

  // The entry of the current row, without its key.
  virtual ListItem EntryOf(const Recordset& row) const = 0;
  // An entry was clicked and is about to become the selected one.
  virtual void ShowEntry(const ListItem& entry) = 0;

  // Lists the rows anew, in their order if nothing has sorted the list yet.
  void FillList();
  // Ascending, by a column counted from 0.
  void SortList(int column);
  // What follows each change of the rows; an entry that was added or changed is in view.
  void RefillSorted(std::int32_t shown = 0);
  // What follows the adding of a row.
  void RefillWithAdded();

  std::int32_t IdOf(const ListItem& entry) const;
  // Goes to the row with this id, EOF if it is gone; the id of the selected entry by default.
  void FindRow(std::int32_t id);
  bool HasRow(std::int32_t id);
  void FindSelectedRow() { FindRow(IdOf(lvEntries.SelectedItem())); }
  bool IsCustom(const ListItem& entry) const;

  Recordset rows_;  // editable, open for the life of the form

 private:
  QString KeyOf(std::int32_t id) const;
  void ItemClicked(const ListItem& entry);
  void cmdDelete_Click();
  void cmdDefault_Click();
  void End(bool ok);

  const CatalogueKind kind_;
};

// Runs an action on an entry, which ends without a word where none is selected, where its row is gone or has
// no picture that can be shown, and on Cancel.
void OnEntry(const std::function<void()>& action);

}  // namespace orv
