#include <cmath>

#include "artwork/Commands.h"
#include "artwork/Noise.h"

namespace orv::artwork {
namespace {

// ---- Repetition -------------------------------------------------------------------------------

// Draws a shape at random places: scatter shape count x y width height small large.
void Scatter(Player& player, const Words& words) {
  Random random(SeedOf(words));
  QMap<QString, QString> values = words.AllNamed();
  values.remove("seed");
  const double tilt = values.take("tilt").toDouble();
  const int count = static_cast<int>(words.Number(1));
  for (int i = 0; i < count; ++i) {
    // From back to front: lower is nearer and larger.
    const double depth = (i + random.Next()) / count;
    const double x = words.Number(2) + random.Next() * words.Number(4);
    const double y = words.Number(3) + depth * words.Number(5);
    const double scale = std::lerp(words.Number(6), words.Number(7), depth) * random.Between(0.8, 1.2);
    player.Place(words.Text(0), x, y, scale, random.Between(-tilt, tilt), random.Next() < 0.5, values);
  }
}

// Draws a shape `count` times around a point, each one turned: around shape count x y radius scale.
void DrawAround(Player& player, const Words& words) {
  QMap<QString, QString> values = words.AllNamed();
  const double start = values.take("start").toDouble();
  const int count = static_cast<int>(words.Number(1));
  for (int i = 0; i < count; ++i) {
    const double angle = start + 360.0 * i / count;
    const QPointF at = QPointF(words.Number(2), words.Number(3)) + words.Number(4) * Around(angle - 90);
    player.Place(words.Text(0), at.x(), at.y(), words.Number(5), angle, false, values);
  }
}

// Draws a shape `count` times along a line: along shape count x1 y1 x2 y2 scale.
void DrawAlong(Player& player, const Words& words) {
  QMap<QString, QString> values = words.AllNamed();
  const double turn = values.take("turn").toDouble();
  const int count = static_cast<int>(words.Number(1));
  for (int i = 0; i < count; ++i) {
    const double t = count == 1 ? 0.5 : i / (count - 1.0);
    player.Place(words.Text(0), std::lerp(words.Number(2), words.Number(4), t),
                 std::lerp(words.Number(3), words.Number(5), t), words.Number(6), turn, false, values);
  }
}

void SetClip(Player& player, const Words& words) {
  Canvas& canvas = player.Surface();
  canvas.clip.reset();
  if (words.Count() == 0) return;
  QPainterPath path;
  const QRectF area(words.Number(0), words.Number(1), words.Number(2), words.Number(3));
  if (words.Named("oval", 0) != 0) {
    path.addEllipse(area);
  } else {
    path.addRect(area);
  }
  canvas.clip = (canvas.transform * QTransform::fromScale(canvas.Fineness(), canvas.Fineness())).map(path);
}

}  // namespace

const CommandTable& RepeatCommands() {
  static const CommandTable commands{
      {"clip", SetClip}, {"scatter", Scatter}, {"around", DrawAround}, {"along", DrawAlong}};
  return commands;
}

}  // namespace orv::artwork
