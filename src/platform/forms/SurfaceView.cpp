#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/Rounding.h"
#include "forms/Controls.h"
#include "forms/Surface.h"
#include "forms/inner/Keys.h"
#include "forms/inner/Menus.h"

namespace orv {
namespace {

int ButtonOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return 1;
    case Qt::RightButton:
      return 2;
    case Qt::MiddleButton:
      return 4;
    default:
      return 0;
  }
}

int SumOf(Qt::MouseButtons held) {
  int sum = 0;
  for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    if (held.testFlag(button)) sum += ButtonOf(button);
  }
  return sum;
}

// The keys that would scroll an area around the view.
bool Moves(int key_code) {
  return key_code >= kKeyPageUp && key_code <= kKeyDown;
}

bool Shown(const SurfaceItem* item) {
  for (; item != nullptr; item = item->Container()) {
    if (!item->Visible()) return false;
  }
  return true;
}

constexpr int kWheelStep = 120;  // eighths of a degree

// The nearest item, from one on outwards, with a handler for an event.
template <class E>
SurfaceItem* Handling(SurfaceItem* item, E SurfaceItem::* event) {
  while (item != nullptr && !(item->*event)) item = item->Container();
  return item;
}

void AddStops(Surface& surface, std::vector<Surface*>& stops) {
  if (!surface.Visible()) return;
  if (surface.TabStop()) stops.push_back(&surface);
  for (SurfaceItem* const item : surface.Items()) {
    if (auto* const child = dynamic_cast<Surface*>(item)) AddStops(*child, stops);
  }
}

bool HasNoSize(const SurfaceItem& item) {
  return item.Width() < 1 || item.Height() < 1;
}

// What a press on an item gives the focus to: the item itself, or an empty picture that lies on it.
Surface* StopUnder(SurfaceItem* pressed) {
  auto* const surface = dynamic_cast<Surface*>(pressed);
  if (surface == nullptr || surface->TabStop()) return surface;
  for (SurfaceItem* const item : surface->Items()) {
    auto* const child = dynamic_cast<Surface*>(item);
    if (child != nullptr && child->TabStop() && child->Visible() && HasNoSize(*child)) return child;
  }
  return nullptr;
}

}  // namespace

class SurfaceView::Widget : public QWidget, public SurfaceHost {
 public:
  Widget(QWidget* parent, Surface& surface) : QWidget(parent), surface_(&surface) {
    surface.SetHost(this);
    setMouseTracking(true);
    setAcceptDrops(true);
    turned_.setSingleShot(true);
    connect(&turned_, &QTimer::timeout, this, [this] { RaiseWheel(); });
    Follow();
  }

  ~Widget() override {
    if (surface_ != nullptr && surface_->Host() == this) surface_->SetHost(nullptr);
  }

  void SurfaceChanged() override {
    Follow();
    update();
  }
  void PixelsChanged() override { update(); }
  void RefreshNow() override { repaint(); }
  void FocusItem(SurfaceItem* item) override {
    focused_ = item;
    Follow();
    setFocus(Qt::OtherFocusReason);
    update();
  }
  bool HasFocusOn(const SurfaceItem* item) const override {
    return item == focused_ && window()->focusWidget() == this;
  }
  void SurfaceGone() override {
    surface_ = nullptr;
    focused_ = pressed_ = wheeled_ = nullptr;
    update();
  }
  void ItemGone(SurfaceItem* item) override {
    if (focused_ == item) focused_ = nullptr;
    if (pressed_ == item) pressed_ = nullptr;
    if (wheeled_ == item) wheeled_ = nullptr;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override { AcceptDrag(event); }
  void dragMoveEvent(QDragMoveEvent* event) override { AcceptDrag(event); }
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent*) override { update(); }
  bool focusNextPrevChild(bool next) override;
  void showEvent(QShowEvent*) override { Follow(); }

 private:
  // The name and the size of the surface, and whether there is anything on it for the keyboard.
  void Follow() {
    if (surface_ == nullptr) return;
    if (accessibleName() != surface_->Name()) setAccessibleName(surface_->Name());
    const QSize size(static_cast<int>(std::lround(surface_->width_)),
                     static_cast<int>(std::lround(surface_->height_)));
    if (size != minimumSize() || size != maximumSize()) setFixedSize(size);
    const auto policy = Stops().empty() && focused_ == nullptr ? Qt::NoFocus : Qt::TabFocus;
    if (policy != focusPolicy()) setFocusPolicy(policy);
  }

