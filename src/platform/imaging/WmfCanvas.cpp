#include "imaging/inner/WmfCanvas.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>

#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

// The budget counts about one unit a dot touched.
constexpr double kBudget = 5e8;
constexpr double kShapeWork = 500;  // of any drawing, however small
constexpr double kPointWork = 200;
constexpr double kFontWork = 1e5;   // of preparing a font
constexpr double kPatternWork = 3;  // of a dot that is more than a plain colour
constexpr double kFar = 100'000;    // dots; nothing farther out can be seen
constexpr double kMaxPen = 2000;    // dots
constexpr double kMaxFont = 1000;   // dots
constexpr std::size_t kMaxSaved = 256;

double Clamp(double value) {
  return std::isfinite(value) ? std::clamp(value, -kFar, kFar) : 0;
}

double Length(const QPainterPath& path) {
  double length = 0;
  for (int i = 1; i < path.elementCount(); ++i) {
    const QPointF step = QPointF(path.elementAt(i)) - QPointF(path.elementAt(i - 1));
    if (!path.elementAt(i).isMoveTo()) length += std::hypot(step.x(), step.y());
  }
  return length;
}

// Filling the inside of lines of such a length keeps a list of crossings for each row of pixels, and looks
// through it for each crossing.
double ScanWork(double length, const QSizeF& extent) {
  const double crossings = length / std::max(extent.height(), 1.0);
  return length * (1 + std::min(crossings, std::max(extent.width(), 1.0)) / 4);
}

double Area(const QRectF& box) {
  return std::max(box.width(), 0.0) * std::max(box.height(), 0.0);
}

bool IsHatch(const QBrush& brush) {
  return brush.style() >= Qt::HorPattern && brush.style() <= Qt::DiagCrossPattern;
}

// Pixels of the colour that means "leave the ground alone" become clear.
void ClearColour(QImage* image, QRgb colour) {
  *image = image->convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image->height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image->scanLine(y));
    std::replace(row, row + image->width(), colour, QRgb{0});
  }
}

QImage Prepare(const QImage& bitmap, const QRect& source, WmfBlend blend) {
  QImage part = source == bitmap.rect() ? bitmap : bitmap.copy(source);
  if (blend == WmfBlend::kMaskWhite) ClearColour(&part, qRgb(255, 255, 255));
  if (blend == WmfBlend::kMaskBlack) ClearColour(&part, qRgb(0, 0, 0));
  return part;
}

}  // namespace

WmfCanvas::WmfCanvas(QImage* image, const QRectF& window, int fineness)
    : size_(1, 1), dot_(fineness), budget_(kBudget) {
  state.origin = window.topLeft();
  state.extent = window.size();
  if (image == nullptr) return;
  size_ = image->size();
  painter_.begin(image);
  ResetClip();
}

void WmfCanvas::Charge(double work) {
  budget_ -= work;
  if (budget_ < 0) BadPicture();
}

void WmfCanvas::Save() {
  if (saved_.size() >= kMaxSaved) BadPicture();
  saved_.push_back(state);
}

void WmfCanvas::Restore(int level) {
  const auto count = static_cast<int>(saved_.size());
  const int index = level < 0 ? count + level : level - 1;
  if (index < 0 || index >= count) return;
  state = saved_[index];
  saved_.resize(index);
  SetClip(state.clip);
}

void WmfCanvas::SetClip(const QRectF& clip) {
  state.clip = clip;
  if (painter_.isActive()) painter_.setClipRect(clip);
}

void WmfCanvas::ResetClip() {
  SetClip(QRectF(QPointF(), size_));
}

void WmfCanvas::IntersectClip(const QRectF& box) {
  SetClip(state.clip & Map(box));
}

void WmfCanvas::Select(const WmfObject& object) {
  if (const auto* pen = std::get_if<WmfPen>(&object)) state.pen = *pen;
  if (const auto* brush = std::get_if<QBrush>(&object)) state.brush = *brush;
  if (const auto* font = std::get_if<WmfFont>(&object)) state.font = *font;
}

QPointF WmfCanvas::Map(const QPointF& point) const {
  return {Clamp((point.x() - state.origin.x()) * ScaleX()), Clamp((point.y() - state.origin.y()) * ScaleY())};
}

QRectF WmfCanvas::Map(const QRectF& box) const {
  return QRectF(Map(box.topLeft()), Map(box.bottomRight())).normalized();
}

QPolygonF WmfCanvas::Map(const QPolygonF& points) const {
  QPolygonF mapped;
  mapped.reserve(points.size());
  for (const QPointF& point : points) mapped << Map(point);
  return mapped;
}

// False if nothing of the drawing can be seen.
bool WmfCanvas::Begin(const QRectF& bounds, double work) {
  Charge(work + kShapeWork);
  if (!state.draws) return false;
  // A line has an empty rectangle, which united() would leave out.
  const QRectF solid = bounds.adjusted(0, 0, bounds.width() > 0 ? 0 : 1, bounds.height() > 0 ? 0 : 1);
  bounds_ = bounds_.united(solid);
  if (!painter_.isActive() || !solid.intersects(state.clip)) return false;
  Charge(Area(solid & state.clip));
  return true;
}

