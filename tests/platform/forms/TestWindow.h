#pragma once

#include <qtestspontaneevent.h>
#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <vector>

#include "forms/Control.h"
#include "forms/Form.h"

namespace orv {

// A window to put controls in, which keeps the keys that they leave over.
class TestWindow : public Form {
 public:
  explicit TestWindow(FormKind kind = FormKind::Dialog) : Form(kind) {
    SetClientSize(6000, 4500, kind == FormKind::Main);
    SetCaption("Test");
  }
  // Shows it with the focus of the desktop.
  void Open() {
    Show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Handle()->window()));
  }
  void Form_KeyDown(const KeyEvent& key) override {
    const bool alone = key.KeyCode >= 16 && key.KeyCode <= 18;  // Shift, Ctrl or Alt
    if (!alone) keys.push_back(key);
  }
  std::vector<KeyEvent> keys;
};

// Turns the mouse wheel over a control; a notch is 120, away from the user.
inline void TurnWheel(const Control& control, int angle) {
  const QPointF place(5, 5);
  QWheelEvent event(place, control.Handle()->mapToGlobal(place), {}, QPoint(0, angle), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  // As from the desktop, which may give the focus to what is under the pointer.
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(control.Handle(), &event);
}

}  // namespace orv
