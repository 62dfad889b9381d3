#include "forms/Form.h"

#include <QApplication>
#include <QEventLoop>
#include <QLayout>
#include <QScopeGuard>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "base/Rounding.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "forms/inner/ChildFocus.h"
#include "forms/inner/FormWindow.h"
#include "forms/inner/Icons.h"
#include "forms/inner/Style.h"

namespace orv {
namespace {

// The area for children of the main window that stands, if any.
QPointer<QMdiArea>& ChildArea() {
  static QPointer<QMdiArea> area;
  return area;
}

bool NoChildIsShown() {
  const QList<QMdiSubWindow*> children =
      ChildArea() != nullptr ? ChildArea()->subWindowList() : QList<QMdiSubWindow*>();
  return std::ranges::none_of(children, [](const QMdiSubWindow* child) { return child->isVisible(); });
}

// What the area offers; as much as is wanted while it isn't on show.
QSize ChildRoom(const QSize& wanted) {
  return ChildArea() != nullptr && ChildArea()->isVisible() ? ChildArea()->viewport()->size() : wanted;
}

// The corner of a place that is moved into some room as far as it fits.
QPoint Within(const QRect& room, const QRect& place) {
  return {std::max(room.left(), std::min(place.left(), room.right() + 1 - place.width())),
          std::max(room.top(), std::min(place.top(), room.bottom() + 1 - place.height()))};
}

// The main window grows by what a child of this size lacks, as far as the screen allows, and stays on it.
void MakeRoom(const QSize& wanted) {
  if (ChildArea() == nullptr) return;
  QWidget& window = *ChildArea()->window();
  const QSize size = window.size();
  const QSize lacking = (wanted - ChildArea()->maximumViewportSize()).expandedTo(QSize(0, 0));
  const auto fixed = Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen;
  if (lacking.isNull() || !window.isVisible() || (window.windowState() & fixed) != 0) return;
  const QRect screen = window.screen()->availableGeometry();
  const QSize most = screen.size() - (window.frameGeometry().size() - size);
  window.resize((size + lacking).boundedTo(most).expandedTo(size));
  window.move(Within(screen, window.frameGeometry()));
}

int Pixels(int twips) {
  return static_cast<int>(RoundHalfEven(twips / double{kTwipsPerPixel}));
}

}  // namespace

struct Form::Impl {
  QPointer<ChildWindow> child;  // the frame of a child within the main window
  QVBoxLayout* rows = nullptr;  // of a main window: what is docked, then the area
  QEventLoop* loop = nullptr;   // while shown modally
  bool placed = false;          // the program has chosen its place
  bool sized = false;           // the program has chosen its size
  bool shown = false;           // has been shown before
  bool makes_room = false;      // of a child: the main window grows for it
  bool fills = false;           // of a child: it was opened alone and has all the area
  QSize wanted;                 // of a child: the largest size that its inside has asked for
  QSize fitted;                 // of a child: the size that it was last given by itself
};

Form::Form(FormKind kind, Places places) : kind_(kind), impl_(std::make_unique<Impl>()) {
  auto* const content = new FormWindow;
  content->form = this;
  if (places == Places::WithFont) {
    content->scale = PlaceScale();
  } else if (kind == FormKind::Dialog) {
    content->setFont(FontOfPlaces());
  }
  content->usable_beside_modal = kind == FormKind::Aside;
  content->closed = [this] { ClosedByFrame(); };
  content->inside_changed = [this] { FollowInside(); };
  content->claims = [this](const KeyEvent& key) { return Claims(key); };
  content->key_left = [this](const KeyEvent& key) { Form_KeyDown(key); };
  content->takes_drops = [this] { return bool{Drop}; };
  content->dropped = [this](const DataObject& data) { Drop(data); };
  if (kind == FormKind::Child && ChildArea() != nullptr) {
    impl_->child = new ChildWindow;
    impl_->child->closed = content->closed;
    impl_->child->area_changed = [this] { FollowArea(); };
    impl_->child->setWidget(new FormScroller(content));
    ChildArea()->addSubWindow(impl_->child);
    impl_->child->hide();
    QObject::connect(impl_->child, &QMdiSubWindow::windowStateChanged, content,
                     [this, content](Qt::WindowStates before, Qt::WindowStates now) {
                       const auto active = Qt::WindowActive;
                       const bool is_new = now.testFlag(active) && !before.testFlag(active);
                       // The toolkit also makes a hidden child the active one.
                       if (is_new && content->isVisible()) TakeFocus(*content);
                       if (now.testFlag(active) != before.testFlag(active)) Form_ActiveChanged();
                     });
  } else {
    content->setWindowFlags(kind == FormKind::Dialog ? Qt::Dialog : Qt::Window);
  }
  Adopt(content);
  if (kind == FormKind::Main) {
    impl_->rows = new QVBoxLayout(content);
    impl_->rows->setContentsMargins(0, 0, 0, 0);
    impl_->rows->setSpacing(0);
    auto* const area = new FormArea(content);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    impl_->rows->addWidget(area, 1);
    ChildArea() = area;
    new ChildFocus(*impl_->rows, *area);
  }
  Window()->setWindowIcon(NamedIcon(QStringLiteral("app")));
}

Form::~Form() {
  delete impl_->child;
}

QWidget* Form::Window() const {
  return impl_->child != nullptr ? impl_->child.data() : Handle();
}

QString Form::Caption() const {
  return Window()->windowTitle();
}
void Form::SetCaption(const QString& caption) {
  Window()->setWindowTitle(caption);
}

void Form::SetClientSize(int width, int height, bool resizable) {
  const QSize size = QSize(Pixels(width), Pixels(height)) * static_cast<FormWindow*>(Handle())->scale;
  const bool least = !resizable || kind_ == FormKind::Dialog || kind_ == FormKind::Child;
  Handle()->setMinimumSize(least ? size : QSize(0, 0));
  Handle()->setMaximumSize(resizable ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) : size);
  if (impl_->child == nullptr) Handle()->resize(size);
}

