#include "forms/Surface.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "forms/inner/Palette.h"
#include "forms/inner/TextFace.h"

namespace orv {
namespace {

// No surface of a form comes near this; a size past it is a wrong number in a record.
constexpr double kMaxSide = 30000;

int Side(double pixels) {
  return static_cast<int>(std::clamp(RoundHalfEven(pixels), 0.0, kMaxSide));
}

}  // namespace

struct Surface::Bitmap {
  QImage image;
};

Surface::Surface(Surface* container) : SurfaceItem(container) {}

Surface::~Surface() {
  if (host_ != nullptr) host_->SurfaceGone();
}

int Surface::InsideWidth() const {
  return std::max(0, Side(width_) - 2 * border_);
}
int Surface::InsideHeight() const {
  return std::max(0, Side(height_) - 2 * border_);
}

// The bitmap without what was drawn: the colour, and the picture over it.
void Surface::Rebuild() {
  bitmap_.reset();
  Invalidate();
}

Surface::Bitmap& Surface::Persistent() const {
  if (bitmap_ == nullptr) {
    bitmap_ = std::make_unique<Bitmap>();
    QImage& image = bitmap_->image;
    const QImage& behind = picture_.Image();
    const QSize size(InsideWidth(), InsideHeight());
    if (behind.size() == size && behind.format() == QImage::Format_RGB32) {
      image = behind;  // shared until something is drawn
    } else {
      image = QImage(size, QImage::Format_RGB32);
      image.fill(ToQColor(back_));
      if (!image.isNull() && !behind.isNull()) QPainter(&image).drawImage(0, 0, behind);
    }
  }
  return *bitmap_;
}

void Surface::SetBorderStyle(int style) {
  if (style == border_) return;
  border_ = style;
  Rebuild();
}

void Surface::SetBackColor(Colour colour) {
  back_ = colour & 0xFFFFFF;
  Rebuild();
}

void Surface::SetWidth(double width) {
  if (ToPixels(width) == width_) return;
  SurfaceItem::SetWidth(width);
  Rebuild();
}

void Surface::SetHeight(double height) {
  if (ToPixels(height) == height_) return;
  SurfaceItem::SetHeight(height);
  Rebuild();
}

void Surface::SetPicture(const orv::Picture& picture) {
  picture_ = picture;
  if (auto_size_) {
    width_ = picture.IsEmpty() ? 0 : picture.Width() + 2 * border_;
    height_ = picture.IsEmpty() ? 0 : picture.Height() + 2 * border_;
  }
  Rebuild();
}

orv::Picture Surface::Image() const {
  return orv::Picture(Persistent().image);
}

int Surface::X(double value) const {
  return static_cast<int>(RoundHalfEven(scale_ == orv::ScaleMode::Twips ? value / kTwipsPerPixel : value));
}

int Surface::Y(double value) const {
  return X(value);
}

void Surface::Print(const QString& text) {
  const TextFace& face = TextFace::For(GetFont());
  QImage& image = Persistent().image;
  int y = Y(current_y_);
  // A line at the upper edge goes down as far as the marks of its letters need room.
  if (y >= 0 && y < face.Height()) y = std::max(y, face.Rise(text));
  if (!image.isNull()) face.Draw(image, X(current_x_), y, text, ForeColor());
  current_x_ = 0;
  current_y_ += TextHeight(text);
  InvalidatePixels();
}

double Surface::TextWidth(const QString& text) const {
  const int pixels = TextFace::For(GetFont()).Width(text);
  return scale_ == orv::ScaleMode::Twips ? pixels * kTwipsPerPixel : pixels;
}

qsizetype Surface::TextFitting(QStringView text, double width) const {
  return TextFace::For(GetFont()).Fitting(text,
                                          scale_ == orv::ScaleMode::Twips ? width / kTwipsPerPixel : width);
}

double Surface::TextHeight(const QString&) const {
  const int pixels = TextFace::For(GetFont()).Height();
  return scale_ == orv::ScaleMode::Twips ? pixels * kTwipsPerPixel : pixels;
}

void Surface::PaintPicture(const orv::Picture& picture, double x1, double y1) {
  if (picture.IsEmpty()) return;
  QPainter(&Persistent().image).drawImage(X(x1), Y(y1), picture.Image());
  InvalidatePixels();
}

void Surface::PaintPicture(const orv::Picture& picture, double x1, double y1, double width1, double height1) {
  if (picture.IsEmpty()) return;
  QPainter(&Persistent().image).drawImage(QRect(X(x1), Y(y1), X(width1), Y(height1)), picture.Image());
  InvalidatePixels();
}

void Surface::PaintPicture(const orv::Picture& picture, double x1, double y1, double width1, double height1,
                           double x2, double y2, double width2, double height2) {
  if (picture.IsEmpty() || X(width2) == 0 || Y(height2) == 0) return;
  const QRect whole(X(x2), Y(y2), X(width2), Y(height2));
  const QRect source = whole & picture.Image().rect();
  if (source.isEmpty()) return;
  const double scale_x = static_cast<double>(X(width1)) / whole.width();
  const double scale_y = static_cast<double>(Y(height1)) / whole.height();
  const QRectF target(X(x1) + (source.x() - whole.x()) * scale_x, Y(y1) + (source.y() - whole.y()) * scale_y,
                      source.width() * scale_x, source.height() * scale_y);
  QPainter(&Persistent().image).drawImage(target, picture.Image(), source);
  InvalidatePixels();
}

void Surface::LineB(double x1, double y1, double x2, double y2, Colour colour) {
  const QRect box = QRect(QPoint(X(x1), Y(y1)), QPoint(X(x2), Y(y2))).normalized();
  const QColor ink = ToQColor(colour);
  QPainter painter(&Persistent().image);
  painter.fillRect(box.left(), box.top(), box.width(), 1, ink);
  painter.fillRect(box.left(), box.bottom(), box.width(), 1, ink);
  painter.fillRect(box.left(), box.top(), 1, box.height(), ink);
  painter.fillRect(box.right(), box.top(), 1, box.height(), ink);
  painter.end();
  InvalidatePixels();
}

Colour Surface::GetPixel(int x, int y) const {
  const QImage& image = Persistent().image;
  if (!image.valid(x, y)) return -1;
  const QRgb rgb = image.pixel(x, y);
  return Rgb(qRed(rgb), qGreen(rgb), qBlue(rgb));
}

void Surface::SetPixel(int x, int y, Colour colour) {
  QImage& image = Persistent().image;
  if (image.valid(x, y)) image.setPixel(x, y, ToQColor(colour).rgb());
  InvalidatePixels();
}

void Surface::Draw(QPainter& painter) const {
  const int width = Side(width_);
  const int height = Side(height_);
  if (border_ != 0) {
    painter.fillRect(0, 0, width, height, Qt::black);
    painter.translate(border_, border_);
  }
  painter.setClipRect(0, 0, InsideWidth(), InsideHeight(), Qt::IntersectClip);
  painter.drawImage(0, 0, Persistent().image);
  // Labels lie below the surfaces, whatever the order in which they were made.
  for (const bool surfaces : {false, true}) {
    for (const SurfaceItem* item : items_) {
      if (!item->visible_ || surfaces != (dynamic_cast<const Surface*>(item) != nullptr)) continue;
      painter.save();
      painter.translate(RoundHalfEven(item->left_), RoundHalfEven(item->top_));
      item->Draw(painter);
      painter.restore();
    }
  }
}

orv::Picture Surface::Render() const {
  QImage image(Side(width_), Side(height_), QImage::Format_RGB32);
  if (image.isNull()) return {};
  QPainter painter(&image);
  Draw(painter);
  painter.end();
  return orv::Picture(image);
}

SurfaceItem* Surface::ItemAt(double x, double y) {
  if (SurfaceItem::ItemAt(x, y) == nullptr) return nullptr;
  const auto hit = [&](bool surfaces) -> SurfaceItem* {
    for (auto item = items_.rbegin(); item != items_.rend(); ++item) {
      if (surfaces != (dynamic_cast<Surface*>(*item) != nullptr)) continue;
      if (SurfaceItem* const found =
              (*item)->ItemAt(x - border_ - (*item)->left_, y - border_ - (*item)->top_)) {
        return found;
      }
    }
    return nullptr;
  };
  if (SurfaceItem* const surface = hit(true)) return surface;
  if (SurfaceItem* const label = hit(false)) return label;
  return this;
}

void Surface::Refresh() {
  Surface* root = this;
  while (root->Container() != nullptr) root = root->Container();
  if (root->host_ != nullptr) root->host_->RefreshNow();
}

}  // namespace orv
