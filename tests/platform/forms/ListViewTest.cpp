#include "forms/ListView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "forms/Controls.h"
#include "platform/forms/TestWindow.h"
#include "support/Errors.h"
#include "support/Lists.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class ListViewTest : public testing::Test {
 protected:
  ListViewTest() {
    list.Place(0, 0, 4500, 1800);
    list.AddColumn("Text", 100);
    list.AddColumn("Nr", 28, Alignment::Right);
    list.ItemClick = [this](const ListItem& item) { log += item.Key + u' '; };
    list.DblClick = [this] { log += "! "; };
    list.ColumnClick = [this](int column) { log += QString("#%1 ").arg(column); };
    ok.Place(0, 3000, 900, 375);
    ok.SetDefault(true);
    ok.Click = [this] { log += "ok "; };
  }
  void Fill(std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
      list.Add({QString("k%1").arg(list.Count()), text, {"1"}, {}, {}});
    }
  }
  QTreeWidget& Tree() { return TreeOf(list); }
  QString Order() { return Column(list, 0).join(' '); }
  QString Log() { return std::exchange(log, QString()); }
  TestWindow window;
  ListView list{window};
  CommandButton ok{window, "OK"};
  QString log;
};

TEST_F(ListViewTest, MouseAndKeyboardGoToEntriesAndCodeIsQuiet) {
  Fill({"alpha", "beta", "gamma"});
  window.Open();
  list.SetFocus();
  EXPECT_EQ(list.SelectedIndex(), -1) << "the focus alone chooses nothing";
  EXPECT_NE(ErrorOf([&] { list.SelectedItem(); }), 0);
  PressKey(list, Qt::Key_Down);
  EXPECT_EQ(Log(), "k0 ") << "the first key goes to the first entry";
  PressKey(list, Qt::Key_Down);
  TypeInto(list, "g");
  EXPECT_EQ(Log(), "k1 k2 ");
  ClickEntry(list, 1);
  ClickEntry(list, 1);
  QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(list, 1));
  EXPECT_EQ(Log(), "k1 k1 k1 ") << "each click once, also on the selected one";
  EXPECT_EQ(list.SelectedItem().Text, "beta");
  QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, QPoint(20, Tree().viewport()->height() - 3));
  EXPECT_EQ(list.SelectedIndex(), 1) << "a click beside the entries does nothing";
  list.Select(0);
  list.SetSorted(true);
  list.EnsureVisible(2);
  list.Select(-1);
  EXPECT_EQ(list.SelectedIndex(), -1);
  list.Clear();
  EXPECT_EQ(Log(), QString());
  EXPECT_NE(ErrorOf([&] { list.Item(0); }), 0);
  EXPECT_NE(ErrorOf([&] { list.Select(0); }), 0);
}

TEST_F(ListViewTest, EnterAndADoubleClickChoose) {
  Fill({"alpha", "beta"});
  window.Open();
  list.SetFocus();
  PressKey(list, Qt::Key_Return);
  EXPECT_EQ(Log(), "ok ") << "without a selection the default button is meant";
  list.Select(1);
  PressKey(list, Qt::Key_Return);
  EXPECT_EQ(Log(), "! ");
  ClickEntry(list, 0);
  DoubleClickEntry(list, 0);
  EXPECT_TRUE(Log().endsWith(u"! "));
  DoubleClickBeside(list);
  EXPECT_EQ(Log(), "! ") << "also beside the entries";
  list.DblClick = nullptr;
  PressKey(list, Qt::Key_Return);
  EXPECT_EQ(Log(), "ok ") << "where choosing means nothing";
}

TEST_F(ListViewTest, SortsAsAPersonDoes) {
  Fill({"zebra", "Äpfel", "10", "apple", "Zebra", "2", "éclair", "Eagle", "APPLE"});
  EXPECT_EQ(Order(), "zebra Äpfel 10 apple Zebra 2 éclair Eagle APPLE") << "as added";
  list.Select(0);
  list.SetSortKey(0);
  list.SetSorted(true);
  EXPECT_EQ(Order(), "10 2 Äpfel apple APPLE Eagle éclair zebra Zebra");
  EXPECT_EQ(list.SelectedItem().Text, "zebra") << "the selection stays with its entry";
  Fill({"eager", "Apple"});
  EXPECT_EQ(Order(), "10 2 Äpfel apple APPLE Apple eager Eagle éclair zebra Zebra")
      << "later entries go behind their equals";
  list.SetSortAscending(false);
  list.SetSorted(true);
  EXPECT_EQ(Order(), "zebra Zebra éclair Eagle eager apple APPLE Apple Äpfel 2 10");
  list.SetSortKey(1);
  list.SetSubItem(2, 1, "2");
  list.SetSorted(true);
  EXPECT_EQ(list.Item(0).Text, "éclair");
  EXPECT_EQ(list.Item(0).SubItems, QStringList("2"));
}

TEST_F(ListViewTest, HeadersTellTheirColumnAndWidthsAreExact) {
  window.Open();
  EXPECT_EQ(list.ColumnWidth(0), 100);
  EXPECT_EQ(list.ColumnWidth(1), 28);
  EXPECT_EQ(Tree().header()->length(), Tree().viewport()->width()) << "the first has the room that is left";
  ClickHeader(list, 1);
  EXPECT_EQ(Log(), "#2 ");
  list.ClearColumns();
  list.AddColumn("New", 40);
  EXPECT_EQ(list.ColumnWidth(0), 40);
  EXPECT_EQ(Tree().columnCount(), 1);
}

TEST_F(ListViewTest, KeepsTheSelectionInView) {
  for (int i = 0; i < 200; ++i) Fill({"entry"});
  list.Select(150);
  window.Open();
  const auto in_view = [&] {
    const QRect entry = Tree().visualItemRect(Tree().topLevelItem(list.SelectedIndex()));
    return Tree().viewport()->rect().contains(entry.center());
  };
  EXPECT_TRUE(in_view());
  list.Select(3);
  EXPECT_TRUE(in_view());
  list.Place(0, 0, 4500, 900);
  EXPECT_TRUE(in_view());
}

TEST_F(ListViewTest, TipsTellWhatIsCut) {
  const QString long_text =
      "A text that is <b>much</b> too long for its column, also where it has all the room";
  list.Add({"a", long_text, {"1"}, {}, "First line\r\nsecond"});
  list.Add({"b", "short", {"a longer one"}, {}, {}});
  window.Open();
  const auto tip = [&](int row, int column) {
    const QRect rect = Tree().visualRect(Tree().model()->index(row, column));
    QHelpEvent event(QEvent::ToolTip, rect.center(), Tree().viewport()->mapToGlobal(rect.center()));
    QApplication::sendEvent(Tree().viewport(), &event);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText().simplified();
  };
  EXPECT_EQ(tip(0, 0), long_text + " First line second");
  EXPECT_EQ(tip(0, 1), "First line second");
  EXPECT_EQ(tip(1, 1), "a longer one");
  tip(1, 0);
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); })) << "a short text needs none";
}

}  // namespace
}  // namespace orv
