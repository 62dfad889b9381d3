#include "forms/Form.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>

#include "forms/Application.h"
#include "forms/Controls.h"
#include "forms/Layout.h"
#include "forms/ListView.h"
#include "platform/forms/TestWindow.h"
#include "support/Widgets.h"

namespace orv {
namespace {

using Controls = std::initializer_list<Control*>;

QString log;
QString Log() {
  return std::exchange(log, QString());
}

// Two forms that tell of their lives.
class MainForm : public Form {
 public:
  MainForm() : Form(FormKind::Main) {
    panel.Place(0, 0, 6000, 600);
    DockTop(panel);
    SetClientSize(9000, 6000, true);
  }
  void Form_Load() override { log += "main+ "; }
  void Form_Unload() override { log += "main- "; }
  Panel panel{*this};
  CommandButton cmdExit{panel, "Exit"};
};
FormInstance<MainForm> frmMain;

class ChildForm : public Form {
 public:
  ChildForm() : Form(FormKind::Child) {
    SetClientSize(4500, 3000, true);
    SetCaption("Child");
  }
  ~ChildForm() override { log += "child~ "; }
  void Form_Load() override { log += "child+ "; }
  void Form_Unload() override { log += "child- "; }
  CommandButton cmdClose{*this, "Close"};
  TextBox txt{*this};
};
FormInstance<ChildForm> frmChild;

QWidget* FrameOf(const Form& form) {
  for (QWidget* widget = form.Handle(); widget != nullptr; widget = widget->parentWidget()) {
    if (qobject_cast<QMdiSubWindow*>(widget) != nullptr) return widget;
  }
  return form.Handle()->window();
}

class DialogForm : public TestWindow {
 public:
  DialogForm() {
    cmdOK.SetDefault(true);
    cmdCancel.SetCancel(true);
    cmdOK.Click = [this] { End("ok "); };
    cmdCancel.Click = [this] { End("cancel "); };
    cmdOther.Click = [this] { result += "other "; };
    SetCloser([this] { result += "unloaded "; });
  }
  void End(const char* how) {
    result += how;
    Hide();
  }
  TextBox txt{*this};
  TextBox txtLines{*this, TextBox::MultiLine};
  ComboBox cbo{*this, ComboBox::DropDownCombo};
  ComboBox list{*this};
  ListView lv{*this};
  CommandButton cmdOther{*this, "Other"};
  CommandButton cmdOK{*this, "OK"};
  CommandButton cmdCancel{*this, "Cancel"};
  QString result;
};

TEST(FormTest, AModalFormLastsUntilItIsHiddenOrClosed) {
  DialogForm form;
  QTimer::singleShot(0, [&] {
    EXPECT_EQ(QApplication::activeModalWidget(), form.Handle());
    ClickOn(form.cmdOK);
  });
  form.ShowModal();
  EXPECT_FALSE(form.IsShown());
  QTimer::singleShot(0, [&] { form.Handle()->window()->close(); });
  form.ShowModal();
  EXPECT_FALSE(form.IsShown());
  EXPECT_EQ(form.result, "ok ") << "closing by the frame hides a modal form only";
  form.Show();
  form.Handle()->window()->close();
  EXPECT_EQ(form.result, "ok unloaded ");
}

TEST(FormTest, KeysThatNoControlUsesReachTheForm) {
  DialogForm form;
  form.lv.AddColumn("A", 50);
  form.Open();
  for (const Control* control :
       Controls{&form.txt, &form.txtLines, &form.cbo, &form.list, &form.lv, &form.cmdOther}) {
    control->Handle()->setFocus();
    form.keys.clear();
    PressKey(*control, Qt::Key_N, Qt::ControlModifier);
    ASSERT_EQ(form.keys.size(), 1U) << control->Handle()->metaObject()->className();
    EXPECT_EQ(form.keys[0].KeyCode, kKeyN);
    EXPECT_EQ(form.keys[0].Shift, kCtrl);
  }
  form.keys.clear();
  TypeInto(form.txt, "n");
  EXPECT_TRUE(form.keys.empty()) << "a key that a field uses is its own";
}

TEST(FormTest, EnterAndEscapePressTheirButtons) {
  DialogForm form;
  const auto after = [&](const Control& control, int key) {
    form.result.clear();
    form.Open();
    control.Handle()->setFocus();
    PressKey(control, key);
    return form.result;
  };
  EXPECT_EQ(after(form.txt, Qt::Key_Return), "ok ");
  EXPECT_EQ(after(form.cbo, Qt::Key_Enter), "ok ");
  EXPECT_EQ(after(form.txtLines, Qt::Key_Return), QString()) << "a line end";
  EXPECT_EQ(after(form.cmdOther, Qt::Key_Return), "other ") << "the button with the focus";
  for (const Control* control : Controls{&form.txtLines, &form.lv, &form.cmdOther}) {
    EXPECT_EQ(after(*control, Qt::Key_Escape), "cancel ");
  }
  // Still held from before, when it has answered a message.
  form.result.clear();
  for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
    QKeyEvent held(QEvent::KeyPress, key, {}, QString(), true);
    QApplication::sendEvent(form.cmdOther.Handle(), &held);
  }
  EXPECT_EQ(form.result, QString());
  form.cmdOK.SetEnabled(false);
  EXPECT_EQ(after(form.txt, Qt::Key_Return), QString()) << "a disabled button";
  EXPECT_EQ(form.keys.back().KeyCode, kKeyReturn);
}

TEST(FormTest, ClosingAChildByItsFrameUnloadsItAndItsNextUseMakesItAnew) {
  log.clear();
  frmMain->Show();
  frmChild->Show();
  EXPECT_EQ(Log(), "main+ child+ ");
  auto* const frame = qobject_cast<QMdiSubWindow*>(FrameOf(*frmChild));
  ASSERT_NE(frame, nullptr) << "it lies in the main window";
  EXPECT_EQ(frame->windowTitle(), "Child");
  EXPECT_GE(frame->width(), 300);
  EXPECT_LE(frame->geometry().bottom(), frame->parentWidget()->height());
  frmChild->txt.SetText("typed");
  frame->close();
  EXPECT_EQ(Log(), "child- child~ ");
  EXPECT_FALSE(frmChild.IsLoaded());
  EXPECT_FALSE(frmChild.IsVisible());
  EXPECT_EQ(frmChild->txt.Text(), QString());
  EXPECT_FALSE(frmChild.IsVisible()) << "made, but not shown";
  frmChild->Show();
  frmChild->Hide();
  EXPECT_EQ(Log(), "child+ ");
  // The button's own handler ends its form, which still stands while a dialog runs within the handler.
  frmChild->Show();
  frmChild->cmdClose.Click = [] {
    frmChild.Unload();
    DialogForm dialog;
    QTimer::singleShot(0, [&] { ClickOn(dialog.cmdOK); });
    dialog.ShowModal();
    log += "handled ";
  };
  ClickOn(frmChild->cmdClose);
  EXPECT_EQ(Log(), "child- handled child~ ");
}

TEST(FormTest, AChildThatIsTooSmallScrolls) {
  frmMain->Show();
  frmChild->Show();
  QWidget* const frame = FrameOf(*frmChild);
  auto* const scroller = frame->findChild<QScrollArea*>();
  ASSERT_NE(scroller, nullptr);
  frame->resize(200, 120);
  EXPECT_EQ(frmChild->Handle()->size(), QSize(300, 200)) << "its least size";
  frame->resize(500, 400);
  EXPECT_TRUE(QTest::qWaitFor([&] { return frmChild->Handle()->size() == scroller->viewport()->size(); }));
  EXPECT_GT(frmChild->Handle()->width(), 480) << "and it grows with the window";
  EXPECT_EQ(frmChild->Width(), 500 * 15);
}

// As an editor of a set without records: nothing but its last button can be used until there is one.
class SparseForm : public Form {
 public:
  SparseForm() : Form(FormKind::Child) {
    BoxLayout column(*this, BoxLayout::Column);
    for (Control* control : Controls{&cmdFirst, &cmdAdd, &panel}) column.Add(*control);
    BoxLayout(panel, BoxLayout::Row, 0).Add(txt);
    SetMinimumSize(txt, 500, 150);
    cmdFirst.SetEnabled(false);
    panel.SetVisible(false);
  }
  void Form_KeyDown(const KeyEvent& key) override { keys.push_back(key); }
  std::vector<KeyEvent> keys;
  CommandButton cmdFirst{*this, "First"};
  CommandButton cmdAdd{*this, "Add"};
  Panel panel{*this};
  TextBox txt{panel};
};

TEST(FormTest, AChildWithAllButOneControlOutOfUseGetsTheKeysAndGrowsWithItsInside) {
  frmMain->Show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmMain->Handle()));
  frmMain->cmdExit.SetFocus();
  SparseForm sparse;
  sparse.Show();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_N, Qt::ControlModifier);
  ASSERT_FALSE(sparse.keys.empty());
  EXPECT_EQ(sparse.keys.back().KeyCode, kKeyN);
  QWidget* const frame = FrameOf(sparse);
  EXPECT_LT(frame->height(), 150);
  frame->move(300, 200);
  sparse.panel.SetVisible(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return frame->width() > 500 && frame->height() > 150; }));
  EXPECT_TRUE(frame->parentWidget()->rect().contains(frame->geometry())) << "no more than the area shows";
  // What the user makes smaller stays so.
  frame->resize(250, 150);
  sparse.panel.SetVisible(false);
  QCoreApplication::processEvents();
  sparse.panel.SetVisible(true);
  QCoreApplication::processEvents();
  EXPECT_EQ(frame->size(), QSize(250, 150));
}

