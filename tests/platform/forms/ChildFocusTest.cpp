#include <gtest/gtest.h>

#include <QApplication>
#include <QMdiSubWindow>
#include <QTest>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/Layout.h"
#include "forms/Surface.h"
#include "forms/Toolbar.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class MainForm : public Form {
 public:
  MainForm() : Form(FormKind::Main) {
    bar.Add("exit", "Exit", {}, ToolbarStyle::Plain);
    panel.Place(0, 0, 6000, 600);
    list.Place(0, 0, 1500, 300);
    DockTop(bar);
    DockTop(panel);
    SetClientSize(15000, 12000, true);
  }
  Toolbar bar{*this};
  Panel panel{*this};
  ComboBox list{panel};
};

// As an editor: a button, a field in a frame, and a card with a label, a handle and a picture.
class Child : public Form {
 public:
  Child() : Form(FormKind::Child) {
    SetClientSize(6000, 4500, true);
    go.Place(0, 0, 600, 300);
    words.Place(1500, 0, 900, 300);
    off.Place(3000, 0, 900, 300);
    off.SetEnabled(false);
    frame.Place(0, 450, 3000, 1500);
    txt.Place(150, 300, 900, 300);
    number.Place(1200, 300, 600, 300);
    arrows.Place(1800, 300, 255, 300);
    view.Place(3300, 450, 1500, 1500);
    card.Place(0, 0, 100, 100);
    title.Place(0, 0, 100, 20);
    image.Place(0, 30, 100, 60);
    image.SetTabStop(true);
    image.KeyDown = [this](const KeyEvent&) { moved = true; };
  }
  void Form_KeyDown(const KeyEvent& key) override { has_heard = has_heard || key.KeyCode == kKeyN; }
  QMdiSubWindow* Window() const {
    return qobject_cast<QMdiSubWindow*>(Handle()->parentWidget()->parentWidget()->parentWidget());
  }
  bool has_heard = false;
  bool moved = false;
  CommandButton go{*this, "<<"};
  FormLabel words{*this, "Words"};
  TextBox off{*this};
  Frame frame{*this, "Frame"};
  TextBox txt{frame};
  TextBox number{frame};
  UpDown arrows{frame, number, 1, 9};
  Surface card;
  Label title{&card};
  Surface image{&card};
  SurfaceView view{*this, card};
};

class ChildFocusTest : public testing::Test {
 protected:
  ChildFocusTest() {
    main.Show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(main.Handle()));
    for (Child* child : {&one, &two}) child->Show();
  }
  static void Press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, held);
  }
  static bool HasKeys(const Child& child) {
    return child.Handle()->isAncestorOf(QApplication::focusWidget());
  }

  MainForm main;
  Child one, two;
};

TEST_F(ChildFocusTest, AClickAnywhereOnAChildGivesItTheKeyboard) {
  struct Row {
    const char* what;
    QWidget* on;
    QPoint place;
  };
  for (const Row& row :
       {Row{"a blank part", two.Handle(), {300, 250}}, Row{"words", two.words.Handle(), {5, 5}},
        Row{"a frame", two.frame.Handle(), {150, 80}}, Row{"a control out of use", two.off.Handle(), {5, 5}},
        Row{"arrows", two.arrows.Handle()->findChild<QWidget*>(), {5, 5}},
        Row{"a label of a card", two.view.Handle(), {5, 5}}, Row{"the title", two.Window(), {60, 8}}}) {
    for (Child* before : {&one, &two}) {
      SCOPED_TRACE(row.what);
      before->Show();
      main.list.SetFocus();
      two.has_heard = false;
      QTest::mouseClick(row.on, Qt::LeftButton, {}, row.place);
      EXPECT_TRUE(HasKeys(two));
      Press(Qt::Key_N, Qt::ControlModifier);
      EXPECT_TRUE(two.has_heard);
    }
  }
  two.txt.SetFocus();
  QTest::mouseClick(two.Handle(), Qt::LeftButton, {}, {300, 250});
  EXPECT_TRUE(two.txt.HasFocus()) << "where it was already";
  main.list.SetFocus();
  QTest::mouseClick(two.Handle(), Qt::LeftButton, {}, {300, 250});
  EXPECT_TRUE(two.txt.HasFocus()) << "where it was last";
  // As an editor without records: what had the keyboard last is out of use now.
  main.list.SetFocus();
  for (Control* control : std::initializer_list<Control*>{&two.frame, &two.go, &two.view})
    control->SetEnabled(false);
  for (const bool add : {true, false}) {
    two.off.SetEnabled(add);
    main.list.SetFocus();
    two.has_heard = false;
    QTest::mouseClick(two.Handle(), Qt::LeftButton, {}, {300, 250});
    Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(two.has_heard) << add;
  }
}

TEST_F(ChildFocusTest, OnlyAClickOnThePictureItselfLeadsToIt) {
  const auto click = [this](int y) { QTest::mouseClick(two.view.Handle(), Qt::LeftButton, {}, {5, y}); };
  two.txt.SetFocus();
  click(5);
  EXPECT_TRUE(two.txt.HasFocus());
  click(50);
  EXPECT_TRUE(two.view.HasFocus());
  main.list.SetFocus();
  click(5);
  EXPECT_TRUE(HasKeys(two));
  Press(Qt::Key_Left);
  EXPECT_FALSE(two.moved);
  one.Show();
  two.image.SetFocus();
  one.Show();
  click(5);
  Press(Qt::Key_Left);
  EXPECT_FALSE(two.moved) << "from another child";
}

TEST_F(ChildFocusTest, KeysLeadOutOfAChildAndBackAndFromChildToChild) {
  two.txt.SetFocus();
  Press(Qt::Key_F6);
  EXPECT_TRUE(main.list.HasFocus());
  Press(Qt::Key_F6);
  EXPECT_TRUE(main.bar.HasFocus());
  Press(Qt::Key_F6);
  EXPECT_TRUE(two.txt.HasFocus()) << "where it was";
  Press(Qt::Key_F6, Qt::ShiftModifier);
  EXPECT_TRUE(main.bar.HasFocus());
  for (const Qt::KeyboardModifiers held :
       {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier}) {
    two.txt.SetFocus();
    Press(Qt::Key_Tab, held);
    EXPECT_TRUE(HasKeys(one)) << "the next one";
  }
  two.txt.SetFocus();
  one.Hide();
  Press(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(two.txt.HasFocus()) << "the only one on show";
  one.Show();
  two.txt.SetFocus();
  Press(Qt::Key_F4, Qt::ControlModifier);
  EXPECT_FALSE(two.IsShown());
  EXPECT_TRUE(HasKeys(one));
  main.list.SetFocus();
  one.go.SetFocus();
  Press(Qt::Key_F4, Qt::ControlModifier);
  EXPECT_TRUE(main.list.HasFocus()) << "with the last one it goes to the panel";
  Press(Qt::Key_F6);
  EXPECT_TRUE(main.bar.HasFocus());
  Press(Qt::Key_F6);
  EXPECT_TRUE(main.list.HasFocus()) << "without a child there are two parts";
}

TEST_F(ChildFocusTest, WhatIsShownBehindIsNotOnTheWay) {
  Child behind;
  behind.ShowBehind();
  for (int turns = 0; turns < 3; ++turns) {
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(HasKeys(turns % 2 == 0 ? one : two)) << turns;
  }
  one.Hide();
  two.Hide();
  EXPECT_FALSE(HasKeys(behind));
}

}  // namespace
}  // namespace orv
