#pragma once

#include <QImage>
#include <QRect>

#include "forms/Types.h"
#include "imaging/Picture.h"

// What stands on a picture.
namespace orv {

// The colour of a place in TestDatabase::GradientPicture.
constexpr Colour GradientAt(int x, int y) {
  return Rgb(x, y, 77);
}

// One pixel; -1 outside.
inline Colour PixelAt(const Picture& picture, int x, int y) {
  const QImage& image = picture.Image();
  if (!image.valid(x, y)) return -1;
  const QRgb pixel = image.pixel(x, y);
  return Rgb(qRed(pixel), qGreen(pixel), qBlue(pixel));
}

// The smallest rectangle around what differs between two pictures of one size; empty if nothing does.
inline QRect Difference(const Picture& a, const Picture& b) {
  QRect around;
  for (int y = 0; y < a.Height(); ++y) {
    for (int x = 0; x < a.Width(); ++x) {
      if (PixelAt(a, x, y) != PixelAt(b, x, y)) around |= QRect(x, y, 1, 1);
    }
  }
  return around;
}

}  // namespace orv
