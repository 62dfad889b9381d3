#include "artwork/Canvas.h"

#include <QLinearGradient>
#include <QRadialGradient>
#include <cmath>
#include <numbers>

#include "artwork/Effects.h"

namespace orv::artwork {
namespace {

QBrush BrushFor(const Style& style, const QRectF& area) {
  if (style.paint.size() == 1) return style.paint.front();
  QGradientStops stops;
  for (size_t i = 0; i < style.paint.size(); ++i) {
    stops << QGradientStop(static_cast<double>(i) / (style.paint.size() - 1.0), style.paint[i]);
  }
  const QPointF middle = area.center();
  if (style.radial) {
    // A circle gradient stretched to the area.
    QRadialGradient gradient(QPointF(0, 0), 1);
    gradient.setStops(stops);
    QBrush brush(gradient);
    brush.setTransform(QTransform::fromTranslate(middle.x(), middle.y())
                           .scale(std::max(0.5, area.width() / 2), std::max(0.5, area.height() / 2)));
    return brush;
  }
  const double turn = style.paint_angle * std::numbers::pi / 180;
  const QPointF reach(std::cos(turn) * area.width() / 2, std::sin(turn) * area.height() / 2);
  QLinearGradient gradient(middle - reach, middle + reach);
  gradient.setStops(stops);
  return gradient;
}

double Margin(const Style& style, double unit) {
  const double shadow = style.shadow * 2 + std::hypot(style.shadow_offset.x(), style.shadow_offset.y());
  return unit * std::max({style.soft * 2, style.glow * 2.2, shadow, style.relief * 0.5}) + 3;
}

QRect OpaqueArea(const QImage& image) {
  QRect area;
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    int first = 0;
    int last = image.width() - 1;
    while (first <= last && qAlpha(row[first]) == 0) ++first;
    while (last >= first && qAlpha(row[last]) == 0) --last;
    if (first <= last) area |= QRect(first, y, last - first + 1, 1);
  }
  return area;
}

}  // namespace

// An enlarged picture is fine enough as it is.
Canvas::Canvas(int width, int height, int scale) : scale_(scale), smoothing_(scale == 1 ? 3 : 1) {
  QImage image(width * Fineness(), height * Fineness(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  layers_.push_back({image, Style(), static_cast<double>(Fineness())});
}

double Canvas::Unit() const {
  return Fineness() * std::sqrt(std::abs(transform.determinant()));
}

void Canvas::Paint(const QPainterPath& outline) {
  const QPainterPath path = (transform * QTransform::fromScale(Fineness(), Fineness())).map(outline);
  const double margin = Margin(style, Unit());
  const QRect area = path.boundingRect()
                         .adjusted(-margin, -margin, margin, margin)
                         .intersected(QRectF(Target().rect()).adjusted(-margin, -margin, margin, margin))
                         .toAlignedRect();
  if (area.isEmpty()) return;
  QImage shape(area.size(), QImage::Format_ARGB32_Premultiplied);
  shape.fill(Qt::transparent);
  {
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.fillPath(path, BrushFor(style, path.boundingRect()));
  }
  Compose(shape, area.topLeft(), style, Unit());
}

void Canvas::Begin() {
  QImage image(Target().size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  layers_.push_back({image, style, Unit()});
  style = Style();
}

void Canvas::End() {
  const Layer layer = layers_.back();
  layers_.pop_back();
  const double margin = Margin(layer.style, layer.unit);
  const QRect used = OpaqueArea(layer.image);
  if (used.isEmpty()) return;
  const QRect area = QRectF(used).adjusted(-margin, -margin, margin, margin).toAlignedRect();
  Compose(layer.image.copy(area), area.topLeft(), layer.style, layer.unit);
}

void Canvas::Compose(QImage shape, QPoint at, const Style& look, double unit) {
  if (look.grain > 0) Mottle(shape, look.grain, look.grain_size * unit, at);
  if (look.relief > 0) Emboss(shape, look.relief * unit, look.shine, light_angle);
  if (look.rim > 0) LightRim(shape, look.rim * unit, look.rim_colour, light_angle);
  if (look.soft > 0) shape = Blurred(shape, look.soft * unit);
  QPainter painter(&Target());
  if (clip) painter.setClipPath(*clip);
  if (look.shadow > 0) {
    const QPointF offset = look.shadow_offset * unit;
    painter.setOpacity(look.shadow_colour.alphaF());
    painter.drawImage(at + offset.toPoint(),
                      Blurred(Filled(shape, QColor(look.shadow_colour.rgb())), look.shadow * unit));
  }
  if (look.glow > 0) {
    painter.setOpacity(look.glow_colour.alphaF());
    const QImage shine = Blurred(Filled(shape, QColor(look.glow_colour.rgb())), look.glow * unit);
    painter.setCompositionMode(QPainter::CompositionMode_Screen);
    painter.drawImage(at, shine);
    painter.drawImage(at, shine);
  }
  painter.setOpacity(look.alpha);
  painter.setCompositionMode(look.blend);
  painter.drawImage(at, shape);
}

QImage Canvas::Finished() const {
  const QImage& whole = layers_.front().image;
  QImage opaque(whole.size(), QImage::Format_RGB32);
  opaque.fill(Qt::white);
  QPainter(&opaque).drawImage(0, 0, whole);
  return opaque.scaled(whole.size() / smoothing_, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
      .convertToFormat(QImage::Format_RGB888);
}

}  // namespace orv::artwork
