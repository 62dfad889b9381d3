#include "imaging/inner/NewImage.h"

#include <QPainter>
#include <utility>

#include "base/RuntimeError.h"

namespace orv {
namespace {

thread_local qint64 most_pixels = kMaxPixels;

}  // namespace

PixelLimit::PixelLimit(qint64 pixels) : former_(std::exchange(most_pixels, pixels)) {}

PixelLimit::~PixelLimit() {
  most_pixels = former_;
}

void BadPicture() {
  throw RuntimeError(kErrInvalidPicture);
}

void CheckSize(qint64 width, qint64 height) {
  if (width <= 0 || height <= 0 || width > most_pixels || height > most_pixels ||
      width * height > most_pixels) {
    BadPicture();
  }
}

void CheckSide(int width, int height) {
  constexpr int kMaxSide = 32767;
  if (width > kMaxSide || height > kMaxSide) BadPicture();
}

QImage NewImage(qint64 width, qint64 height, QImage::Format format) {
  CheckSize(width, height);
  QImage image(static_cast<int>(width), static_cast<int>(height), format);
  if (image.isNull()) BadPicture();
  return image;
}

QImage OverWhite(const QImage& image) {
  if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_RGB32);
  QImage result = NewImage(image.width(), image.height(), QImage::Format_RGB32);
  result.fill(Qt::white);
  QPainter(&result).drawImage(result.rect(), image);
  return result;
}

}  // namespace orv