// Higher than the screen, and wider than the main window.
class HighForm : public Form {
 public:
  HighForm() : Form(FormKind::Child) {
    BoxLayout(*this, BoxLayout::Column, 0).Add(txt);
    SetMinimumSize(txt, 450, 2000);
  }
  TextBox txt{*this};
};

TEST(FormTest, TheMainWindowGrowsToShowAChildThatThenFollowsIt) {
  frmMain->Show();
  QWidget& main = *frmMain->Handle();
  const QSize small(300, 200);
  main.move(200, 100);
  main.resize(small);
  HighForm high;
  high.ShowBehind();
  EXPECT_EQ(main.size(), small) << "not for one that works behind the others";
  high.Hide();
  high.Show();
  const QWidget& frame = *FrameOf(high);
  const auto& scroller = *frame.findChild<QScrollArea*>();
  const auto shows_all_across = [&] {
    QCoreApplication::processEvents();
    return frame.parentWidget()->rect().contains(frame.geometry()) &&
           scroller.verticalScrollBar()->isVisible() && !scroller.horizontalScrollBar()->isVisible();
  };
  EXPECT_TRUE(shows_all_across());
  EXPECT_TRUE(main.screen()->availableGeometry().contains(main.frameGeometry()));
  EXPECT_GT(main.height(), 700);
  // The user makes the window smaller and greater again.
  main.resize(small);
  QCoreApplication::processEvents();
  EXPECT_EQ(main.size(), small);
  EXPECT_TRUE(frame.parentWidget()->rect().contains(frame.geometry()));
  main.resize(700, 500);
  EXPECT_TRUE(shows_all_across());
  EXPECT_EQ(frame.height(), frame.parentWidget()->height());
}

