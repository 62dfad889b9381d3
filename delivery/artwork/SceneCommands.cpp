#include <cmath>

#include "artwork/Commands.h"
#include "artwork/Noise.h"
#include "artwork/Scenery.h"

namespace orv::artwork {
namespace {

// ---- Light and air ----------------------------------------------------------------------------

QPainterPath Whole(Player& player) {
  QPainterPath path;
  path.addRect(0, 0, player.Width(), player.Height());
  return path;
}

void DrawSky(Player& player, const Words& words) {
  Canvas& canvas = player.Surface();
  Style style;
  style.paint = words.Colours(0);
  std::swap(style, canvas.style);
  canvas.Paint(Whole(player));
  std::swap(style, canvas.style);
}

// A round light that fades outward and adds to what is there.
void DrawHalo(Player& player, const Words& words) {
  Canvas& canvas = player.Surface();
  const Style before = canvas.style;
  canvas.style = Style();
  const QColor colour = words.Colour(3);
  const auto faint = [&](double part) {
    QColor weak = colour;
    weak.setAlphaF(static_cast<float>(colour.alphaF() * part));
    return weak;
  };
  canvas.style.paint = {colour, faint(0.62), faint(0.33), faint(0.13), faint(0.03), faint(0)};
  canvas.style.radial = true;
  canvas.style.blend = QPainter::CompositionMode_Screen;
  QPainterPath path;
  path.addEllipse(QPointF(words.Number(0), words.Number(1)), words.Number(2), words.Number(2));
  canvas.Paint(path);
  canvas.style = before;
}

void DrawStars(Player& player, const Words& words) {
  Random random(SeedOf(words));
  Canvas& canvas = player.Surface();
  const Style before = canvas.style;
  canvas.style = Style();
  const int count = static_cast<int>(words.Number(0));
  for (int i = 0; i < count; ++i) {
    const double x = random.Between(0, player.Width());
    const double y = words.Number(1) * std::pow(random.Next(), 1.3);
    const double size = 0.25 + 0.55 * std::pow(random.Next(), 4);
    QColor colour = words.NamedColour("colour", QColor("#fff6e0"));
    colour.setAlphaF(static_cast<float>(random.Between(0.35, 1)));
    canvas.style.paint = {colour};
    QPainterPath path;
    path.addEllipse(QPointF(x, y), size, size);
    canvas.Paint(path);
  }
  canvas.style = before;
}

// Beams of light from one point.
void DrawRays(Player& player, const Words& words) {
  Random random(SeedOf(words));
  Canvas& canvas = player.Surface();
  const Style before = canvas.style;
  canvas.style = Style();
  const QPointF centre(words.Number(0), words.Number(1));
  const int count = static_cast<int>(words.Number(2));
  const double length = words.Number(3);
  const QColor colour = words.Colour(4);
  const double from = words.Named("from", 0);
  const double to = words.Named("to", 360);
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  for (int i = 0; i < count; ++i) {
    const double at = from + (to - from) * (i + random.Next()) / count;
    const double half = random.Between(0.15, 0.5) * (to - from) / count;
    const double reach = length * random.Between(0.7, 1);
    path.addPolygon(
        QPolygonF({centre, centre + reach * Around(at - half), centre + reach * Around(at + half), centre}));
  }
  canvas.style.paint = {colour};
  canvas.style.soft = words.Named("soft", 1.5);
  canvas.style.blend = QPainter::CompositionMode_Screen;
  canvas.Paint(path);
  canvas.style = before;
}

// ---- Landscape --------------------------------------------------------------------------------

void DrawRidge(Player& player, const Words& words) {
  Ridge ridge{words.Number(0),        words.Number(1),          words.Number(2),
              words.Colour(3),        words.Colour(4),          words.Colour(5),
              words.Named("snow", 0), words.Named("light", -1), SeedOf(words)};
  PaintRidge(player.Surface(), ridge);
}

void DrawClouds(Player& player, const Words& words) {
  PaintClouds(player.Surface(), {words.Number(0), words.Number(1), words.Colour(2), words.Colour(3),
                                 words.Named("cover", 0.5), words.Named("size", 40), SeedOf(words)});
}

void DrawWater(Player& player, const Words& words) {
  PaintWater(player.Surface(),
             {words.Number(0), words.Colour(1), words.Colour(2), words.Named("mirror", 0.5),
              words.Named("glitter", -1), words.NamedColour("light", QColor("#fff0c0")), SeedOf(words)});
}

void DrawGround(Player& player, const Words& words) {
  PaintGround(player.Surface(),
              {words.Number(0), words.Colour(1), words.Colour(2), words.Named("rough", 0.5), SeedOf(words)});
}

void DrawMist(Player& player, const Words& words) {
  PaintMist(player.Surface(), words.Number(0), words.Number(1), words.Colour(2), SeedOf(words));
}

void DrawTexture(Player& player, const Words& words) {
  PaintTexture(player.Surface(),
               {words.Colour(0), words.Colour(1), words.Named("size", 20), words.Named("stretch", 1),
                words.Named("bumps", 0), words.Named("veins", 0) != 0, SeedOf(words)});
}

// A conifer as one outline, its foot at `foot`.
QPainterPath Conifer(QPointF foot, double height, Random& random) {
  QPolygonF right;
  QPolygonF left;
  const int tiers = 7;
  for (int i = 0; i < tiers; ++i) {
    const double t = (i + 1.0) / tiers;
    const double reach = height * 0.27 * std::pow(t, 0.85);
    const double y = foot.y() - height * (1 - 0.95 * t);
    right << QPointF(foot.x() + reach * random.Between(0.75, 1.1), y + height * random.Between(0, 0.03))
          << QPointF(foot.x() + reach * 0.45, y - height * 0.035);
    left << QPointF(foot.x() - reach * random.Between(0.75, 1.1), y + height * random.Between(0, 0.03))
         << QPointF(foot.x() - reach * 0.45, y - height * 0.035);
  }
  QPolygonF outline{QPointF(foot.x(), foot.y() - height)};
  outline += right;
  for (qsizetype i = left.size(); i-- > 0;) outline << left[i];
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addPolygon(outline);
  path.closeSubpath();
  path.addRect(foot.x() - height * 0.02, foot.y() - height * 0.1, height * 0.04, height * 0.1);
  return path;
}

// A row of conifers in the present style: foot, spread of the feet, count, height.
void DrawTrees(Player& player, const Words& words) {
  Random random(SeedOf(words));
  const double foot = words.Number(0);
  const int count = static_cast<int>(words.Number(1));
  const double height = words.Number(2);
  const double from = words.Named("from", -5);
  const double to = words.Named("to", player.Width() + 5);
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  for (int i = 0; i < count; ++i) {
    const double x = from + (to - from) * (i + random.Next()) / count;
    path.addPath(
        Conifer({x, foot + random.Between(0, 0.12) * height}, height * random.Between(0.6, 1.05), random));
  }
  player.Outline(path);
}

}  // namespace

const CommandTable& SceneCommands() {
  static const CommandTable commands{{"sky", DrawSky},
                                     {"halo", DrawHalo},
                                     {"stars", DrawStars},
                                     {"rays", DrawRays},
                                     {"ridge", DrawRidge},
                                     {"clouds", DrawClouds},
                                     {"water", DrawWater},
                                     {"ground", DrawGround},
                                     {"mist", DrawMist},
                                     {"texture", DrawTexture},
                                     {"trees", DrawTrees},
                                     {"vignette", [](Player& p, const Words& w) {
                                        PaintVignette(p.Surface(), w.NamedColour("colour", Qt::black),
                                                      w.Number(0));
                                      }}};
  return commands;
}

}  // namespace orv::artwork
