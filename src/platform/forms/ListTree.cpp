#include "forms/inner/ListTree.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>
#include <numeric>

#include "base/RuntimeError.h"
#include "base/Shortened.h"
#include "base/TextOrder.h"
#include "forms/inner/ShownText.h"

namespace orv {
namespace {

constexpr int kRowSpace = 4;  // pixels
// Letters; more of a text is no help, and the toolkit lays out all that it gets.
constexpr qsizetype kMostInCell = 1000;
constexpr qsizetype kMostInTip = 2000;

bool Before(const QString& left, const QString& right) {
  return CompareText(left, right) < 0;
}

}  // namespace

ListEntry::ListEntry(const ListItem& item, const ListTree& tree) : item_(item) {
  const QTreeWidgetItem& header = *tree.headerItem();
  setSizeHint(0, QSize(0, tree.fontMetrics().height() + kRowSpace));
  for (int column = 0; column < tree.columnCount(); ++column) {
    setText(column, ToShownLine(Clipped(TextOf(column), kMostInCell)));
    setData(column, Qt::TextAlignmentRole, header.data(column, Qt::TextAlignmentRole));
  }
}

const QString& ListEntry::TextOf(int column) const {
  static const QString none;
  if (column == 0) return item_.Text;
  return column > 0 && column <= item_.SubItems.size() ? item_.SubItems[column - 1] : none;
}

void ListEntry::SetSubItem(int column, const QString& text) {
  if (column < 1) throw RuntimeError(kErrSubscript);
  while (item_.SubItems.size() < column) item_.SubItems.append(QString());
  item_.SubItems[column - 1] = text;
  setText(column, ToShownLine(Clipped(text, kMostInCell)));
}

bool ListEntry::operator<(const QTreeWidgetItem& other) const {
  const int column = treeWidget() == nullptr ? 0 : treeWidget()->sortColumn();
  return Before(TextOf(column), static_cast<const ListEntry&>(other).TextOf(column));
}

ListTree::ListTree(QWidget* parent) : QTreeWidget(parent) {
  setColumnCount(0);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(SingleSelection);
  setSelectionBehavior(SelectRows);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setFocusPolicy(Qt::StrongFocus);  // not by the wheel
  setTextElideMode(Qt::ElideRight);
  header()->setMinimumSectionSize(12);
  header()->setStretchLastSection(false);
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setHighlightSections(false);
}

int ListTree::SortedPlace(const ListEntry& entry, int column, bool ascending) const {
  int low = 0;
  int high = topLevelItemCount();
  while (low < high) {
    const int middle = (low + high) / 2;
    const QString& other = static_cast<ListEntry*>(topLevelItem(middle))->TextOf(column);
    const bool before = ascending ? Before(entry.TextOf(column), other) : Before(other, entry.TextOf(column));
    before ? high = middle : low = middle + 1;
  }
  return low;
}

QItemSelectionModel::SelectionFlags ListTree::selectionCommand(const QModelIndex& index,
                                                               const QEvent*) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                         : QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate);
}

void ListTree::mousePressEvent(QMouseEvent* event) {
  if (!indexAt(event->pos()).isValid()) return;
  const QScopedValueRollback pressing(pressing_, true);
  QTreeWidget::mousePressEvent(event);
}

void ListTree::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeWidget::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && chosen) chosen();
}

void ListTree::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter) {
    QTreeWidget::keyPressEvent(event);
  } else if (!selectedItems().isEmpty() && chooses && chooses()) {
    chosen();
  } else {
    event->ignore();  // for the default button
  }
}

// The toolkit would put its cursor on the first entry without choosing it, and the first key would then
// go to the second.
void ListTree::focusInEvent(QFocusEvent* event) {
  const bool had = currentIndex().isValid();
  QTreeWidget::focusInEvent(event);
  if (!had) selectionModel()->clearCurrentIndex();
}

void ListTree::AddColumn(const QString& header, int width, Qt::Alignment alignment) {
  const int column = columnCount();
  setColumnCount(column + 1);
  headerItem()->setText(column, header);
  headerItem()->setTextAlignment(column, alignment);
  setColumnWidth(column, width);
  widths_.push_back(width);
  SpreadFirstColumn();
}

void ListTree::ClearColumns() {
  setColumnCount(0);
  widths_.clear();
}

void ListTree::SpreadFirstColumn() {
  if (widths_.empty()) return;
  const int room = viewport()->width() - std::accumulate(widths_.begin(), widths_.end(), 0);
  setColumnWidth(0, widths_[0] + std::max(room, 0));
}

void ListTree::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  SpreadFirstColumn();
  if (const auto selected = selectedItems(); !selected.isEmpty()) scrollToItem(selected.front());
}

bool ListTree::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTreeWidget::viewportEvent(event);
  const auto& help = *static_cast<QHelpEvent*>(event);
  ShowTip(help.pos(), help.globalPos());
  return true;
}

bool ListTree::IsCut(const QModelIndex& index) const {
  const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
  const int width = fontMetrics().horizontalAdvance(index.data().toString());
  return width + margin > visualRect(index).width();
}

void ListTree::ShowTip(const QPoint& place, const QPoint& on_screen) {
  const QModelIndex index = indexAt(place);
  QStringList parts;
  if (index.isValid()) {
    const auto* const entry = static_cast<ListEntry*>(itemFromIndex(index));
    if (IsCut(index)) parts += Clipped(entry->TextOf(index.column()), kMostInTip);
    if (!entry->Item().ToolTipText.isEmpty()) parts += Clipped(entry->Item().ToolTipText, kMostInTip);
  }
  QString text = parts.join(QStringLiteral("\n\n"));
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  // As rich text the tip breaks its lines; what looks like a mark in it must not be one.
  const QString tip = text.isEmpty() ? QString() : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
  QToolTip::showText(on_screen, tip, viewport(), visualRect(index));
}

}  // namespace orv