int Form::Width() const {
  return Window()->width() * kTwipsPerPixel;
}
int Form::Height() const {
  return Window()->height() * kTwipsPerPixel;
}
int Form::Left() const {
  return Window()->x() * kTwipsPerPixel;
}
int Form::Top() const {
  return Window()->y() * kTwipsPerPixel;
}
void Form::SetWidth(int twips) {
  impl_->sized = true;
  Window()->resize(Pixels(twips), Window()->height());
}
void Form::SetHeight(int twips) {
  impl_->sized = true;
  Window()->resize(Window()->width(), Pixels(twips));
}
void Form::SetLeft(int twips) {
  impl_->placed = true;
  Window()->move(Pixels(twips), Window()->y());
}
void Form::SetTop(int twips) {
  impl_->placed = true;
  Window()->move(Window()->x(), Pixels(twips));
}

int Form::WindowState() const {
  if (Window()->isMinimized()) return 1;
  return Window()->isMaximized() ? 2 : 0;
}

void Form::SetWindowState(int state) {
  const auto others = Window()->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
  Window()->setWindowState(others | (state == 1   ? Qt::WindowMinimized
                                     : state == 2 ? Qt::WindowMaximized
                                                  : Qt::WindowNoState));
}

bool Form::IsShown() const {
  return Handle() != nullptr && !Window()->isHidden();
}

bool Form::IsActive() const {
  return impl_->child != nullptr && ChildArea() != nullptr && ChildArea()->currentSubWindow() == impl_->child;
}

// A child takes the size of its inside, as far as there is room, and all of it if it is opened alone. Its
// frame forgets a size that it was given before it was shown in a visible area, so this comes when it is
// shown.
void Form::SizeChild() {
  if (impl_->child->isVisible() || impl_->sized) return;
  const bool first = !std::exchange(impl_->shown, true);
  impl_->fills = impl_->makes_room && NoChildIsShown();
  impl_->child->show();
  if (first) impl_->fitted = impl_->child->size();
  FollowInside();
  if (impl_->child->size() == impl_->fitted) FitChild(impl_->makes_room);
}

// A child whose inside needs more room than ever before, since controls were hidden till now, grows with it
// and stays within the area. What the user makes smaller later stays so.
void Form::FollowInside() {
  if (impl_->child == nullptr || !impl_->shown || impl_->sized || WindowState() != 0) return;
  const QSize wanted = impl_->child->sizeHint().expandedTo(impl_->wanted);
  if (wanted != std::exchange(impl_->wanted, wanted)) FitChild(impl_->makes_room);
}

// A child that has the size that it chose itself is squeezed and grows again with the area.
void Form::FollowArea() {
  if (!impl_->child->isVisible() || impl_->sized || WindowState() != 0) return;
  if (impl_->child->size() == impl_->fitted) FitChild(false);
}

