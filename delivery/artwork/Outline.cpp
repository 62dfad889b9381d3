#include "artwork/Outline.h"

#include <cmath>
#include <numbers>
#include <stdexcept>
#include <vector>

namespace orv::artwork {
namespace {

struct Knot {
  QPointF at;
  bool corner = false;
};

double ParseNumber(const QString& text) {
  bool ok = false;
  const double value = text.toDouble(&ok);
  if (!ok) throw std::runtime_error(("no number: " + text).toStdString());
  return value;
}

std::vector<Knot> ParseKnots(const QStringList& points) {
  std::vector<Knot> knots;
  for (QString text : points) {
    Knot knot;
    knot.corner = text.endsWith('*');
    if (knot.corner) text.chop(1);
    const QStringList pair = text.split(',');
    if (pair.size() != 2) throw std::runtime_error(("no point: " + text).toStdString());
    knot.at = QPointF(ParseNumber(pair[0]), ParseNumber(pair[1]));
    knots.push_back(knot);
  }
  if (knots.size() < 2) throw std::runtime_error("an outline needs two points");
  return knots;
}

QPointF Handle(const Knot& before, const Knot& at, const Knot& after, const Knot& towards) {
  if (at.corner) return at.at + (towards.at - at.at) / 3;
  const QPointF along = (after.at - before.at) / 6;
  return &towards == &after ? at.at + along : at.at - along;
}

// The cubic piece from knot i to the next one.
void Piece(QPainterPath& path, const std::vector<Knot>& knots, size_t i, bool closed) {
  const size_t n = knots.size();
  const auto clamped = [&](size_t k) { return closed ? k % n : std::min(k, n - 1); };
  const Knot& before = knots[closed ? (i + n - 1) % n : (i == 0 ? 0 : i - 1)];
  const Knot& from = knots[i];
  const Knot& to = knots[clamped(i + 1)];
  const Knot& after = knots[clamped(i + 2)];
  path.cubicTo(Handle(before, from, to, to), Handle(from, to, after, from), to.at);
}

QPainterPath Curve(const std::vector<Knot>& knots, bool closed) {
  QPainterPath path(knots.front().at);
  path.setFillRule(Qt::WindingFill);
  const size_t pieces = closed ? knots.size() : knots.size() - 1;
  for (size_t i = 0; i < pieces; ++i) Piece(path, knots, i, closed);
  if (closed) path.closeSubpath();
  return path;
}

double WidthAt(const std::vector<double>& widths, double t) {
  const double place = t * (widths.size() - 1.0);
  const size_t i = std::min(static_cast<size_t>(place), widths.size() - 1);
  const size_t j = std::min(i + 1, widths.size() - 1);
  return std::lerp(widths[i], widths[j], place - i);
}

}  // namespace

QPainterPath Blob(const QStringList& points) {
  return Curve(ParseKnots(points), true);
}

QPainterPath Half(const QStringList& points) {
  std::vector<Knot> knots = ParseKnots(points);
  for (size_t i = knots.size(); i-- > 0;) {
    if (knots[i].at.x() != 0) knots.push_back({QPointF(-knots[i].at.x(), knots[i].at.y()), knots[i].corner});
  }
  return Curve(knots, true);
}

QPainterPath Limb(const QString& widths, const QStringList& points) {
  std::vector<double> numbers;
  for (const QString& text : widths.split(':')) numbers.push_back(ParseNumber(text));
  const QPainterPath spine = Curve(ParseKnots(points), false);
  const int steps = 14 * static_cast<int>(points.size());
  QPolygonF left;
  QPolygonF right;
  for (int i = 0; i <= steps; ++i) {
    const double t = i / static_cast<double>(steps);
    const QPointF at = spine.pointAtPercent(t);
    const QPointF ahead = spine.pointAtPercent(std::min(1.0, t + 0.01));
    const QPointF behind = spine.pointAtPercent(std::max(0.0, t - 0.01));
    const QPointF along = ahead - behind;
    const double length = std::max(1e-9, std::hypot(along.x(), along.y()));
    const QPointF across = QPointF(along.y(), -along.x()) * (WidthAt(numbers, t) / 2 / length);
    left << at + across;
    right.prepend(at - across);
  }
  // Clockwise like the round ends, so that no overlap cancels out.
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addPolygon(left + right);
  path.closeSubpath();
  path.addEllipse(spine.pointAtPercent(0), numbers.front() / 2, numbers.front() / 2);
  path.addEllipse(spine.pointAtPercent(1), numbers.back() / 2, numbers.back() / 2);
  return path.simplified();
}

QPainterPath Star(QPointF centre, double outer, double inner, int count, double turn) {
  QPolygonF corners;
  for (int i = 0; i < 2 * count; ++i) {
    const double angle = (turn + 180.0 * i / count) * std::numbers::pi / 180;
    corners << centre + (i % 2 == 0 ? outer : inner) * QPointF(std::cos(angle), std::sin(angle));
  }
  QPainterPath path;
  path.addPolygon(corners);
  path.closeSubpath();
  return path;
}

}  // namespace orv::artwork
