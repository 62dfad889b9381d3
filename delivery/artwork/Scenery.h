#pragma once

#include <QColor>

#include "artwork/Canvas.h"

namespace orv::artwork {

// Pieces of a landscape, painted from back to front. Places and sizes are in pixels of the picture.

struct Ridge {
  double y = 0;      // height of the foot
  double rise = 0;   // how high the crests go above it
  double width = 0;  // of one mountain
  QColor lit, shade, foot;
  double snow = 0;    // share of the rise that lies in snow
  double light = -1;  // side of the light, -1 left, 1 right
  int seed = 0;
};
void PaintRidge(Canvas& canvas, const Ridge& ridge);

struct Clouds {
  double top = 0, bottom = 0;
  QColor lit, shade;
  double cover = 0.5;  // 0 none, 1 overcast
  double size = 40;
  int seed = 0;
};
void PaintClouds(Canvas& canvas, const Clouds& clouds);

struct Water {
  double y = 0;  // of the horizon; water covers all below
  QColor far, near;
  double mirror = 0.5;    // how much of what stands above shows in it
  double glitter_x = -1;  // where the light glitters, none if negative
  QColor glitter;
  int seed = 0;
};
void PaintWater(Canvas& canvas, const Water& water);

struct Ground {
  double y = 0;  // of the horizon
  QColor far, near;
  double rough = 0.5;
  int seed = 0;
};
void PaintGround(Canvas& canvas, const Ground& ground);

// A band of mist about height `y`.
void PaintMist(Canvas& canvas, double y, double reach, const QColor& colour, int seed);

// The whole picture as parchment, stone or the like, between two colours. `stretch` above 1 draws the
// grain out sideways; `bumps` shades it like a surface in raking light.
struct Texture {
  QColor dark, light;
  double size = 20;
  double stretch = 1;
  double bumps = 0;
  bool veins = false;
  int seed = 0;
};
void PaintTexture(Canvas& canvas, const Texture& texture);

// Darkens the picture towards its corners, 0 .. 1.
void PaintVignette(Canvas& canvas, const QColor& colour, double strength);

}  // namespace orv::artwork
