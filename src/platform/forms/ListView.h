#pragma once

#include "forms/Control.h"
#include "forms/ListItem.h"

namespace orv {

// A list in report mode. Letters jump to an entry, Enter and a double click choose it; a text that is
// cut shows whole in a tool tip. The selection is kept in view.
class ListView : public Control {
 public:
  explicit ListView(Container& parent);

  void ClearColumns();
  void AddColumn(const QString& header, int width, Alignment alignment = Alignment::Left);  // pixels
  int ColumnWidth(int column) const;

  void Clear();
  void Add(const ListItem& item);
  int Count() const;
  ListItem Item(int index) const;         // in the order on show; RuntimeError 9 outside
  int IndexOf(const QString& key) const;  // of the entry with a key, -1 for none
  void SetSubItem(int index, int column, const QString& text);  // column from 1

  int SelectedIndex() const;      // -1 for none
  ListItem SelectedItem() const;  // RuntimeError 91 for none
  void Select(int index);         // scrolls to it; fires no ItemClick
  void EnsureVisible(int index);

  // Sorting is by text, without regard to case; it takes effect with SetSorted(true) and holds for later
  // additions too.
  void SetSortKey(int column);
  int SortKey() const { return sort_key_; }
  void SetSortAscending(bool ascending);
  void SetSorted(bool sorted);

  // The user went to an entry by mouse or keyboard.
  Event<const ListItem&> ItemClick;
  // Column counted from 1.
  Event<int> ColumnClick;
  Event<> DblClick;

 private:
  int sort_key_ = 0;
  bool ascending_ = true;
  bool sorted_ = false;
  bool quiet_ = false;
};

}  // namespace orv
