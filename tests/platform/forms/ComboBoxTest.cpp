#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "forms/Controls.h"
#include "platform/forms/TestWindow.h"
#include "support/Errors.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class ComboBoxTest : public testing::Test {
 protected:
  ComboBoxTest() {
    for (ComboBox* box : {&list, &combo}) {
      box->Click = [this] { ++clicks; };
      box->Change = [this] { ++changes; };
      for (const char* text : {"one", "two", "three"}) {
        box->AddItem(text);
        box->SetItemData(box->NewIndex(), 10 * (box->NewIndex() + 1));
      }
    }
    button.Place(0, 3000, 900, 375);
    combo.Place(0, 600, 1800, 315);
    list.Place(0, 0, 1800, 315);
    window.Open();
  }
  // The events since the last time.
  void Expect(int click, int change, const char* what) {
    EXPECT_EQ(clicks, click) << what;
    EXPECT_EQ(changes, change) << what;
    clicks = changes = 0;
  }
  // Opens the list and chooses with the keys.
  void ChooseBelow(ComboBox& box, int steps) {
    auto& widget = *static_cast<QComboBox*>(box.Handle());
    widget.showPopup();
    for (int i = 0; i < steps; ++i) QTest::keyClick(widget.view(), Qt::Key_Down);
    QTest::keyClick(widget.view(), Qt::Key_Return);
  }
  TestWindow window;
  ComboBox list{window};
  ComboBox combo{window, ComboBox::DropDownCombo};
  CommandButton button{window, "Other"};
  int clicks = 0;
  int changes = 0;
};

TEST_F(ComboBoxTest, FillingAndClearingChooseNothing) {
  for (ComboBox* box : {&list, &combo}) {
    EXPECT_EQ(box->ListIndex(), -1);
    EXPECT_EQ(box->Text(), "");
    EXPECT_EQ(box->List(2), "three");
    EXPECT_EQ(box->ItemData(2), 30);
    EXPECT_NE(ErrorOf([&] { (void)box->ItemData(3); }), 0);
    EXPECT_NE(ErrorOf([&] { box->SetItemData(-1, 1); }), 0);
    EXPECT_NE(ErrorOf([&] { box->SetListIndex(3); }), 0);
    box->SetListIndex(2);
    clicks = 0;
    box->Clear();
    EXPECT_EQ(box->ListCount(), 0);
    EXPECT_EQ(box->NewIndex(), -1);
    EXPECT_EQ(box->Text(), "");
    box->AddItem("new");
    EXPECT_EQ(box->ItemData(0), 0);
    EXPECT_EQ(box->ListIndex(), -1);
    Expect(0, 0, "no event");
  }
}

TEST_F(ComboBoxTest, CodeThatSetsTheIndexFiresClickAlsoForTheSame) {
  for (ComboBox* box : {&list, &combo}) {
    box->SetListIndex(1);
    EXPECT_EQ(box->Text(), "two");
    box->SetListIndex(1);
    Expect(2, 0, "twice the same");
    box->SetListIndex(-1);
    EXPECT_EQ(box->Text(), "");
    Expect(1, 0, "nothing chosen is a choice too");
  }
}

TEST_F(ComboBoxTest, TheUsersChoiceFiresClickOnceAlsoForTheSame) {
  for (ComboBox* box : {&list, &combo}) {
    box->SetListIndex(0);
    clicks = 0;
    ChooseBelow(*box, 1);
    EXPECT_EQ(box->ListIndex(), 1);
    Expect(1, 0, "from the open list");
    ChooseBelow(*box, 0);
    Expect(1, 0, "the same again");
    box->SetFocus();
    PressKey(*box, Qt::Key_Down);
    EXPECT_EQ(box->ListIndex(), 2);
    Expect(1, 0, "by key");
  }
  list.SetFocus();
  TypeInto(list, "o");
  EXPECT_EQ(list.Text(), "one");
  Expect(1, 0, "by letter");
}

TEST_F(ComboBoxTest, FreeTextFiresChange) {
  combo.SetText("own");
  combo.SetText("own");
  EXPECT_EQ(combo.ListIndex(), -1);
  Expect(0, 1, "the same text is no change");
  TypeInto(combo, "t");
  EXPECT_EQ(combo.Text(), "town") << "typed before the start, nothing completed";
  Expect(0, 1, "a key");
  combo.SetSelStart(1);
  combo.SetSelLength(3);
  EXPECT_EQ(combo.SelStart(), 1);
  EXPECT_EQ(combo.SelLength(), 3);
  TypeInto(combo, "wo");
  EXPECT_EQ(combo.Text(), "two");
  Expect(0, 2, "two keys");
  PressKey(combo, Qt::Key_Return);
  button.SetFocus();
  Expect(0, 0, "neither Enter nor leaving chooses, though the text stands in the list");
  EXPECT_EQ(combo.ListCount(), 3);
  combo.SetText("line\nfeed");
  EXPECT_EQ(combo.Text(), "line\nfeed");
}

TEST_F(ComboBoxTest, TheTextOfAListChoosesItsEntry) {
  list.SetText("three");
  EXPECT_EQ(list.ListIndex(), 2);
  Expect(1, 0, "a choice");
  EXPECT_NE(ErrorOf([&] { list.SetText("four"); }), 0);
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(ComboBoxTest, TheWheelLeavesAListWithoutTheFocusAlone) {
  list.SetListIndex(0);
  button.SetFocus();
  clicks = 0;
  TurnWheel(list, -120);
  EXPECT_EQ(list.ListIndex(), 0);
  Expect(0, 0, "passed over");
  list.SetFocus();
  TurnWheel(list, -120);
  EXPECT_EQ(list.ListIndex(), 1);
  Expect(1, 0, "meant");
  button.SetFocus();
  QScrollArea around;
  around.resize(100, 100);
  window.Handle()->setParent(nullptr);
  around.setWidget(window.Handle());
  around.show();
  TurnWheel(list, -120);
  EXPECT_GT(around.verticalScrollBar()->value(), 0) << "it is for the area around";
  around.takeWidget();
  Expect(0, 0, "scrolled");
}

TEST_F(ComboBoxTest, AKeyOfTheFormIsNoLetterAndClosesTheList) {
  for (ComboBox* box : {&list, &combo}) {
    auto& widget = *static_cast<QComboBox*>(box->Handle());
    box->SetListIndex(0);
    box->SetFocus();
    clicks = 0;
    for (const bool open : {false, true}) {
      window.keys.clear();
      if (open) widget.showPopup();
      QTest::keyClick(open ? static_cast<QWidget*>(widget.view()) : &widget, Qt::Key_T, Qt::ControlModifier);
      ASSERT_EQ(window.keys.size(), 1U) << open;
      EXPECT_EQ(window.keys[0].KeyCode, Qt::Key_T);
      EXPECT_FALSE(widget.view()->isVisible());
    }
    QTest::keyClick(&widget, Qt::Key_T, Qt::AltModifier);
    EXPECT_EQ(box->Text(), "one");
    Expect(0, 0, "nothing chosen and nothing typed");
  }
}

}  // namespace
}  // namespace orv
