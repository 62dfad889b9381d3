#pragma once

#include <cstdint>

#include "imaging/Picture.h"

namespace orv {

// 24-bit pixels in the order blue, green, red, in rows that lie bottom-up: the lowest address is the
// last row of the image. `bytes_per_row` counts the padding.

// Fills a block of the picture's size; transparent parts over white. The block is the caller's.
void CopyToRows(const Picture& picture, std::uint8_t* rows, int bytes_per_row);
// A picture with a copy of the pixels.
Picture PictureFromRows(const std::uint8_t* rows, int width, int height, int bytes_per_row);

}  // namespace orv
