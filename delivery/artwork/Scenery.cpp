#include "artwork/Scenery.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "artwork/Effects.h"
#include "artwork/Noise.h"

namespace orv::artwork {
namespace {

// Sets each pixel of the target to `colour(x, y, old)`, with x and y in pixels of the picture.
template <typename Colour>
void EachPoint(Canvas& canvas, double top, double bottom, Colour colour) {
  QImage& image = canvas.Target();
  const int fineness = canvas.Fineness();
  const int first = std::clamp(static_cast<int>(top * fineness), 0, image.height());
  const int last = std::clamp(static_cast<int>(std::ceil(bottom * fineness)), 0, image.height());
  for (int j = first; j < last; ++j) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(j));
    for (int i = 0; i < image.width(); ++i) {
      row[i] = colour((i + 0.5) / fineness, (j + 0.5) / fineness, row[i]);
    }
  }
}

double HeightOf(const Canvas& canvas, const QImage& image) {
  return image.height() / static_cast<double>(canvas.Fineness());
}

// `colour` at opacity `alpha` over an opaque or empty pixel.
QRgb Over(QRgb old, const QColor& colour, double alpha) {
  return Mixed(old, colour.rgb() | 0xFF000000u, alpha * colour.alphaF());
}

}  // namespace

void PaintRidge(Canvas& canvas, const Ridge& ridge) {
  const int width = canvas.Target().width();
  std::vector<double> crest(static_cast<size_t>(width));
  for (int i = 0; i < width; ++i) {
    const double x = (i + 0.5) / canvas.Fineness() / ridge.width;
    crest[i] = ridge.y - ridge.rise * (0.15 + 0.85 * Crests(x, ridge.seed * 3.7, ridge.seed, 6));
  }
  EachPoint(canvas, ridge.y - ridge.rise - 1, 1e6, [&](double x, double y, QRgb old) {
    const double top = crest[static_cast<size_t>(x * canvas.Fineness())];
    const double cover = std::clamp((y - top) * canvas.Fineness() + 0.5, 0.0, 1.0);
    if (cover == 0) return old;
    const double depth = (y - top) / ridge.rise;
    // Faces of rock: bands that run down and outward from the crests, lit on one side.
    const double u = x / ridge.width;
    const double v = y / ridge.width;
    const double bend = Fractal(u * 2, v * 2, ridge.seed + 40, 3) - 0.5;
    const double face = Crests((u + bend * 0.5) * 2.5, v * 1.4, ridge.seed + 20, 5);
    const double beside =
        Crests((u + bend * 0.5 + 0.035 * ridge.light) * 2.5, v * 1.4 - 0.02, ridge.seed + 20, 5);
    const double lit = std::clamp(0.5 + (face - beside) * 5, 0.0, 1.0);
    QRgb colour = Mixed(ridge.shade.rgb(), ridge.lit.rgb(), lit);
    if (ridge.snow > 0) {
      const double line = ridge.y - ridge.rise * (1 - ridge.snow);
      const double white =
          Step(line + 0.15 * ridge.rise, line - 0.15 * ridge.rise, y + (face - 0.5) * ridge.rise * 0.5);
      colour = Mixed(colour, Mixed(qRgb(150, 170, 205), qRgb(250, 250, 255), lit), white);
    }
    colour = Mixed(colour, ridge.foot.rgb(), Step(0.0, 1.0, depth) * ridge.foot.alphaF());
    return Over(old, QColor(colour), cover);
  });
}

void PaintClouds(Canvas& canvas, const Clouds& clouds) {
  const double from = 0.72 - 0.5 * clouds.cover;
  EachPoint(canvas, clouds.top, clouds.bottom, [&](double x, double y, QRgb old) {
    const double t = (y - clouds.top) / (clouds.bottom - clouds.top);
    const double u = x / clouds.size;
    const double v = y / clouds.size * 2.2;
    const double mass = Fractal(u, v, clouds.seed, 6);
    const double above = Fractal(u - 0.08, v - 0.25, clouds.seed, 6);
    const double fade = Step(0, 0.25, t) * Step(1, 0.6, t);
    const double density = Step(from, from + 0.22, mass) * fade;
    const double lit = std::clamp(0.45 + (mass - above) * 4, 0.0, 1.0);
    return Over(old, QColor(Mixed(clouds.shade.rgb(), clouds.lit.rgb(), lit)), density * clouds.lit.alphaF());
  });
}

