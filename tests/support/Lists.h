#pragma once

#include <QHeaderView>
#include <QTest>
#include <QTreeWidget>

#include "forms/ListView.h"

// What a user does to a list view on a form that is shown.
namespace orv {

inline QTreeWidget& TreeOf(const ListView& list) {
  return *qobject_cast<QTreeWidget*>(list.Handle());
}

inline QPoint PlaceOf(const ListView& list, int index) {
  QTreeWidget& tree = TreeOf(list);
  tree.scrollToItem(tree.topLevelItem(index));
  return tree.visualItemRect(tree.topLevelItem(index)).center();
}

inline void ClickEntry(const ListView& list, int index) {
  QTest::mouseClick(TreeOf(list).viewport(), Qt::LeftButton, {}, PlaceOf(list, index));
}

inline void DoubleClickEntry(const ListView& list, int index) {
  QTest::mouseDClick(TreeOf(list).viewport(), Qt::LeftButton, {}, PlaceOf(list, index));
}

// Under the last entry.
inline void DoubleClickBeside(const ListView& list) {
  const QWidget* const view = TreeOf(list).viewport();
  QTest::mouseDClick(TreeOf(list).viewport(), Qt::LeftButton, {}, QPoint(5, view->height() - 3));
}

// Column counted from 0.
inline void ClickHeader(const ListView& list, int column) {
  QHeaderView* const header = TreeOf(list).header();
  const QPoint place(header->sectionViewportPosition(column) + 8, header->height() / 2);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

// A column of all entries, in the order on show.
inline QStringList Column(const ListView& list, int column) {
  QStringList texts;
  for (int i = 0; i < list.Count(); ++i) {
    const ListItem item = list.Item(i);
    texts += column == 0 ? item.Text : item.SubItems.value(column - 1);
  }
  return texts;
}

// Index of the entry with a text in its first column, -1 without one.
inline int EntryOf(const ListView& list, const QString& text) {
  return static_cast<int>(Column(list, 0).indexOf(text));
}

// The first entry with a text.
inline void ClickEntry(const ListView& list, const char* text) {
  ClickEntry(list, EntryOf(list, text));
}

}  // namespace orv
