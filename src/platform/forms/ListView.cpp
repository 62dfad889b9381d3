#include <QHeaderView>
#include <QScopedValueRollback>

#include "base/RuntimeError.h"
#include "forms/ListView.h"
#include "forms/inner/ListTree.h"

namespace orv {
namespace {

ListTree& Of(const Control& control) {
  return *static_cast<ListTree*>(control.Handle());
}

QTreeWidgetItem* EntryAt(const Control& list, int index) {
  QTreeWidgetItem* const entry = Of(list).topLevelItem(index);
  if (entry == nullptr) throw RuntimeError(kErrSubscript);
  return entry;
}

QTreeWidgetItem* SelectedEntry(const Control& list) {
  const auto selected = Of(list).selectedItems();
  return selected.isEmpty() ? nullptr : selected.front();
}

}  // namespace

ListView::ListView(Container& parent) {
  auto* const tree = new ListTree(parent.Handle());
  Adopt(tree);
  QObject::connect(tree->header(), &QHeaderView::sectionClicked, Watcher(),
                   [this](int section) { ColumnClick(section + 1); });
  const auto clicked = [this] {
    if (!quiet_ && SelectedEntry(*this) != nullptr) ItemClick(SelectedItem());
  };
  QObject::connect(tree, &QTreeWidget::itemSelectionChanged, Watcher(), [clicked, tree] {
    if (!tree->IsPressing()) clicked();
  });
  QObject::connect(tree, &QTreeWidget::itemPressed, Watcher(), clicked);
  tree->chosen = [this] { DblClick(); };
  tree->chooses = [this] { return static_cast<bool>(DblClick); };
}

void ListView::ClearColumns() {
  Of(*this).ClearColumns();
}

void ListView::AddColumn(const QString& header, int width, Alignment alignment) {
  const auto side = alignment == Alignment::Left    ? Qt::AlignLeft
                    : alignment == Alignment::Right ? Qt::AlignRight
                                                    : Qt::AlignHCenter;
  Of(*this).AddColumn(header, width, side | Qt::AlignVCenter);
}

int ListView::ColumnWidth(int column) const {
  return Of(*this).StatedWidth(column);
}

void ListView::Clear() {
  const QScopedValueRollback quiet(quiet_, true);
  Of(*this).clear();
}

void ListView::Add(const ListItem& item) {
  const QScopedValueRollback quiet(quiet_, true);
  auto* const entry = new ListEntry(item, Of(*this));
  if (sorted_) {
    Of(*this).insertTopLevelItem(Of(*this).SortedPlace(*entry, sort_key_, ascending_), entry);
  } else {
    Of(*this).addTopLevelItem(entry);
  }
}

int ListView::Count() const {
  return Of(*this).topLevelItemCount();
}
ListItem ListView::Item(int index) const {
  return static_cast<ListEntry*>(EntryAt(*this, index))->Item();
}

int ListView::IndexOf(const QString& key) const {
  int index = Count();
  while (--index >= 0 && Item(index).Key != key) continue;
  return index;
}

void ListView::SetSubItem(int index, int column, const QString& text) {
  static_cast<ListEntry*>(EntryAt(*this, index))->SetSubItem(column, text);
}

int ListView::SelectedIndex() const {
  QTreeWidgetItem* const entry = SelectedEntry(*this);
  return entry == nullptr ? -1 : Of(*this).indexOfTopLevelItem(entry);
}

ListItem ListView::SelectedItem() const {
  QTreeWidgetItem* const entry = SelectedEntry(*this);
  if (entry == nullptr) throw RuntimeError(kErrObjectNotSet);
  return static_cast<ListEntry*>(entry)->Item();
}

void ListView::Select(int index) {
  const QScopedValueRollback quiet(quiet_, true);
  if (index < 0) {
    Of(*this).setCurrentItem(nullptr);
    Of(*this).clearSelection();
    return;
  }
  Of(*this).setCurrentItem(EntryAt(*this, index));
  EnsureVisible(index);
}

void ListView::EnsureVisible(int index) {
  Of(*this).scrollToItem(EntryAt(*this, index));
}

void ListView::SetSortKey(int column) {
  sort_key_ = column;
}
void ListView::SetSortAscending(bool ascending) {
  ascending_ = ascending;
}

void ListView::SetSorted(bool sorted) {
  sorted_ = sorted;
  if (!sorted) return;
  const QScopedValueRollback quiet(quiet_, true);
  Of(*this).sortItems(sort_key_, ascending_ ? Qt::AscendingOrder : Qt::DescendingOrder);
  if (const int selected = SelectedIndex(); selected >= 0) EnsureVisible(selected);
}

}  // namespace orv