  std::vector<Surface*> Stops() const {
    std::vector<Surface*> stops;
    if (surface_ != nullptr) AddStops(*surface_, stops);
    return stops;
  }

  SurfaceItem* ItemAt(const QPointF& place) const {
    SurfaceItem* const root = surface_;
    return root == nullptr ? nullptr : root->ItemAt(place.x(), place.y());
  }

  // The corner of an item now, in pixels.
  static QPointF CornerOf(const SurfaceItem* item) {
    QPointF corner;
    for (; item->Container() != nullptr; item = item->Container()) {
      const int border = item->Container()->BorderStyle();
      corner += QPointF(item->left_ + border, item->top_ + border);
    }
    return corner;
  }

  // What is to be seen of an item inside the surfaces that it lies on.
  static QRectF SeenOf(const SurfaceItem* item) {
    QRectF seen(CornerOf(item), QSizeF(item->width_, item->height_));
    for (const Surface* around = item->Container(); around != nullptr; around = around->Container()) {
      const int border = around->BorderStyle();
      const QRectF outer(CornerOf(around), QSizeF(around->width_, around->height_));
      seen &= outer.adjusted(border, border, -border, -border);
    }
    return seen;
  }

  static orv::MouseEvent EventFor(const SurfaceItem* item, const QMouseEvent& event, int button) {
    const QPointF place = TwipsIn(item, event.position());
    return {button, ShiftStateFrom(event), place.x(), place.y()};
  }

  static QPointF TwipsIn(const SurfaceItem* item, const QPointF& place) {
    return (place - CornerOf(item)) * kTwipsPerPixel;
  }
  void AcceptDrag(QDropEvent* event);
  void RaiseWheel();
  void PaintFocusFrame(QPainter& painter) const;

  Surface* surface_;
  SurfaceItem* focused_ = nullptr;
  SurfaceItem* pressed_ = nullptr;  // keeps the mouse while a button is held
  // The turns of a wheel that wait for a moment when nothing else does: what is done for them is done once.
  SurfaceItem* wheeled_ = nullptr;
  QTimer turned_;
  int turn_ = 0;  // eighths of a degree
  int turn_shift_ = 0;
  QPointF turn_place_;
};

void SurfaceView::Widget::paintEvent(QPaintEvent*) {
  if (surface_ == nullptr || !surface_->Visible()) return;
  QPainter painter(this);
  const double ratio = devicePixelRatioF();
  painter.setRenderHint(QPainter::SmoothPixmapTransform, ratio != std::floor(ratio));
  const orv::Picture picture = surface_->Render();
  painter.drawImage(QRectF(0, 0, picture.Width(), picture.Height()), picture.Image());
  if (hasFocus() && focused_ != nullptr && Shown(focused_)) PaintFocusFrame(painter);
}

// Dots of black on white, to be seen on every picture.
void SurfaceView::Widget::PaintFocusFrame(QPainter& painter) const {
  const bool empty = HasNoSize(*focused_) && focused_->Container() != nullptr;
  const QRectF frame = SeenOf(empty ? focused_->Container() : focused_).adjusted(0.5, 0.5, -0.5, -0.5);
  if (frame.isEmpty()) return;
  painter.setPen(QPen(Qt::white, 1));
  painter.drawRect(frame);
  QPen dots(Qt::black, 1);
  dots.setDashPattern({1, 1});
  dots.setCapStyle(Qt::FlatCap);
  painter.setPen(dots);
  painter.drawRect(frame);
}

void SurfaceView::Widget::mousePressEvent(QMouseEvent* event) {
  // The release of a button may be lost to a menu that it has opened.
  const bool first = event->buttons() == event->button();
  if (pressed_ == nullptr || first) pressed_ = ItemAt(event->position());
  if (pressed_ == nullptr) return;
  if (Surface* const stop = StopUnder(pressed_)) {
    focused_ = stop;
    setFocus(Qt::MouseFocusReason);
    update();
  }
  pressed_->MouseDown(EventFor(pressed_, *event, ButtonOf(event->button())));
}

