#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>
#include <optional>
#include <vector>

namespace orv::artwork {

// How a shape looks. Lengths are in the units of the shape, so that they grow and shrink with it.
struct Style {
  std::vector<QColor> paint{Qt::black};  // a gradient over the shape's rectangle
  double paint_angle = 90;               // degrees from the right, clockwise; 90 is top to bottom
  bool radial = false;                   // from the middle outward instead
  double relief = 0;                     // how far from the edge the shape is rounded
  double shine = 0;                      // highlight on what is rounded, 0 .. 1
  double rim = 0;                        // width of a light line on the side towards the light
  QColor rim_colour;
  double glow = 0;  // reach of a shine around the shape
  QColor glow_colour;
  double shadow = 0;  // softness of a shadow below the shape
  QColor shadow_colour;
  QPointF shadow_offset;
  double grain = 0;  // strength of a mottled texture, 0 .. 1
  double grain_size = 4;
  double soft = 0;  // blur
  double alpha = 1;
  QPainter::CompositionMode blend = QPainter::CompositionMode_SourceOver;
};

// A picture in the making, kept at several times its size so that edges come out smooth.
class Canvas {
 public:
  // A picture of that size, to be finished `scale` times as large.
  Canvas(int width, int height, int scale);

  // Paints the outline, given in the units of `transform`, in `style`.
  void Paint(const QPainterPath& outline);

  // What is painted between Begin and End is one layer, which then takes rim, glow, shadow, blur and
  // opacity of the style of Begin as a whole.
  void Begin();
  void End();

  // Fineness() times the size; premultiplied.
  QImage& Target() { return layers_.back().image; }
  int Fineness() const { return scale_ * smoothing_; }
  double Unit() const;  // pixels of the target for one unit of `transform`
  QImage Finished() const;

  QTransform transform;  // from the units of the shapes to pixels of the picture
  Style style;
  double light_angle = 225;          // where the light comes from, degrees clockwise from the right
  std::optional<QPainterPath> clip;  // in pixels of the target

 private:
  struct Layer {
    QImage image;
    Style style;
    double unit = 1;
  };
  void Compose(QImage shape, QPoint at, const Style& style, double unit);
  const int scale_;
  const int smoothing_;
  std::vector<Layer> layers_;
};

}  // namespace orv::artwork