QPen WmfCanvas::DevicePen() const {
  const double scale = std::sqrt(std::abs(ScaleX() * ScaleY()));
  const double width = std::clamp(state.pen.width * scale, dot_, kMaxPen);
  // Broken lines were only ever drawn thin; a wide one would be solid.
  const Qt::PenStyle style =
      state.pen.style != Qt::NoPen && width >= 2 * dot_ ? Qt::PenStyle{Qt::SolidLine} : state.pen.style;
  return {state.pen.colour, width, style, state.pen.cap, state.pen.join};
}

// Patterns are made of pixels. Those of the painter's own would be made of dots, so a hatch becomes a tile.
QBrush WmfCanvas::DeviceBrush(const QBrush& brush) const {
  QBrush scaled = brush;
  if (IsHatch(brush)) {
    QImage tile(8, 8, QImage::Format_ARGB32_Premultiplied);
    tile.fill(0);
    QPainter(&tile).fillRect(tile.rect(), brush);
    scaled = QBrush(tile);
  }
  scaled.setTransform(QTransform::fromScale(dot_, dot_));
  return scaled;
}

void WmfCanvas::PaintFill(const QPainterPath& path) {
  if (state.brush.style() == Qt::NoBrush) return;
  if (IsHatch(state.brush) && state.opaque_back) painter_.fillPath(path, state.back_colour);
  painter_.fillPath(path, DeviceBrush(state.brush));
}

// A stroke runs through the middles of its pixels, a filled area ends at their edges.
void WmfCanvas::Draw(QPainterPath fill, const QPainterPath& stroke) {
  const QPen pen = DevicePen();
  const double reach = pen.widthF() * 2 + dot_;  // mitres included
  const QRectF bounds = fill.boundingRect() | stroke.boundingRect();
  const double points = fill.elementCount() + stroke.elementCount();
  const QSizeF extent = bounds.size().boundedTo(size_);
  const bool inked = pen.style() != Qt::NoPen;
  double work = points * kPointWork + ScanWork(Length(fill), extent);
  if (state.brush.style() != Qt::SolidPattern) work += kPatternWork * Area(QRectF(QPointF(), extent));
  if (inked) work += ScanWork(2 * Length(stroke), extent) + Length(stroke) * pen.widthF();
  if (!Begin(inked && painter_.isActive() ? bounds.adjusted(-reach, -reach, reach, reach) : bounds, work)) {
    return;
  }
  fill.setFillRule(state.fill_rule);
  if (!fill.isEmpty()) PaintFill(fill);
  if (inked) painter_.strokePath(stroke.translated(dot_ / 2, dot_ / 2), pen);
}

void WmfCanvas::Polygons(const std::vector<QPolygonF>& polygons) {
  QPainterPath path;
  for (const QPolygonF& polygon : polygons) {
    path.addPolygon(Map(polygon));
    path.closeSubpath();
  }
  Draw(path, path);
}

void WmfCanvas::Polyline(const QPolygonF& line) {
  QPainterPath path;
  path.addPolygon(Map(line));
  Draw({}, path);
}

void WmfCanvas::LineTo(const QPointF& end) {
  Polyline({state.position, end});
  state.position = end;
}

// The right and the lower edge lie outside the shape, so its outline ends a pixel before them.
void WmfCanvas::Rectangle(const QRectF& box, double corner_width, double corner_height) {
  const QRectF outer = Map(box);
  const double rx = std::min(std::abs(corner_width * ScaleX()), outer.width()) / 2;
  const double ry = std::min(std::abs(corner_height * ScaleY()), outer.height()) / 2;
  QPainterPath fill;
  fill.addRoundedRect(outer, rx, ry);
  QPainterPath stroke;
  stroke.addRoundedRect(outer.adjusted(0, 0, -dot_, -dot_), rx, ry);
  Draw(fill, stroke);
}

void WmfCanvas::Ellipse(const QRectF& box) {
  const QRectF outer = Map(box);
  QPainterPath fill;
  fill.addEllipse(outer);
  QPainterPath stroke;
  stroke.addEllipse(outer.adjusted(0, 0, -dot_, -dot_));
  Draw(fill, stroke);
}

// Counter-clockwise from the ray through `start` to the ray through `end`.
void WmfCanvas::DrawArc(Arc kind, const QRectF& box, const QPointF& start, const QPointF& end) {
  const QRectF outer = Map(box);
  if (outer.isEmpty()) return;
  const auto angle = [&](const QPointF& point) {
    const QPointF ray = Map(point) - outer.center();
    return std::atan2(-ray.y() / outer.height(), ray.x() / outer.width()) * 180 / M_PI;
  };
  const double first = angle(start);
  double sweep = angle(end) - first;
  if (sweep <= 0) sweep += 360;
  QPainterPath path;
  if (kind == Arc::kPie) path.moveTo(outer.center());
  if (kind != Arc::kPie) path.arcMoveTo(outer, first);
  path.arcTo(outer, first, sweep);
  if (kind != Arc::kOpen) path.closeSubpath();
  Draw(kind == Arc::kOpen ? QPainterPath() : path, path);
}