void SurfaceView::Widget::mouseMoveEvent(QMouseEvent* event) {
  const int held = SumOf(event->buttons());
  const SurfaceItem* const item = held != 0 ? pressed_ : ItemAt(event->position());
  if (item != nullptr) item->MouseMove(EventFor(item, *event, held));
}

void SurfaceView::Widget::mouseReleaseEvent(QMouseEvent* event) {
  if (SumOf(event->buttons()) != 0) return;
  const SurfaceItem* const item = std::exchange(pressed_, nullptr);
  const bool clicked = event->button() == Qt::LeftButton && item == ItemAt(event->position());
  if (item != nullptr && clicked) item->Click();
}

void SurfaceView::Widget::wheelEvent(QWheelEvent* event) {
  SurfaceItem* const item = Handling(ItemAt(event->position()), &SurfaceItem::Wheel);
  event->setAccepted(item != nullptr);
  if (item == nullptr) return;
  if (item != wheeled_) RaiseWheel();
  if (item != wheeled_) turn_ = 0;
  wheeled_ = item;
  turn_ += event->angleDelta().y();
  turn_shift_ = ShiftStateFrom(*event);
  turn_place_ = event->position();
  turned_.start(0);
}

void SurfaceView::Widget::RaiseWheel() {
  turned_.stop();
  const int steps = turn_ / kWheelStep;
  turn_ -= steps * kWheelStep;
  if (wheeled_ == nullptr || steps == 0) return;
  const QPointF place = TwipsIn(wheeled_, turn_place_);
  wheeled_->Wheel({steps, turn_shift_, place.x(), place.y()});
}

void SurfaceView::Widget::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  SurfaceItem* const item =
      Handling(by_key ? focused_ : ItemAt(QPointF(event->pos())), &SurfaceItem::ContextMenu);
  event->setAccepted(item != nullptr);
  if (item == nullptr) return;
  std::vector<MenuItem> items;
  item->ContextMenu({items});
  PopUp(*this, items, by_key ? mapToGlobal(SeenOf(item).center().toPoint()) : event->globalPos());
}

void SurfaceView::Widget::AcceptDrag(QDropEvent* event) {
  const bool taken =
      Handling(ItemAt(event->position()), &SurfaceItem::Drop) != nullptr && HasDataObject(*event->mimeData());
  // What is dragged is copied, whatever its program offers first.
  if (taken) event->setDropAction(Qt::CopyAction);
  event->setAccepted(taken);
}

void SurfaceView::Widget::dropEvent(QDropEvent* event) {
  AcceptDrag(event);
  if (!event->isAccepted()) return;
  SurfaceItem* const item = Handling(ItemAt(event->position()), &SurfaceItem::Drop);
  const QPointF place = TwipsIn(item, event->position());
  item->Drop({DataObjectFrom(*event->mimeData()), place.x(), place.y()});
}

void SurfaceView::Widget::keyPressEvent(QKeyEvent* event) {
  const KeyEvent key = KeyEventFrom(*event);
  const bool reached = focused_ != nullptr && Shown(focused_);
  const bool own = reached && Moves(key.KeyCode);
  if (reached && key.KeyCode != 0) focused_->KeyDown(key);
  // Every other key may also mean something to the form.
  event->setAccepted(own);
}

void SurfaceView::Widget::focusInEvent(QFocusEvent* event) {
  const std::vector<Surface*> stops = Stops();
  const bool tab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (!stops.empty() && (tab || focused_ == nullptr)) {
    focused_ = event->reason() == Qt::BacktabFocusReason ? stops.back() : stops.front();
  }
  update();
}

bool SurfaceView::Widget::focusNextPrevChild(bool next) {
  const std::vector<Surface*> stops = Stops();
  const auto here = std::find(stops.begin(), stops.end(), focused_);
  const auto index = here - stops.begin() + (next ? 1 : -1);
  if (!hasFocus() || here == stops.end() || index < 0 || index >= static_cast<std::ptrdiff_t>(stops.size())) {
    return QWidget::focusNextPrevChild(next);
  }
  focused_ = stops[static_cast<std::size_t>(index)];
  update();
  return true;
}

SurfaceView::SurfaceView(Container& parent, Surface& surface) {
  Adopt(new Widget(parent.Handle(), surface));
}

SurfaceView::~SurfaceView() = default;

}  // namespace orv
