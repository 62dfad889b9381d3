#include "forms/Application.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QTimer>
#include <cstdio>

#include "base/RuntimeError.h"
#include "forms/Controls.h"
#include "forms/Dialogs.h"
#include "platform/forms/TestWindow.h"
#include "support/DialogScript.h"
#include "support/Widgets.h"

namespace orv {
namespace {

// Shows the box of a run-time error to the test outside.
class Speaker : public DialogScript {
 public:
  Answer OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) override {
    std::fprintf(stderr, "box %d <%s>\n", static_cast<int>(icon), qUtf8Printable(prompt));
    return DialogScript::OnMsgBox(prompt, icon, title, buttons);
  }
};

void FailInHandler(const std::function<void()>& failure) {
  Speaker speaker;
  const DialogResponderScope scope(speaker);
  TestWindow window;
  CommandButton button(window, "Fail");
  button.Click = failure;
  window.Show();
  ClickOn(button);
}

void FailInTimer() {
  QTimer::singleShot(0, [] { throw RuntimeError(kErrOverflow); });
  QApplication::exec();
}

TEST(ApplicationDeathTest, AnErrorThatNobodyCatchesIsShownAndEndsTheProgram) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  const auto one = testing::ExitedWithCode(1);
  EXPECT_EXIT(FailInHandler([] { throw RuntimeError(kErrPathFileAccess); }), one,
              "box 1 <Run-time error '75':\n\nPath/File access error>");
  EXPECT_EXIT(FailInHandler([] { throw std::bad_alloc(); }), one, "Run-time error '7':\n\nOut of memory>");
  EXPECT_EXIT(FailInHandler([] { throw std::runtime_error("broken"); }), one, "error '51':\n\nbroken>");
  EXPECT_EXIT(FailInTimer(), one, "Run-time error '6':\n\nOverflow");
}

TEST(ApplicationTest, ThePicturesOfTheClipboard) {
  QImage image(3, 2, QImage::Format_RGB32);
  image.fill(Qt::red);
  EXPECT_FALSE(Clipboard::SetImage(Picture()));
  EXPECT_TRUE(Clipboard::SetImage(Picture(image)));
  EXPECT_EQ(QGuiApplication::clipboard()->image().convertToFormat(image.format()), image);
}

TEST(ApplicationTest, TheWaitCursorLastsAsLongAsItsObject) {
  {
    const WaitCursor outer;
    {
      const WaitCursor inner;
    }
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace orv