void WmfCanvas::Pixel(const QPointF& at, const QColor& colour) {
  const QPointF place = Map(at);
  const auto snap = [this](double v) { return std::floor(v / dot_) * dot_; };
  const QRectF box(snap(place.x()), snap(place.y()), dot_, dot_);
  if (Begin(box, 0)) painter_.fillRect(box, colour);
}

void WmfCanvas::Fill(const QRectF& box, const QBrush& brush) {
  const QRectF area = Map(box);
  if (Begin(area, 0)) painter_.fillRect(area, DeviceBrush(brush));
}

void WmfCanvas::Bitmap(const QRectF& target, const QImage& bitmap, const QRect& source, WmfBlend blend) {
  const QRect part = source & bitmap.rect();
  const QRectF area = Map(target);
  if (part.isEmpty() || !Begin(area, 0)) return;
  Charge(kPatternWork * (double(part.width()) * part.height() + Area(area & state.clip)));
  const bool across = target.width() * ScaleX() < 0;
  const bool over = target.height() * ScaleY() < 0;
  // An enlarged bitmap keeps its hard dots, which the averaging then smooths.
  painter_.setRenderHint(QPainter::SmoothPixmapTransform, area.width() < part.width());
  painter_.drawImage(area, Prepare(bitmap, part, blend).mirrored(across, over));
  painter_.setRenderHint(QPainter::SmoothPixmapTransform, false);
}

struct WmfCanvas::TextLayout {
  QFont font;
  double ascent = 0;
  double descent = 0;
  double width = 0;
  std::vector<double> places;  // of each character, or nothing to draw the text as a whole
};

QFont WmfCanvas::DeviceFont() const {
  QFont font(state.font.face);
  const double height = std::abs(state.font.height * ScaleY());
  double pixels = height == 0 ? 16 * dot_ : height;
  if (state.font.height > 0) {  // the height of the whole line
    font.setPixelSize(100);
    pixels *= 100 / std::max(QFontMetricsF(font).height(), 100.0);
  }
  font.setPixelSize(static_cast<int>(std::lround(std::clamp(pixels, 1.0, kMaxFont))));
  font.setWeight(static_cast<QFont::Weight>(std::clamp(state.font.weight, 1, 1000)));
  font.setItalic(state.font.italic);
  font.setUnderline(state.font.underline);
  font.setStrikeOut(state.font.strike_out);
  font.setStyleStrategy(QFont::NoSubpixelAntialias);
  return font;
}

WmfCanvas::TextLayout WmfCanvas::LayOut(const QString& text, const std::vector<double>& advances) const {
  TextLayout layout;
  layout.font = DeviceFont();
  const QFontMetricsF metrics(layout.font);
  layout.ascent = metrics.ascent();
  layout.descent = metrics.descent();
  if (advances.size() != static_cast<std::size_t>(text.size())) {
    layout.width = metrics.horizontalAdvance(text);
    return layout;
  }
  for (const double advance : advances) {
    layout.places.push_back(layout.width);
    layout.width += Clamp(advance * std::abs(ScaleX()));
  }
  return layout;
}

void WmfCanvas::Text(const QPointF& at, const QString& text, const std::vector<double>& advances) {
  // Fonts are the one thing that needs more than an image.
  if (text.isEmpty() || qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) return;
  const double height = std::min(std::abs(state.font.height * ScaleY()), kMaxFont) + 16;
  Charge(kPointWork * double(text.size()) + height * height * double(text.size()));
  const TextLayout layout = LayOut(text, advances);
  if (layout.font != last_font_) Charge(kFontWork);
  last_font_ = layout.font;
  constexpr int kUpdatesPosition = 1;
  const bool moves = (state.align & kUpdatesPosition) != 0;
  const int across = state.align & 6;
  const int up = state.align & 24;
  const double left = across == 6 ? -layout.width / 2 : across == 2 ? -layout.width : 0;
  const double base = up == 24 ? 0 : up == 8 ? -layout.descent : layout.ascent;
  const QPointF place = Map(moves ? state.position : at);
  const QRectF box(left, base - layout.ascent, layout.width, layout.ascent + layout.descent);
  const QTransform turn = QTransform::fromTranslate(place.x(), place.y()).rotate(-state.font.angle);
  if (moves && across != 6) state.position.rx() += (across == 2 ? -1 : 1) * layout.width / ScaleX();
  if (!Begin(turn.mapRect(box), 0)) return;
  painter_.setTransform(turn);
  if (state.opaque_back) painter_.fillRect(box, state.back_colour);
  painter_.setFont(layout.font);
  painter_.setPen(state.text_colour);
  if (layout.places.empty()) painter_.drawText(QPointF(left, base), text);
  for (std::size_t i = 0; i < layout.places.size(); ++i) {
    painter_.drawText(QPointF(left + layout.places[i], base), text.mid(qsizetype(i), 1));
  }
  painter_.resetTransform();
}

}  // namespace orv
