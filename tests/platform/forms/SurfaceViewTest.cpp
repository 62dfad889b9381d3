#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QScrollArea>
#include <memory>

#include "forms/Controls.h"
#include "forms/Surface.h"
#include "platform/forms/TestWindow.h"
#include "support/Pixels.h"
#include "support/Widgets.h"

namespace orv {
namespace {

constexpr Colour kRed = Rgb(255, 0, 0);

// A card with a frame, and a picture in the frame that is larger than it.
class SurfaceViewTest : public testing::Test {
 protected:
  SurfaceViewTest() {
    card.Place(0, 0, 152, 256);
    card.SetName(QStringLiteral("Card"));
    frame.Place(5, 40, 139, 105);
    frame.SetBorderStyle(1);
    frame.SetScaleMode(ScaleMode::Twips);
    image.Place(0, 0, 3000, 3000);
    image.SetBackColor(kRed);
    image.SetTabStop(true);
    handle.Place(5, 145, 139, 3);
    window.Open();
  }
  QWidget& Widget() { return *view.Handle(); }
  Picture Grab() { return Picture(Widget().grab().toImage()); }

  TestWindow window;
  TextBox before{window};
  Surface card;
  Surface frame{&card};
  Surface image{&frame};
  Label handle{&card};
  SurfaceView view{window, card};
  TextBox after{window};
};

TEST_F(SurfaceViewTest, ShowsTheSurfacePixelByPixelAtItsSize) {
  EXPECT_EQ(Widget().size(), QSize(152, 256));
  EXPECT_EQ(Widget().accessibleName(), QStringLiteral("Card"));
  EXPECT_TRUE(Difference(Grab(), card.Render()).isEmpty());
  card.SetPixel(1, 1, kRed);
  EXPECT_EQ(PixelAt(Grab(), 1, 1), kRed);
  card.SetWidth(160);
  EXPECT_EQ(Widget().size(), QSize(160, 256));
  card.SetVisible(false);
  EXPECT_NE(PixelAt(Grab(), 20, 60), kRed) << "a hidden surface shows nothing";
  EXPECT_EQ(Widget().size(), QSize(160, 256));
}

TEST_F(SurfaceViewTest, MouseEventsAreInTwipsOfTheItem) {
  std::vector<MouseEvent> downs;
  image.MouseDown = [&](const MouseEvent& event) { downs.push_back(event); };
  for (const int button : {1, 2, 4}) {
    PressAt(view, 26, 51, button);
    ReleaseAt(view, 26, 51, button);
  }
  ASSERT_EQ(downs.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(downs[i].Button, 1 << i);
    EXPECT_EQ(downs[i].X, (26 - 5 - 1) * 15) << "behind the frame's border";
    EXPECT_EQ(downs[i].Y, (51 - 40 - 1) * 15);
  }
}

TEST_F(SurfaceViewTest, AnItemThatMovesUnderThePointerIsDragged) {
  double grip_x = 0;
  double grip_y = 0;
  image.MouseDown = [&](const MouseEvent& event) {
    grip_x = event.X;
    grip_y = event.Y;
  };
  image.MouseMove = [&](const MouseEvent& event) {
    if (event.Button != 1) return;
    image.SetLeft(image.Left() + event.X - grip_x);
    image.SetTop(image.Top() + event.Y - grip_y);
  };
  PressAt(view, 30, 60);
  DragTo(view, 40, 65);
  EXPECT_EQ(image.Left(), 150);
  EXPECT_EQ(image.Top(), 75);
  DragTo(view, 41, 65);
  EXPECT_EQ(image.Left(), 165) << "a step each, and no drift";
  DragTo(view, 400, -300);
  EXPECT_EQ(image.Left(), 370 * 15) << "the pointer may leave the view, and the picture with it";
  DragTo(view, 30, 60, 1 + 2);
  EXPECT_EQ(image.Left(), 370 * 15) << "two buttons are not the left one alone";
  DragTo(view, 30, 60);
  ReleaseAt(view, 30, 60);
  EXPECT_EQ(image.Left(), 0);
  EXPECT_EQ(image.Top(), 0);
  DragTo(view, 50, 70, 0);
  EXPECT_EQ(image.Left(), 0) << "without a button nothing is dragged";
}

TEST_F(SurfaceViewTest, AClickIsAReleaseOverTheSameItem) {
  int clicks = 0;
  image.Click = [&] { ++clicks; };
  PressAt(view, 30, 60);
  ReleaseAt(view, 35, 60);
  EXPECT_EQ(clicks, 1);
  PressAt(view, 30, 60);
  ReleaseAt(view, 30, 20);
  PressAt(view, 30, 60, 2);
  ReleaseAt(view, 30, 60, 2);
  EXPECT_EQ(clicks, 1);
  int moves = 0;
  handle.MouseMove = [&](const MouseEvent& event) { moves += event.Button; };
  PressAt(view, 30, 146);
  DragTo(view, 30, 90);
  ReleaseAt(view, 30, 90);
  EXPECT_EQ(moves, 1) << "the item keeps the mouse while the button is held";
}

TEST_F(SurfaceViewTest, KeysGoToTheItemWithTheFocus) {
  std::vector<KeyEvent> keys;
  image.KeyDown = [&](const KeyEvent& key) { keys.push_back(key); };
  before.SetFocus();
  PressAt(view, 30, 60);
  ReleaseAt(view, 30, 60);
  EXPECT_TRUE(view.HasFocus());
  struct Row {
    int key, held, code, shift;
    bool to_form;
  };
  const Row rows[] = {
      {Qt::Key_PageUp, 0, 33, 0, false},
      {Qt::Key_PageDown, 0, 34, 0, false},
      {Qt::Key_End, Qt::ShiftModifier, 35, 1, false},
      {Qt::Key_Home, 0, 36, 0, false},
      {Qt::Key_Left, Qt::KeypadModifier, 37, 0, false},
      {Qt::Key_Up, Qt::ShiftModifier | Qt::ControlModifier, 38, 3, false},
      {Qt::Key_Right, Qt::ControlModifier, 39, 2, false},
      {Qt::Key_Down, 0, 40, 0, false},
      {Qt::Key_N, Qt::ControlModifier, 78, 2, true},
      {Qt::Key_5, 0, 53, 0, true},
  };
  for (const Row& row : rows) {
    keys.clear();
    window.keys.clear();
    PressKey(view, row.key, row.held);
    ASSERT_FALSE(keys.empty()) << row.code;
    EXPECT_EQ(keys.back().KeyCode, row.code);
    EXPECT_EQ(keys.back().Shift, row.shift) << row.code;
    EXPECT_EQ(window.keys.size(), row.to_form ? 1U : 0U) << row.code;
    EXPECT_TRUE(view.HasFocus()) << row.code;
  }
}

TEST_F(SurfaceViewTest, TabGoesThroughWhatTakesTheFocus) {
  Surface second(&card);
  second.Place(5, 160, 20, 20);
  second.SetTabStop(true);
  QString log;
  image.KeyDown = [&](const KeyEvent&) { log += u'1'; };
  second.KeyDown = [&](const KeyEvent&) { log += u'2'; };
  const auto press_home = [&] { PressKey(view, Qt::Key_Home); };
  before.SetFocus();
  PressKey(before, Qt::Key_Tab);
  press_home();
  PressKey(view, Qt::Key_Tab);
  press_home();
  PressKey(view, Qt::Key_Tab);
  EXPECT_TRUE(after.HasFocus());
  PressKey(after, Qt::Key_Backtab);
  press_home();
  PressKey(view, Qt::Key_Backtab);
  PressKey(view, Qt::Key_Backtab);
  EXPECT_TRUE(before.HasFocus());
  second.SetFocus();
  press_home();
  EXPECT_EQ(log, QStringLiteral("1222"));
  second.SetVisible(false);
  image.SetTabStop(false);
  card.SetVisible(false);
  press_home();
  EXPECT_EQ(log, QStringLiteral("1222")) << "what is hidden gets no keys";
}

TEST_F(SurfaceViewTest, TheFocusFrameIsOnTheViewOnlyAndAroundWhatIsSeen) {
  image.SetFocus();
  EXPECT_EQ(Difference(Grab(), card.Render()), QRect(6, 41, 137, 103)) << "the inside of the frame";
  before.SetFocus();
  EXPECT_TRUE(Difference(Grab(), card.Render()).isEmpty());
}

TEST_F(SurfaceViewTest, OutlivesItsItemsAndItsSurface) {
  auto gone = std::make_unique<Surface>();
  gone->Place(0, 0, 20, 20);
  auto item = std::make_unique<Surface>(gone.get());
  item->Place(0, 0, 20, 20);
  item->SetTabStop(true);
  SurfaceView other(window, *gone);
  item->SetFocus();
  PressAt(other, 5, 5);
  item->MouseMove = [&](const MouseEvent&) { item.reset(); };
  DragTo(other, 6, 6);
  DragTo(other, 7, 7);
  ReleaseAt(other, 7, 7);
  PressKey(other, Qt::Key_Home);
  gone.reset();
  PressAt(other, 5, 5);
  ReleaseAt(other, 5, 5);
  PressKey(other, Qt::Key_Tab);
  other.Handle()->grab();
  {
    SurfaceView shorter(window, card);
    EXPECT_NE(card.Host(), nullptr);
  }
  EXPECT_EQ(card.Host(), nullptr);
  card.SetPixel(0, 0, kRed);
}

// A surface in an area that scrolls keeps the arrow keys for itself.
TEST_F(SurfaceViewTest, TheAreaAroundDoesNotScroll) {
  QScrollArea area;
  area.resize(100, 100);
  view.Handle()->setParent(nullptr);
  area.setWidget(view.Handle());
  area.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
  image.SetFocus();
  PressKey(view, Qt::Key_Down);
  PressKey(view, Qt::Key_PageDown);
  EXPECT_EQ(view.Handle()->y(), 0);
  area.takeWidget();
}

}  // namespace
}  // namespace orv
