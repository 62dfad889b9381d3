#include "imaging/inner/PixelRows.h"

namespace orv {

void WriteRows(const QImage& image, std::uint8_t* rows, int bytes_per_row) {
  const int width = image.width();
  for (int y = 0; y < image.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    std::uint8_t* to = rows + static_cast<std::ptrdiff_t>(image.height() - 1 - y) * bytes_per_row;
    for (int x = 0; x < width; ++x, ++from, to += 3) {
      to[0] = static_cast<std::uint8_t>(qBlue(*from));
      to[1] = static_cast<std::uint8_t>(qGreen(*from));
      to[2] = static_cast<std::uint8_t>(qRed(*from));
    }
  }
}

QImage ReadRows(const std::uint8_t* rows, int width, int height, int bytes_per_row) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
    const std::uint8_t* from = rows + static_cast<std::ptrdiff_t>(height - 1 - y) * bytes_per_row;
    for (int x = 0; x < width; ++x, from += 3) to[x] = qRgb(from[2], from[1], from[0]);
  }
  return image;
}

}  // namespace orv
