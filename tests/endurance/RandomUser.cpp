// A user without aim: clicks, keys, drags and the wheel, each on a widget of the shown windows that is chosen
// by chance, and answers to all dialogs. The same seed makes the same walk. Ends with status 1 and the last
// actions if the program tells a run-time error that nobody caught or the file is damaged.
//
// usage: random_user DATABASE [--actions N] [--seed N]
#include <sqlite3.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <deque>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "base/App.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "forms/Form.h"
#include "icons/Icons.h"
#include "shell/Main.h"
#include "shell/frmMaster.h"
#include "state/Product.h"
#include "support/SharedState.h"

namespace orv {
namespace {

constexpr int kModalActions = 12;      // until a dialog is closed by its frame, or a menu
constexpr std::size_t kDeepest = 3;    // dialogs upon dialogs
constexpr int kShownActions = 30;      // of those before a fault
constexpr unsigned kMostSeconds = 60;  // for one action

// Kept for the handler of signals.
std::deque<std::string> last_actions;
int done = 0;

void TellActions() {
  for (const std::string& action : last_actions) std::fprintf(stderr, "  %s\n", action.c_str());
  std::fprintf(stderr, "fault at action %d\n", done);
}

void TellAndEnd(int signal) {
  std::fprintf(stderr, "ended by signal %d\n", signal);
  TellActions();
  ::_exit(2);
}

class RandomUser : public DialogResponder {
 public:
  RandomUser(unsigned seed, const QString& folder) : random_(seed), folder_(folder) {
    QObject::connect(&idle_, &QTimer::timeout, [this] { ActInMenu(); });
    idle_.start(0);
  }

  void Act() {
    QWidget* const widget = Choose();
    if (widget == nullptr) return;
    ++done;
    const QPoint at(Below(std::max(1, widget->width())), Below(std::max(1, widget->height())));
    const QPointer<QWidget> still = widget;
    ++nesting_;
    ::alarm(kMostSeconds);
    switch (Below(10)) {
      case 0:
      case 1:
      case 2:
        Log("click", widget);
        Click(widget, Modifiers(), at);
        break;
      case 3:
        Log("double click", widget);
        Click(widget, {}, at);
        if (still) QTest::mouseDClick(still, Qt::LeftButton, {}, at);
        break;
      case 4:
      case 5:
        Type(widget);
        break;
      case 6:
      case 7:
        Press(widget);
        break;
      case 8:
        Drag(widget, at);
        break;
      default:
        Log("wheel", widget);
        Wheel(widget, at);
    }
    QApplication::processEvents();
    ::alarm(--nesting_ > 0 ? kMostSeconds : 0);
  }

  Answer OnMsgBox(const QString& prompt, Icon, const QString& title, Buttons buttons) override {
    Log(QStringLiteral("box \"%1\": %2").arg(title, prompt.left(80)));
    if (prompt.startsWith(QStringLiteral("Run-time error"))) TellActions();
    if (buttons == Buttons::Ok) return Answer::Ok;
    // To edit a set where there is none is an error that ends the program, as it is to be.
    if (title == QStringLiteral("Delete Set") && frmMaster->cboSet.ListCount() < 2) return Answer::No;
    return Below(4) == 0 ? Answer::Yes : Answer::No;
  }
  QString OnInputBox(const QString&, const QString&, const QString& initial) override {
    return Below(2) == 0 ? initial : Text();
  }
  QString OnFile(const CommonDialog&, bool save) override {
    const QString names[] = {QStringLiteral("picture.bmp"), QStringLiteral("none.jpg"),
                             QStringLiteral("text.txt")};
    if (Below(3) == 0) return {};
    return folder_ + u'/' + (save ? QStringLiteral("saved.bmp") : names[Below(3)]);
  }
  bool OnColor(CommonDialog& dialog) override {
    dialog.Color = Below(0x1000000);
    return Below(2) == 0;
  }
  QString OnFolder(const QString&) override {
    return Below(2) == 0 ? QString() : folder_ + QStringLiteral("/out/");
  }
  // The dialog alone takes what the user does, as if it were modal.
  bool OnModal(Form& form) override {
    if (modal_.size() >= kDeepest) return true;
    modal_.push_back(form.Handle()->window());
    QApplication::processEvents();
    for (int i = 0; i < kModalActions && form.IsShown(); ++i) Act();
    modal_.pop_back();
    return true;
  }

