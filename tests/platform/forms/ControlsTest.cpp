#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QToolButton>

#include "forms/Controls.h"
#include "forms/Toolbar.h"
#include "platform/forms/TestWindow.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class ControlsTest : public testing::Test {
 protected:
  TestWindow window;
};

TEST_F(ControlsTest, PlacesAreTwipsAndStatesAreTheControlsOwn) {
  Panel panel(window);
  CommandButton button(panel, "B");
  button.Place(3360, 405, 615, 262);
  EXPECT_EQ(button.Handle()->geometry(), QRect(224, 27, 41, 17));
  panel.SetEnabled(false);
  panel.SetVisible(false);
  EXPECT_TRUE(button.Enabled());
  EXPECT_TRUE(button.Visible()) << "although neither its panel nor its form is shown";
  button.SetVisible(false);
  button.SetEnabled(false);
  panel.SetEnabled(true);
  panel.SetVisible(true);
  window.Open();
  EXPECT_FALSE(button.Enabled());
  EXPECT_FALSE(button.Visible());
}

TEST_F(ControlsTest, CheckBoxesAndOptionsFireOnAChangeOnly) {
  CheckBox check(window, "&Check");
  OptionButton first(window, "First");
  OptionButton second(window, "Second");
  Panel panel(window);
  OptionButton apart(panel, "Apart");
  QString log;
  check.Click = [&] { log += QString("c%1 ").arg(check.Value()); };
  first.Click = [&] { log += "1 "; };
  second.Click = [&] { log += "2 "; };
  window.Open();
  check.SetValue(1);
  check.SetValue(1);
  ClickOn(check);
  first.SetValue(true);
  first.SetValue(true);
  apart.SetValue(true);
  ClickOn(second);
  ClickOn(second);
  EXPECT_EQ(log, "c1 c0 1 2 ");
  EXPECT_FALSE(first.Value());
  EXPECT_TRUE(apart.Value()) << "options belong together by their container";
  second.SetValue(false);
  EXPECT_FALSE(second.Value());
}

TEST_F(ControlsTest, ALabelNamesItsFieldAndLeadsToIt) {
  FormLabel label(window, "Art&ist && Co:");
  CommandButton button(window, "Other");
  TextBox box(window);
  label.SetBuddy(box);
  EXPECT_EQ(box.Handle()->accessibleName(), "Artist & Co");
  window.Open();
  button.SetFocus();
  QTest::keyClick(button.Handle(), Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(box.HasFocus());
  label.SetCaption("&Name:");
  EXPECT_EQ(box.Handle()->accessibleName(), "Name");
}

TEST_F(ControlsTest, TheFocusIsGotOnceForEachVisit) {
  TextBox box(window);
  TextBox other(window);
  int got = 0;
  box.GotFocus = [&] {
    ++got;
    box.SetSelStart(0);
    box.SetSelLength(3);
  };
  box.SetText("text");
  window.Open();
  EXPECT_EQ(got, 1) << "the first field, with its form";
  EXPECT_EQ(box.SelLength(), 3) << "the handler has the last word on the selection";
  TestWindow above;
  above.Open();
  above.Hide();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.Handle()));
  EXPECT_EQ(got, 1) << "given back by another window";
  other.SetFocus();
  PressKey(other, Qt::Key_Backtab);
  EXPECT_EQ(got, 2);
  EXPECT_EQ(box.SelLength(), 3);
}

TEST_F(ControlsTest, ArrowsKeysAndTheWheelStepANumberWithinItsLimits) {
  TextBox field(window);
  UpDown arrows(window, field, 1, 99);
  TextBox other(window);
  field.Place(0, 0, 600, 285);
  arrows.Place(600, 0, 255, 285);
  other.Place(0, 600, 600, 285);
  int changes = 0;
  arrows.Change = [&] { ++changes; };
  window.Open();
  const auto expect = [&](int value, const char* text, int fired) {
    EXPECT_EQ(arrows.Value(), value);
    EXPECT_EQ(field.Text(), QLatin1String(text));
    EXPECT_EQ(changes, fired) << text;
    changes = 0;
  };
  arrows.SetValue(120);
  expect(99, "99", 1);
  field.SetText("5");
  expect(99, "5", 0);
  arrows.SetValue(99);
  expect(99, "99", 0);
  const auto buttons = arrows.Handle()->findChildren<QAbstractButton*>();
  ASSERT_EQ(buttons.size(), 2);
  QTest::mouseClick(buttons[0], Qt::LeftButton);
  expect(99, "99", 0);
  QTest::mouseClick(buttons[1], Qt::LeftButton);
  expect(98, "98", 1);
  field.SetFocus();
  PressKey(field, Qt::Key_Down);
  PressKey(field, Qt::Key_Up);
  expect(98, "98", 2);
  TurnWheel(field, -60);
  expect(98, "98", 0);
  TurnWheel(field, -60);
  expect(97, "97", 1);
  Retype(field, "42");
  expect(42, "42", 2);  // 4, then 42
  Retype(field, "0");
  expect(42, "0", 0);
  Retype(field, "x");
  other.SetFocus();
  expect(42, "42", 0);
  TurnWheel(field, -120);
  expect(42, "42", 0);
  EXPECT_TRUE(window.keys.empty()) << "the field has used them";
}

TEST_F(ControlsTest, ToolbarButtonsAreNamedAndReachedByTheKeyboard) {
  Toolbar bar(window);
  TextBox box(window);
  bar.Place(0, 0, 4500, 450);
  box.Place(0, 600, 1500, 285);
  QString log;
  bar.ButtonClick = [&](const QString& key) { log += key + QString("%1 ").arg(bar.Value(3)); };
  bar.Add("a", "Leave", {}, ToolbarStyle::Plain);
  bar.Add({}, {}, {}, ToolbarStyle::Separator);
  bar.Add("b", "Cards", "All cards", ToolbarStyle::Check);
  window.Open();
  const auto find = [&](const char* name) -> QToolButton* {
    for (QToolButton* const button : bar.Handle()->findChildren<QToolButton*>()) {
      if (button->accessibleName() == name) return button;
    }
    return nullptr;
  };
  QToolButton* const leave = find("Leave");
  QToolButton* const cards = find("Cards");
  ASSERT_TRUE(leave != nullptr && cards != nullptr);
  EXPECT_EQ(leave->toolTip(), QString());
  EXPECT_EQ(cards->toolTip(), "All cards");
  QTest::mouseClick(cards, Qt::LeftButton);
  EXPECT_EQ(bar.Value(3), 1) << "it has changed its state by itself";
  bar.SetValue(3, 0);
  EXPECT_EQ(bar.Value(3), 0);
  box.SetFocus();
  PressKey(box, Qt::Key_Backtab);
  EXPECT_TRUE(cards->hasFocus()) << "the keyboard gets there";
  QTest::keyClick(cards, Qt::Key_Space);
  QTest::keyClick(cards, Qt::Key_Return);
  QTest::mouseClick(leave, Qt::LeftButton);
  EXPECT_EQ(log, "b1 b1 b0 a0 ");
  EXPECT_ANY_THROW(bar.Value(4));
  EXPECT_ANY_THROW(bar.SetValue(0, 1));
}

}  // namespace
}  // namespace orv
