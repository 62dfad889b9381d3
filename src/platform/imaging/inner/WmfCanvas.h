#pragma once

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <variant>
#include <vector>

namespace orv {

struct WmfPen {
  Qt::PenStyle style = Qt::SolidLine;
  double width = 0;  // logical units; never drawn thinner than a pixel
  QColor colour = Qt::black;
  Qt::PenCapStyle cap = Qt::RoundCap;
  Qt::PenJoinStyle join = Qt::RoundJoin;
};

struct WmfFont {
  double height = 0;  // logical units; negative for the height of the letters without the inner leading
  double angle = 0;   // degrees, counter-clockwise
  int weight = 400;
  bool italic = false;
  bool underline = false;
  bool strike_out = false;
  QString face;
};

// An object that only takes its place in the table of objects: a palette or a region.
struct WmfPlaceholder {};
using WmfObject = std::variant<std::monostate, WmfPlaceholder, WmfPen, QBrush, WmfFont>;

// Blending of a bitmap, as far as it makes sense on a transparent ground.
enum class WmfBlend { kCopy, kMaskWhite, kMaskBlack };

// What a metafile draws on: the drawing state, the mapping from logical units to pixels, and the drawing
// itself. Without an image it only measures. All coordinates are logical units unless told otherwise.
// Each drawing takes its cost from one budget, so that no file of whatever content takes more than
// seconds; RuntimeError 481 when it is spent.
class WmfCanvas {
 public:
  // The rectangle `window` fills the image; its height may be negative, for a y axis that goes up. A pixel
  // of the finished picture is a square of `fineness` dots of the image, so that averaging them smooths all
  // edges and leaves no seam between neighbours.
  WmfCanvas(QImage* image, const QRectF& window, int fineness);

  struct State {
    QPointF origin;
    QSizeF extent;
    WmfPen pen;
    QBrush brush = Qt::white;
    WmfFont font;
    QColor text_colour = Qt::black;
    QColor back_colour = Qt::white;
    bool opaque_back = true;
    bool draws = true;  // false under the raster operation that leaves the ground as it is
    int align = 0;
    Qt::FillRule fill_rule = Qt::OddEvenFill;
    QPointF position;
    QRectF clip;  // dots
  };
  State state;

  void Save();
  void Restore(int level);  // negative: counted back from the last
  void ResetClip();
  void SetClip(const QRectF& clip);  // dots
  void IntersectClip(const QRectF& box);

  void Select(const WmfObject& object);

  void Polygons(const std::vector<QPolygonF>& polygons);
  void Polyline(const QPolygonF& line);
  void LineTo(const QPointF& end);
  void Rectangle(const QRectF& box, double corner_width, double corner_height);
  void Ellipse(const QRectF& box);
  enum class Arc { kOpen, kPie, kChord };
  void DrawArc(Arc kind, const QRectF& box, const QPointF& start, const QPointF& end);
  void Pixel(const QPointF& at, const QColor& colour);
  void Fill(const QRectF& box, const QBrush& brush);
  // `advances` holds the distance to the next character for each character, or nothing.
  void Text(const QPointF& at, const QString& text, const std::vector<double>& advances);
  // Negative sizes of `target` mirror the bitmap.
  void Bitmap(const QRectF& target, const QImage& bitmap, const QRect& source, WmfBlend blend);

  void Charge(double work);
  QRectF Bounds() const { return bounds_; }  // dots, of all that was drawn

 private:
  struct TextLayout;

  QPointF Map(const QPointF& point) const;
  QRectF Map(const QRectF& box) const;
  QPolygonF Map(const QPolygonF& points) const;
  double ScaleX() const { return size_.width() / state.extent.width(); }
  double ScaleY() const { return size_.height() / state.extent.height(); }
  bool Begin(const QRectF& bounds, double work);
  void Draw(QPainterPath fill, const QPainterPath& stroke);
  void PaintFill(const QPainterPath& path);
  QPen DevicePen() const;
  QBrush DeviceBrush(const QBrush& brush) const;
  QFont DeviceFont() const;
  TextLayout LayOut(const QString& text, const std::vector<double>& advances) const;

  QPainter painter_;
  QSizeF size_;  // dots
  double dot_;   // dots along a side of a pixel
  QFont last_font_;
  QRectF bounds_;
  std::vector<State> saved_;
  double budget_;
};

}  // namespace orv
