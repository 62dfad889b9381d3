#pragma once

#include <QTest>
#include <QWidget>
#include <vector>

#include "forms/Form.h"

namespace orv {

// A window to put controls in, which keeps the keys that they leave over.
class TestWindow : public Form {
 public:
  explicit TestWindow(FormKind kind = FormKind::Dialog) : Form(kind) {
    SetClientSize(6000, 4500, kind == FormKind::Main);
    SetCaption(QStringLiteral("Test"));
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

}  // namespace orv
