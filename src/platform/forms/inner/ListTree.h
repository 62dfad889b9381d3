#pragma once

#include <QTreeWidget>
#include <functional>
#include <vector>

#include "forms/ListItem.h"

namespace orv {

class ListTree;

// One entry on show. Entries compare by the text of a column, without regard to case and with accented
// letters beside their base letters.
class ListEntry : public QTreeWidgetItem {
 public:
  ListEntry(const ListItem& item, const ListTree& tree);
  const ListItem& Item() const { return item_; }
  void SetSubItem(int column, const QString& text);
  const QString& TextOf(int column) const;
  bool operator<(const QTreeWidgetItem& other) const override;

 private:
  ListItem item_;
};

// The widget behind a list view: one selected row that a click beside the entries leaves alone.
class ListTree : public QTreeWidget {
 public:
  explicit ListTree(QWidget* parent);
  // A further column of a width in pixels. The first one is shown with the room that they all leave.
  void AddColumn(const QString& header, int width, Qt::Alignment alignment);
  int StatedWidth(int column) const { return widths_[static_cast<std::size_t>(column)]; }
  void ClearColumns();
  // While the mouse goes down on an entry, which then speaks for itself.
  bool IsPressing() const { return pressing_; }
  // Where a new entry goes in a sorted list: behind its equals.
  int SortedPlace(const ListEntry& entry, int column, bool ascending) const;

  std::function<void()> chosen;   // by Enter or a double click
  std::function<bool()> chooses;  // whether choosing means anything here

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void ShowTip(const QPoint& place, const QPoint& on_screen);
  bool IsCut(const QModelIndex& index) const;
  void SpreadFirstColumn();
  std::vector<int> widths_;
  bool pressing_ = false;
};

}  // namespace orv
