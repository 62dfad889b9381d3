#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QWheelEvent>

#include "base/RuntimeError.h"
#include "forms/Controls.h"
#include "platform/forms/TestWindow.h"
#include "support/Widgets.h"

namespace orv {
namespace {

void TurnWheel(const Control& control, int delta) {
  const QPointF place(5, 5);
  QWheelEvent event(place, control.Handle()->mapToGlobal(place), {}, QPoint(0, delta), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(control.Handle(), &event);
}

class ComboBoxTest : public testing::Test {
 protected:
  ComboBoxTest() {
    for (ComboBox* box : {&list, &combo}) {
      box->Click = [this] { ++clicks; };
      box->Change = [this] { ++changes; };
      for (const char* text : {"one", "two", "three"}) {
        box->AddItem(QLatin1String(text));
        box->SetItemData(box->NewIndex(), 10 * (box->NewIndex() + 1));
      }
    }
    button.Place(0, 3000, 900, 375);
    combo.Place(0, 600, 1800, 315);
    list.Place(0, 0, 1800, 315);
    window.Open();
  }
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
  CommandButton button{window, QStringLiteral("Other")};
  int clicks = 0;
  int changes = 0;
};

TEST_F(ComboBoxTest, FillingChoosesNothing) {
  for (ComboBox* box : {&list, &combo}) {
    EXPECT_EQ(box->ListIndex(), -1);
    EXPECT_EQ(box->Text(), QString());
    EXPECT_EQ(box->ListCount(), 3);
    EXPECT_EQ(box->List(2), QStringLiteral("three"));
    EXPECT_EQ(box->ItemData(2), 30);
    EXPECT_THROW(box->ItemData(3), RuntimeError);
    EXPECT_THROW(box->SetItemData(-1, 1), RuntimeError);
    EXPECT_THROW(box->SetListIndex(3), RuntimeError);
  }
  Expect(0, 0, "no event by filling");
}

TEST_F(ComboBoxTest, CodeThatSetsTheIndexFiresClickAlsoForTheSame) {
  for (ComboBox* box : {&list, &combo}) {
    box->SetListIndex(1);
    EXPECT_EQ(box->Text(), QStringLiteral("two"));
    box->SetListIndex(1);
    Expect(2, 0, "twice the same");
    box->SetListIndex(-1);
    EXPECT_EQ(box->ListIndex(), -1);
    EXPECT_EQ(box->Text(), QString());
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
  TypeInto(list, QStringLiteral("o"));
  EXPECT_EQ(list.Text(), QStringLiteral("one"));
  Expect(1, 0, "by letter");
}

TEST_F(ComboBoxTest, FreeTextFiresChange) {
  combo.SetText(QStringLiteral("own"));
  combo.SetText(QStringLiteral("own"));
  EXPECT_EQ(combo.ListIndex(), -1);
  Expect(0, 1, "the same text is no change");
  TypeInto(combo, QStringLiteral("t"));
  EXPECT_EQ(combo.Text(), QStringLiteral("town")) << "typed before the start, nothing completed";
  Expect(0, 1, "a key");
  combo.SetSelStart(1);
  combo.SetSelLength(3);
  EXPECT_EQ(combo.SelStart(), 1);
  EXPECT_EQ(combo.SelLength(), 3);
  TypeInto(combo, QStringLiteral("wo"));
  EXPECT_EQ(combo.Text(), QStringLiteral("two"));
  Expect(0, 2, "two keys");
  PressKey(combo, Qt::Key_Return);
  button.SetFocus();
  Expect(0, 0, "neither Enter nor leaving chooses, though the text stands in the list");
  EXPECT_EQ(combo.ListCount(), 3);
  combo.SetText(QStringLiteral("line\nfeed"));
  EXPECT_EQ(combo.Text(), QStringLiteral("line\nfeed"));
}

TEST_F(ComboBoxTest, TheTextOfAListChoosesItsEntry) {
  list.SetText(QStringLiteral("three"));
  EXPECT_EQ(list.ListIndex(), 2);
  Expect(1, 0, "a choice");
  EXPECT_THROW(list.SetText(QStringLiteral("four")), RuntimeError);
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
}

TEST_F(ComboBoxTest, ClearingAndFillingAgain) {
  list.SetListIndex(2);
  combo.SetText(QStringLiteral("own"));
  clicks = changes = 0;
  for (ComboBox* box : {&list, &combo}) {
    box->Clear();
    EXPECT_EQ(box->ListCount(), 0);
    EXPECT_EQ(box->NewIndex(), -1);
    EXPECT_EQ(box->Text(), QString());
    box->AddItem(QStringLiteral("new"));
    EXPECT_EQ(box->ItemData(0), 0);
    EXPECT_EQ(box->ListIndex(), -1);
  }
  Expect(0, 0, "no event");
}

}  // namespace
}  // namespace orv
