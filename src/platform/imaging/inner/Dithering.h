#pragma once

#include <QImage>
#include <array>
#include <cstdint>
#include <vector>

namespace orv {

inline constexpr int kMostColours = 256;  // of a palette
inline constexpr int kChannels = 3;
using Channels = std::array<int, kChannels>;  // red, green, blue

inline Channels ChannelsOf(QRgb colour) {
  return {qRed(colour), qGreen(colour), qBlue(colour)};
}

inline const QRgb* RowOf(const QImage& image, int y) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

// The index of a colour of the palette (1 to kMostColours) for each pixel of a picture of Format_RGB32, row
// by row, by diffusion of the error where the picture is smooth.
std::vector<std::uint8_t> Dither(const QImage& image, const std::vector<QRgb>& palette);

}  // namespace orv
