#include "forms/ZoomView.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "forms/Playing.h"

namespace orv {
namespace {

constexpr int kGap = 12;  // pixels around each part
constexpr double kStep = 1.25;
constexpr double kNotch = 120;  // of a wheel, in eighths of a degree

// As the screen shows it; one that was loaded in squares, since that is what it is.
void DrawPart(QPainter& painter, const ZoomView::Part& part) {
  painter.translate(-part.part.topLeft());
  if (part.picture.HowDrawn() != nullptr) return PlayEnlarged(*part.picture.HowDrawn(), painter);
  painter.drawImage(part.part, part.picture.Image(), part.part);
}

}  // namespace

class ZoomView::Area : public QAbstractScrollArea {
 public:
  Area(QWidget* parent, ZoomView& owner) : QAbstractScrollArea(parent), owner_(owner) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()}) bar->setSingleStep(20);
  }

  void SetRows(const std::vector<Row>& rows) {
    rows_ = rows;
    Arrange();
  }
  double Zoom() const { return zoom_; }
  bool IsFitted() const { return fitted_; }
  void Fit() {
    fitted_ = true;
    Arrange();
  }

  // The point of the viewport under which nothing moves.
  void SetZoom(double zoom, QPointF around) {
    zoom = std::clamp(zoom, kLeast, kMost);
    const QPointF place = (around + Corner() - QPointF(kGap, kGap)) / zoom_;
    fitted_ = false;
    zoom_ = zoom;
    Arrange();
    const QPointF corner = place * zoom_ + QPointF(kGap, kGap) - around;
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(corner.x())));
    verticalScrollBar()->setValue(static_cast<int>(std::lround(corner.y())));
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QAbstractScrollArea::resizeEvent(event);
    Arrange();
  }
  void scrollContentsBy(int, int) override { viewport()->update(); }
  void wheelEvent(QWheelEvent* event) override {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
    SetZoom(zoom_ * std::pow(kStep, event->angleDelta().y() / kNotch), event->position());
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    double top = kGap - Corner().y();
    for (const Row& row : rows_) {
      double left = kGap - Corner().x();
      for (const Part& part : row) {
        const QRectF place(QPointF(left, top), QSizeF(part.part.size()) * zoom_);
        if (place.intersects(viewport()->rect())) Draw(painter, part, place);
        left += place.width() + kGap;
      }
      top += HeightOf(row) * zoom_ + kGap;
    }
  }

 private:
  QPointF Corner() const { return QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value()); }

  static int HeightOf(const Row& row) {
    int height = 0;
    for (const Part& part : row) height = std::max(height, part.part.height());
    return height;
  }

  // Of the pictures alone, in their dots, and of the gaps around them.
  QSize Dots() const {
    QSize size(0, 0);
    for (const Row& row : rows_) {
      int width = 0;
      for (const Part& part : row) width += part.part.width();
      size = QSize(std::max(size.width(), width), size.height() + HeightOf(row));
    }
    return size;
  }
  QSize Gaps() const {
    std::size_t most = 0;
    for (const Row& row : rows_) most = std::max(most, row.size());
    return QSize(static_cast<int>(most) + 1, static_cast<int>(rows_.size()) + 1) * kGap;
  }

  void Draw(QPainter& painter, const Part& part, const QRectF& place) const {
    painter.save();
    painter.setClipRect(place);
    painter.translate(place.topLeft());
    painter.scale(zoom_, zoom_);
    DrawPart(painter, part);
    painter.restore();
  }

  void Arrange() {
    const QSize dots = Dots();
    const QSize room = maximumViewportSize();
    if (fitted_ && !dots.isEmpty()) {
      const QSizeF free = room - Gaps();
      zoom_ = std::clamp(std::min(free.width() / dots.width(), free.height() / dots.height()), kLeast, kMost);
    }
    const QSize all = (QSizeF(dots) * zoom_).toSize() + Gaps();
    const QSize seen = viewport()->size();
    horizontalScrollBar()->setRange(0, fitted_ ? 0 : all.width() - seen.width());
    horizontalScrollBar()->setPageStep(seen.width());
    verticalScrollBar()->setRange(0, fitted_ ? 0 : all.height() - seen.height());
    verticalScrollBar()->setPageStep(seen.height());
    viewport()->update();
    owner_.ZoomChanged();
  }

  ZoomView& owner_;
  std::vector<Row> rows_;
  double zoom_ = 1;
  bool fitted_ = true;
};

ZoomView::ZoomView(Container& parent) {
  Adopt(new Area(parent.Handle(), *this));
}
ZoomView::~ZoomView() = default;

ZoomView::Area& ZoomView::Of() const {
  return *static_cast<Area*>(Handle());
}
void ZoomView::SetRows(const std::vector<Row>& rows) {
  Of().SetRows(rows);
}
double ZoomView::Zoom() const {
  return Of().Zoom();
}
void ZoomView::SetZoom(double zoom) {
  Of().SetZoom(zoom, QRectF(Of().viewport()->rect()).center());
}
void ZoomView::Fit() {
  Of().Fit();
}
bool ZoomView::IsFitted() const {
  return Of().IsFitted();
}

}  // namespace orv