 private:
  int Below(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)); }

  Qt::KeyboardModifiers Modifiers() {
    static const Qt::KeyboardModifiers kAny[] = {Qt::NoModifier,    Qt::NoModifier,      Qt::NoModifier,
                                                 Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
    return kAny[Below(6)];
  }

  // A menu deals out the events itself until it is closed, within the click that has opened it.
  void ActInMenu() {
    const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr || menu == menu_) return;
    Log("menu opens", menu);
    const QPointer<QMenu> former = std::exchange(menu_, menu);
    for (int i = 0; i < kModalActions && menu && menu->isVisible(); ++i) Act();
    if (menu) menu->close();
    menu_ = former;
  }

  // A list that hangs open takes all; else a window that is modal, or any.
  QWidget* Choose() {
    QWidget* window = QApplication::activePopupWidget();
    if (window == nullptr && !modal_.empty()) window = modal_.back();
    if (window == nullptr) {
      QWidgetList shown;
      for (QWidget* const each : QApplication::topLevelWidgets()) {
        if (each->isVisible() && each->isEnabled()) shown.append(each);
      }
      if (shown.isEmpty()) return nullptr;
      // They come in the order of their addresses.
      std::ranges::sort(shown, {}, [](const QWidget* each) {
        return std::tuple(each->windowTitle(), each->x(), each->y(), each->width(), each->height());
      });
      window = shown[Below(int(shown.size()))];
    }
    QWidgetList inside;
    for (QWidget* const each : window->findChildren<QWidget*>()) {
      if (each->isVisible() && each->isEnabled()) inside.append(each);
    }
    if (inside.isEmpty()) return window;
    QWidget* const focused = QApplication::focusWidget();
    if (focused != nullptr && Below(4) == 0) return focused;
    return inside[Below(int(inside.size()))];
  }

  QString Text() {
    static const QString kTexts[] = {QStringLiteral("x"),      QStringLiteral("Ward of the \u00C4lps"),
                                     QStringLiteral("'\"%_*"), QStringLiteral("-1"),
                                     QStringLiteral("99999"),  QStringLiteral("a/b\\c:d"),
                                     QStringLiteral(" "),      QStringLiteral("e\u0301\U0001F409")};
    return kTexts[Below(8)];
  }

  void Type(QWidget* widget) {
    const QString text = Text();
    Log(QStringLiteral("type %1").arg(text), widget);
    widget->setFocus();
    for (const QChar c : text) {
      QWidget* const target = QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : nullptr;
      if (target == nullptr) return;
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
      QApplication::sendEvent(target, &press);
    }
  }

  void Press(QWidget* widget) {
    static const Qt::Key kKeys[] = {
        Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_Space,
        Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,       Qt::Key_Down,    Qt::Key_Home,
        Qt::Key_End,    Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Delete,  Qt::Key_Backspace,
        Qt::Key_N,      Qt::Key_A,      Qt::Key_C,        Qt::Key_V,       Qt::Key_X,
        Qt::Key_Z,      Qt::Key_F6,     Qt::Key_F4,       Qt::Key_T,       Qt::Key_P};
    const Qt::Key key = kKeys[Below(25)];
    const Qt::KeyboardModifiers modifiers = Modifiers();
    Log(QStringLiteral("key %1 with %2").arg(int(key), 0, 16).arg(int(modifiers), 0, 16), widget);
    // To the window, for a button may be gone before all keys are up.
    const QPointer<QWindow> window = widget->window()->windowHandle();
    if (!window) return;
    if (widget->focusPolicy() != Qt::NoFocus) widget->setFocus();
    QTest::keyPress(window, key, modifiers);
    if (window) QTest::keyRelease(window, key, modifiers);
  }

  static void Click(QWidget* widget, Qt::KeyboardModifiers modifiers, const QPoint& at) {
    const QPointer<QWidget> still = widget;
    QTest::mousePress(widget, Qt::LeftButton, modifiers, at);
    if (still) QTest::mouseRelease(still, Qt::LeftButton, modifiers, at);
  }

  void Drag(QWidget* widget, const QPoint& from) {
    // Text that is dragged asks the desktop, which is not there.
    if (qobject_cast<QPlainTextEdit*>(widget->parentWidget()) != nullptr) return;
    Log("drag", widget);
    const QPointer<QWidget> still = widget;
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    for (int i = 0; i < 3 && still; ++i)
      QTest::mouseMove(widget, from + QPoint(Below(120) - 60, Below(120) - 60));
    if (still) QTest::mouseRelease(widget, Qt::LeftButton, {}, from + QPoint(Below(60) - 30, Below(60) - 30));
  }