void Form::FitChild(bool make_room) {
  ChildWindow& child = *impl_->child;
  const QSize before = child.size();
  const QSize least = before == impl_->fitted ? QSize(0, 0) : before;
  if (make_room) {
    MakeRoom(impl_->wanted);
    MakeRoom(child.WithBars(impl_->wanted, ChildRoom(impl_->wanted)));
  }
  const QSize room = ChildRoom(impl_->wanted);
  impl_->fitted = child.WithBars(impl_->wanted, room).boundedTo(room).expandedTo(least);
  if (impl_->fills) impl_->fitted = impl_->fitted.expandedTo(room);
  child.resize(impl_->fitted);
  if (child.size() != before) child.move(Within(QRect(QPoint(0, 0), room), child.geometry()));
}

// Before it is shown for the first time: a dialog stands over the middle of the window that it belongs to.
void Form::PlaceFirst() {
  if (impl_->child != nullptr) return SizeChild();
  if (std::exchange(impl_->shown, true)) return;
  if (kind_ != FormKind::Dialog || impl_->placed) return;
  const QWidget* owner = QApplication::activeWindow();
  if (owner == nullptr && ChildArea() != nullptr) owner = ChildArea()->window();
  QWidget* const window = Window();
  if (!window->testAttribute(Qt::WA_Resized)) window->adjustSize();
  QRect place = window->rect();
  const QRect screen = window->screen()->availableGeometry();
  place.moveCenter(owner != nullptr && owner->isVisible() ? owner->geometry().center() : screen.center());
  window->move(Within(screen, place));
}

void Form::Show() {
  impl_->makes_room = true;
  PlaceFirst();
  QWidget* const window = Window();
  const QWidget* const owner = QApplication::activeWindow();
  if (kind_ == FormKind::Dialog && owner != nullptr && owner != window && !window->isVisible()) {
    window->winId();
    window->windowHandle()->setTransientParent(owner->windowHandle());
  }
  window->show();
  if (impl_->child != nullptr) {
    if (ChildArea() != nullptr) ChildArea()->setActiveSubWindow(impl_->child);
  } else {
    window->raise();
    window->activateWindow();
  }
}

void Form::ShowBeside(const Form& other) {
  QWidget* const window = Window();
  if (!std::exchange(impl_->shown, true)) {
    const QRect beside = other.Window()->frameGeometry();
    const QRect screen = other.Window()->screen()->availableGeometry();
    QRect place(QPoint(beside.right() + 1, beside.top()), window->size());
    if (place.right() > screen.right() && beside.left() - place.width() >= screen.left())
      place.moveRight(beside.left() - 1);
    window->move(Within(screen, place));
  }
  window->setAttribute(Qt::WA_ShowWithoutActivating);
  window->show();
}

void Form::ComeToFront() {
  QWidget* const window = Window();
  window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  window->raise();
  window->activateWindow();
}

void Form::ShowBehind() {
  if (impl_->child == nullptr || ChildArea() == nullptr) return Show();
  if (impl_->child->isVisible()) return;
  QMdiSubWindow* const active = ChildArea()->activeSubWindow();
  PlaceFirst();
  impl_->child->stays_behind = true;
  impl_->child->show();
  impl_->child->lower();
  if (active != nullptr) ChildArea()->setActiveSubWindow(active);
}

void Form::ShowModal() {
  if (impl_->loop != nullptr) return;
  QEventLoop loop;
  impl_->loop = &loop;
  modal_ = true;
  const auto end = qScopeGuard([this] {
    Hide();
    if (Handle() != nullptr) Window()->setWindowModality(Qt::NonModal);
    modal_ = false;
    impl_->loop = nullptr;
  });
  if (Window()->isWindow()) Window()->setWindowModality(Qt::ApplicationModal);
  Show();
  DialogResponder* const responder = CurrentResponder();
  if (responder != nullptr && responder->OnModal(*this)) return;
  if (IsShown()) loop.exec(QEventLoop::DialogExec);
}

void Form::Hide() {
  if (Handle() != nullptr) Window()->hide();
  if (impl_->child != nullptr) Form_ActiveChanged();
  if (impl_->loop != nullptr) impl_->loop->quit();
}

void Form::DockTop(Control& control) {
  QWidget* const widget = control.Handle();
  widget->setFont(FontOfPlaces());
  widget->setFixedHeight(widget->testAttribute(Qt::WA_Resized) ? widget->height()
                                                               : widget->sizeHint().height());
  impl_->rows->insertWidget(impl_->rows->count() - 1, widget);
}

void Form::ClosedByFrame() {
  if (modal_) return Hide();
  // Copied, since unloading ends the form.
  const auto unload = unload_;
  if (kind_ == FormKind::Main) Application::Quit();
  if (unload) return unload();
  if (kind_ != FormKind::Main) Hide();
}

}  // namespace orv