void PaintWater(Canvas& canvas, const Water& water) {
  const QImage before = canvas.Target();
  const double bottom = HeightOf(canvas, before);
  EachPoint(canvas, water.y, bottom, [&](double x, double y, QRgb old) {
    const double depth = (y - water.y) / std::max(1.0, bottom - water.y);
    const double pitch = 1.2 + 7 * depth;
    const double wave = Fractal(x / (pitch * 5), (y - water.y) / pitch * 1.8, water.seed, 3) - 0.5;
    const double up = water.y - (y - water.y) * 1.1 + wave * pitch * 2.0;
    const int sx =
        std::clamp(static_cast<int>((x + wave * pitch * 1.5) * canvas.Fineness()), 0, before.width() - 1);
    const int sy = std::clamp(static_cast<int>(up * canvas.Fineness()), 0,
                              static_cast<int>(water.y * canvas.Fineness()));
    const QRgb mirrored = reinterpret_cast<const QRgb*>(before.constScanLine(sy))[sx];
    const QRgb body = Shaded(Mixed(water.far.rgb(), water.near.rgb(), Step(0, 1, depth)), 1 + wave * 0.7);
    QRgb colour = Mixed(body, mirrored, water.mirror * (1 - 0.45 * depth));
    if (water.glitter_x >= 0) {
      const double spread = 3 + 22 * depth;
      const double near = std::exp(-std::pow((x - water.glitter_x) / spread, 2));
      const double spark = Step(0.52, 0.66, Fractal(x / (pitch * 2.4), y / pitch * 1.5, water.seed + 9, 3));
      colour = Mixed(colour, water.glitter.rgb(), near * (0.25 + 0.75 * spark) * water.glitter.alphaF());
    }
    return Over(old, QColor(colour), std::clamp((y - water.y) * canvas.Fineness(), 0.0, 1.0));
  });
}

void PaintGround(Canvas& canvas, const Ground& ground) {
  const double bottom = HeightOf(canvas, canvas.Target());
  EachPoint(canvas, ground.y - 2, bottom, [&](double x, double y, QRgb old) {
    const double horizon = ground.y + 3 * (Fractal(x / 30, 0, ground.seed, 4) - 0.5);
    if (y < horizon) return old;
    const double depth = (y - horizon) / std::max(1.0, bottom - horizon);
    const double scale = 3 + 14 * depth;
    const double u = x / scale;
    const double v = (y - horizon) / scale * 2.4;
    const double bump = Fractal(u, v, ground.seed + 3, 5);
    const double beside = Fractal(u + 0.25, v - 0.3, ground.seed + 3, 5);
    const QRgb body = Mixed(ground.far.rgb(), ground.near.rgb(), std::sqrt(depth));
    return Over(
        old, QColor(Shaded(body, 1 + ground.rough * (bump - beside) * 4 + 0.5 * ground.rough * (bump - 0.5))),
        std::clamp((y - horizon) * canvas.Fineness(), 0.0, 1.0));
  });
}

void PaintMist(Canvas& canvas, double y, double reach, const QColor& colour, int seed) {
  EachPoint(canvas, y - 2.5 * reach, y + 2.5 * reach, [&](double x, double at, QRgb old) {
    const double bell = std::exp(-std::pow((at - y) / reach, 2));
    return Over(old, colour, bell * (0.35 + 0.9 * Fractal(x / (reach * 3), at / reach, seed, 4)));
  });
}

void PaintTexture(Canvas& canvas, const Texture& texture) {
  const auto value = [&](double x, double y) {
    const double u = x / (texture.size * texture.stretch);
    const double v = y / texture.size;
    const double broad = Fractal(u, v, texture.seed, 6);
    return texture.veins ? 0.5 * broad + 0.5 * (1 - Crests(u * 0.7, v * 0.7, texture.seed + 50, 5)) : broad;
  };
  EachPoint(canvas, 0, 1e6, [&](double x, double y, QRgb) {
    const double here = value(x, y);
    const QRgb body = Mixed(texture.dark.rgb(), texture.light.rgb(), Step(0.25, 0.75, here));
    if (texture.bumps == 0) return body;
    return Shaded(body, 1 + texture.bumps * 6 * (here - value(x + 0.7, y + 0.7)));
  });
}

void PaintVignette(Canvas& canvas, const QColor& colour, double strength) {
  const double w = canvas.Target().width() / 2.0 / canvas.Fineness();
  const double h = canvas.Target().height() / 2.0 / canvas.Fineness();
  EachPoint(canvas, 0, 1e6, [&](double x, double y, QRgb old) {
    const double away = std::hypot((x - w) / w, (y - h) / h) / std::sqrt(2.0);
    return Over(old, colour, strength * Step(0.45, 1.05, away));
  });
}

}  // namespace orv::artwork
