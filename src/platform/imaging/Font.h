#pragma once

#include <QString>
#include <cstdint>

namespace orv {

// A 24-bit colour in a 32-bit integer with red in the low byte, as the database keeps colours.
using Colour = std::int32_t;
constexpr Colour Rgb(int red, int green, int blue) {
  return red | green << 8 | blue << 16;
}
inline constexpr Colour kBlack = 0;
inline constexpr Colour kWhite = 0xFFFFFF;

struct Font {
  QString Name;
  double Size = 7;  // points
  bool Bold = false;
  bool Italic = false;
  friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace orv
