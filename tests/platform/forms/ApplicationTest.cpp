#include "forms/Application.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QTimer>
#include <cstdio>

#include "base/RuntimeError.h"
#include "forms/Controls.h"
#include "forms/Dialogs.h"
#include "forms/Icons.h"
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
  CommandButton button(window, QStringLiteral("Fail"));
  button.Click = failure;
  window.Show();
  ClickOn(button);
}

class ApplicationDeathTest : public testing::Test {
 protected:
  ApplicationDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(ApplicationDeathTest, AnErrorThatNobodyCatchesIsShownAndEndsTheProgram) {
  const auto one = testing::ExitedWithCode(1);
  EXPECT_EXIT(FailInHandler([] { throw RuntimeError(kErrPathFileAccess); }), one,
              "box 1 <Run-time error '75':\n\nPath/File access error>");
  EXPECT_EXIT(FailInHandler([] { throw std::bad_alloc(); }), one,
              "box 1 <Run-time error '7':\n\nOut of memory>");
  EXPECT_EXIT(FailInHandler([] { throw std::runtime_error("broken"); }), one,
              "box 1 <Run-time error '51':\n\nbroken>");
  EXPECT_EXIT(
      {
        int argc = 0;
        (void)argc;
        QTimer::singleShot(0, [] { throw RuntimeError(kErrOverflow); });
        QApplication::exec();
      },
      one, "Run-time error '6':\n\nOverflow");
}

TEST(ApplicationTest, ThePicturesOfTheClipboard) {
  QImage image(3, 2, QImage::Format_RGB32);
  image.fill(Qt::red);
  EXPECT_FALSE(Clipboard::SetImage(Picture()));
  EXPECT_TRUE(Clipboard::SetImage(Picture(image)));
  EXPECT_EQ(Clipboard::GetImage().Width(), 3);
  EXPECT_EQ(Clipboard::GetImage().Image().pixelColor(2, 1), QColor(Qt::red));
}

TEST(ApplicationTest, TheWaitCursorLastsAsLongAsItsObject) {
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  {
    const WaitCursor outer;
    { const WaitCursor inner; }
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(ApplicationTest, TheScreenIsInTwips) {
  EXPECT_GT(Screen::Width(), 0);
  EXPECT_EQ(Screen::Width() % Screen::TwipsPerPixelX, 0);
  EXPECT_GT(Screen::Height(), 0);
  EXPECT_TRUE(NamedIcon(QStringLiteral("no such icon")).isNull());
}

}  // namespace
}  // namespace orv
