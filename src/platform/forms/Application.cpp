#include "forms/Application.h"

#include <QApplication>
#include <QClipboard>
#include <QFont>
#include <QMimeData>
#include <QScreen>
#include <QStyle>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <utility>

#include "base/App.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "forms/Dialogs.h"
#include "forms/Lifetime.h"
#include "forms/inner/CarriedFaces.h"
#include "forms/inner/CommandKeys.h"
#include "forms/inner/Style.h"

namespace orv {
namespace {

std::optional<int> quit_status;
bool has_display = true;

// What a run-time error does that nobody catches. Every edit is stored already, so there is nothing to
// put in order.
[[noreturn]] void EndProgram(const RuntimeError& error) {
  static bool ending = false;
  if (std::exchange(ending, true)) std::_Exit(1);
  const QString text =
      QStringLiteral("Run-time error '%1':\n\n%2").arg(QString::number(error.Number()), error.Description());
  std::fprintf(stderr, "%s\n", qUtf8Printable(text));
  while (QGuiApplication::overrideCursor() != nullptr) QGuiApplication::restoreOverrideCursor();
  if (has_display || CurrentResponder() != nullptr) MsgBox(text, Icon::Critical, {});
  std::_Exit(1);
}

[[noreturn]] void EndProgramByCurrent() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    EndProgram(error);
  } catch (const std::bad_alloc&) {
    EndProgram(RuntimeError(kErrOutOfMemory));
  } catch (const std::exception& error) {
    EndProgram(RuntimeError(kErrInternal, QString::fromUtf8(error.what())));
  }
}

// While the application comes into being, the toolkit ends the process with a crash where it finds no plug-in
// for the platform, or the plug-in no display.
class PlatformWatch {
 public:
  PlatformWatch() { former_ = qInstallMessageHandler(Handle); }
  ~PlatformWatch() { qInstallMessageHandler(former_); }
  PlatformWatch(const PlatformWatch&) = delete;
  PlatformWatch& operator=(const PlatformWatch&) = delete;

 private:
  static void Handle(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) return former_(type, context, text);
    std::fprintf(
        stderr,
        "%s\n\nThe program can't open a window. Either there is no display, or the plug-in of Qt for it is "
        "missing: on Debian, that for X11 is in the package libqt6gui6, that for Wayland in qt6-wayland, and "
        "QT_QPA_PLATFORM=xcb in the environment asks for the former.\n",
        qUtf8Printable(text));
    std::_Exit(1);
  }

  static inline QtMessageHandler former_ = nullptr;
};

class DesktopApplication : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    const EventScope scope;
    try {
      return QApplication::notify(receiver, event);
    } catch (...) {
      EndProgramByCurrent();
    }
  }
};

}  // namespace

struct Application::Impl {
  Impl(int& argc, char** argv) : application(argc, argv) {}
  DesktopApplication application;
};

Application::Application(int& argc, char** argv, Display display, const Program& program) {
  App::SetRunning(program);
  has_display = display == Desktop;
  qunsetenv("FREETYPE_PROPERTIES");  // would draw the letters of a card by other rules
  if (display == Offscreen) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  {
    const PlatformWatch watch;
    impl_ = std::make_unique<Impl>(argc, argv);
  }
  quit_status.reset();
  QApplication::setApplicationName(program.name);
  QApplication::setDesktopFileName(program.desktop_id);
  QApplication::setQuitOnLastWindowClosed(false);
  try {
    CarryFaces(program.faces);
  } catch (const RuntimeError& error) {
    EndProgram(error);
  }
  new CommandKeys;
  QApplication::setStyle(NewStyle());
  QApplication::setFont(InterfaceFont());
}

Application::~Application() {
  UnloadAll();
}

int Application::Run(const std::function<void()>& main) {
  return RunOnce([&main] {
    main();
    return quit_status ? *quit_status : QApplication::exec();
  });
}

int Application::RunOnce(const std::function<int()>& action) {
  try {
    return action();
  } catch (...) {
    EndProgramByCurrent();
  }
}

void Application::DrawNow() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Application::HandleInput() {
  QApplication::processEvents();
}

bool Application::IsModal() {
  return QApplication::activeModalWidget() != nullptr;
}

void Application::Quit(int status) {
  if (!quit_status) quit_status = status;
  UnloadAll();
  // Asks no window any more.
  QApplication::exit(*quit_status);
}

namespace Screen {

int Width() {
  return QGuiApplication::primaryScreen()->geometry().width() * kTwipsPerPixel;
}
int Height() {
  return QGuiApplication::primaryScreen()->geometry().height() * kTwipsPerPixel;
}

}  // namespace Screen

WaitCursor::WaitCursor() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}
WaitCursor::~WaitCursor() {
  QGuiApplication::restoreOverrideCursor();
}

namespace Clipboard {

bool SetImage(const Picture& picture) {
  if (picture.IsEmpty()) return false;
  QGuiApplication::clipboard()->setImage(picture.Image());
  return true;
}

DataObject GetData() {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  return data == nullptr ? DataObject() : DataObjectFrom(*data);
}

bool HasData() {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  return data != nullptr && HasDataObject(*data);
}

bool HasText() {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  return data != nullptr && data->hasFormat(QStringLiteral("text/plain")) && !data->text().isEmpty();
}

}  // namespace Clipboard

}  // namespace orv
