#include <gtest/gtest.h>

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
    card.SetName("Card");
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
  EXPECT_EQ(Widget().accessibleName(), "Card");
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
  MouseEvent down;
  image.MouseDown = [&](const MouseEvent& event) { down = event; };
  for (const int button : {1, 2, 4}) {
    PressAt(view, 26, 51, button);
    ReleaseAt(view, 26, 51, button);
    EXPECT_EQ(down.Button, button);
    EXPECT_EQ(down.X, (26 - 5 - 1) * 15) << "behind the frame's border";
    EXPECT_EQ(down.Y, (51 - 40 - 1) * 15);
  }
}

TEST_F(SurfaceViewTest, AnItemThatMovesUnderThePointerIsDragged) {
  QPointF grip;
  image.MouseDown = [&](const MouseEvent& event) { grip = {event.X, event.Y}; };
  image.MouseMove = [&](const MouseEvent& event) {
    if (event.Button != 1) return;
    image.SetLeft(image.Left() + event.X - grip.x());
    image.SetTop(image.Top() + event.Y - grip.y());
  };
  PressAt(view, 30, 60);
  struct Row {
    double x, y;
    int buttons;
    double left, top;
    const char* what;
  };
  for (const Row& row :
       {Row(40, 65, 1, 150, 75, "with the pointer"), Row(41, 65, 1, 165, 75, "a step each, and no drift"),
        Row(400, -300, 1, 370 * 15, -360 * 15, "out of the view"),
        Row(30, 60, 3, 370 * 15, -360 * 15, "two buttons are not the left one alone"),
        Row(30, 60, 1, 0, 0, "back"), Row(50, 70, 0, 0, 0, "no button")}) {
    DragTo(view, row.x, row.y, row.buttons);
    EXPECT_EQ(image.Left(), row.left) << row.what;
    EXPECT_EQ(image.Top(), row.top) << row.what;
  }
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
  struct Row {
    Qt::Key key;
    int held, code, shift;
    bool to_form;
  };
  const int shift = Qt::ShiftModifier, ctrl = Qt::ControlModifier;
  const Row rows[] = {Row(Qt::Key_PageUp, 0, 33, 0, false),
                      Row(Qt::Key_PageDown, 0, 34, 0, false),
                      Row(Qt::Key_End, shift, 35, 1, false),
                      Row(Qt::Key_Home, 0, 36, 0, false),
                      Row(Qt::Key_Left, Qt::KeypadModifier, 37, 0, false),
                      Row(Qt::Key_Up, shift | ctrl, 38, 3, false),
                      Row(Qt::Key_Right, ctrl, 39, 2, false),
                      Row(Qt::Key_Down, 0, 40, 0, false),
                      Row(Qt::Key_N, ctrl, 78, 2, true),
                      Row(Qt::Key_5, 0, 53, 0, true)};
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
  image.KeyDown = [&](const KeyEvent&) { log += '1'; };
  second.KeyDown = [&](const KeyEvent&) { log += '2'; };
  before.SetFocus();
  PressKey(before, Qt::Key_Tab);
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Tab, Qt::Key_Home, Qt::Key_Tab}) PressKey(view, key);
  EXPECT_TRUE(after.HasFocus());
  PressKey(after, Qt::Key_Backtab);
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Backtab, Qt::Key_Backtab}) PressKey(view, key);
  EXPECT_TRUE(before.HasFocus());
  second.SetFocus();
  PressKey(view, Qt::Key_Home);
  EXPECT_EQ(log, "1222");
  second.SetVisible(false);
  image.SetTabStop(false);
  card.SetVisible(false);
  PressKey(view, Qt::Key_Home);
  EXPECT_EQ(log, "1222") << "what is hidden gets no keys";
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