  void Wheel(QWidget* widget, const QPoint& at) {
    QWheelEvent wheel(at, widget->mapToGlobal(at), {}, {0, Below(2) == 0 ? 120 : -120}, {}, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
  }

  void Log(const QString& what, const QWidget* widget = nullptr) {
    QString text = QString::number(done) + u' ' + what;
    if (widget != nullptr) {
      const auto* const button = qobject_cast<const QAbstractButton*>(widget);
      text += QStringLiteral(" on %1 %2 in \"%3\"")
                  .arg(QLatin1String(widget->metaObject()->className()),
                       button != nullptr ? button->text() : widget->accessibleName(),
                       widget->window()->windowTitle());
    }
    last_actions.push_back(text.toStdString());
    if (last_actions.size() > kShownActions) last_actions.pop_front();
  }

  std::mt19937 random_;
  QString folder_;
  std::vector<QWidget*> modal_;  // the last is in front
  QTimer idle_;
  QPointer<QMenu> menu_;  // in which the user is
  int nesting_ = 0;       // of actions within an action
};

bool IsSound(const QString& path) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr);
  std::string answer;
  const auto add = [](void* to, int, char** values, char**) {
    *static_cast<std::string*>(to) += values[0] != nullptr ? values[0] : "";
    return 0;
  };
  sqlite3_exec(database, "PRAGMA integrity_check", add, &answer, nullptr);
  sqlite3_exec(database, "PRAGMA foreign_key_check", add, &answer, nullptr);
  sqlite3_close(database);
  if (answer != "ok") std::fprintf(stderr, "the file: %s\n", answer.c_str());
  return answer == "ok";
}

void MakeFolder(const QString& folder, const QString& database) {
  qputenv("XDG_CONFIG_HOME", folder.toUtf8());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder);
  App::SetPath(folder);
  const QString copy = folder + QStringLiteral("/orv.mdb");
  QFile::copy(database, copy);
  QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
  QDir(folder).mkdir(QStringLiteral("out"));
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(Qt::darkGreen);
  picture.save(folder + QStringLiteral("/picture.bmp"));
  QFile text(folder + QStringLiteral("/text.txt"));
  if (text.open(QIODevice::WriteOnly)) text.write("no picture");
}

int Walk(const QCommandLineParser& options) {
  const QTemporaryDir folder;
  MakeFolder(folder.path(), options.positionalArguments().constFirst());
  RandomUser user(options.value("seed").toUInt(), folder.path());
  const DialogResponderScope scope(user);
  if (!Main()) {
    TellActions();  // the last is the box that says why
    return 1;
  }
  QElapsedTimer timer;
  timer.start();
  bool sound = true;
  while (sound && done < options.value("actions").toInt()) {
    const int before = done;
    for (int i = 0; i < 100; ++i) user.Act();
    if (done == before || !frmMaster.IsLoaded() || !frmMaster->IsShown()) {
      // The user has ended the program and starts it anew.
      ClearSharedState();
      if (!Main()) {
        TellActions();
        return 1;
      }
    }
    sound = IsSound(folder.path() + QStringLiteral("/orv.mdb"));
  }
  std::printf("%d actions of seed %s in %lld s, %s\n", done, qPrintable(options.value("seed")),
              static_cast<long long>(timer.elapsed() / 1000), sound ? "nothing lost" : "the file is damaged");
  if (!sound) TellActions();
  return sound ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  // Of what the offscreen platform can't do.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtWarningMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(text));
  });
  Application application(argc, argv, Application::Offscreen, orv::TheProgram());
  InitIcons();
  QCommandLineParser options;
  options.addOptions({{"actions", "How many.", "N", "1000"}, {"seed", "Of the walk.", "N", "1"}});
  if (!options.parse(QApplication::arguments()) || options.positionalArguments().size() != 1) {
    std::fprintf(stderr, "usage: %s DATABASE [--actions N] [--seed N]\n", argv[0]);
    return 1;
  }
  for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGBUS, SIGALRM}) std::signal(signal, TellAndEnd);
  return application.RunOnce([&] { return Walk(options); });
}
