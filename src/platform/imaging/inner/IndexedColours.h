#pragma once

#include <QImage>
#include <cstdint>
#include <vector>

#include "imaging/inner/Dithering.h"

namespace orv {

// A picture of at most 256 colours.
struct IndexedImage {
  int width = 0;
  int height = 0;
  std::vector<QRgb> palette;
  std::vector<std::uint8_t> pixels;  // row by row, each the index of a colour
};

// Takes a picture of Format_RGB32. One of at most 256 colours stays as it is; of another the palette is
// chosen by its colours, and smooth areas are dithered. RuntimeError 51 if there is no room.
IndexedImage ReduceColours(const QImage& image);

}  // namespace orv