TEST(FormTest, ClosingTheMainWindowUnloadsAllAndQuits) {
  frmMain->Show();
  frmChild->Show();
  Log();
  bool quit = false;
  const auto connection = QObject::connect(qApp, &QCoreApplication::aboutToQuit, [&] { quit = true; });
  QTimer::singleShot(0, [] { FrameOf(*frmMain)->close(); });
  QApplication::exec();
  QObject::disconnect(connection);
  EXPECT_TRUE(quit);
  EXPECT_EQ(Log(), "child- main- child~ ");
  EXPECT_FALSE(frmMain.IsLoaded());
  frmChild->Show();
  EXPECT_EQ(FrameOf(*frmChild), frmChild->Handle()) << "without a main window a window of its own";
  frmChild.Unload();
}

TEST(FormTest, PlaceAndStateAreReadBackAsSet) {
  TestWindow form(FormKind::Main);
  form.SetWidth(7500);
  form.SetHeight(4800);
  form.SetLeft(1500);
  form.SetTop(600);
  for (int pass = 0; pass < 2; ++pass) {
    EXPECT_EQ(QRect(form.Left(), form.Top(), form.Width(), form.Height()), QRect(1500, 600, 7500, 4800));
    form.Open();
  }
  form.SetWindowState(2);
  form.Hide();
  EXPECT_EQ(form.WindowState(), 2);
  form.SetWindowState(0);
  EXPECT_EQ(form.WindowState(), 0);
}

TEST(FormTest, ADialogStandsOverTheMiddleOfTheMainWindow) {
  TestWindow owner(FormKind::Main);
  owner.SetLeft(1500);
  owner.SetTop(1500);
  owner.Open();
  TestWindow dialog;
  dialog.SetClientSize(1500, 1500);
  dialog.Open();
  const QPoint apart = dialog.Handle()->geometry().center() - owner.Handle()->geometry().center();
  EXPECT_LE(apart.manhattanLength(), 8) << "but for the frame";
}

}  // namespace
}  // namespace orv
