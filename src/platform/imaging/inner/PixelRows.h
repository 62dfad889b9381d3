#pragma once

#include <QImage>
#include <cstdint>

namespace orv {

// Rows of 24-bit pixels, bottom-up, as Picture.h tells.

// `image` is Format_RGB32.
void WriteRows(const QImage& image, std::uint8_t* rows, int bytes_per_row);
QImage ReadRows(const std::uint8_t* rows, int width, int height, int bytes_per_row);

}  // namespace orv
