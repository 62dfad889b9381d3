#pragma once

#include <cstdint>

namespace orv {

// The nearest integer, a half going to the even neighbour: 0.5 -> 0, 1.5 -> 2, -0.5 -> 0.
double RoundHalfEven(double value);

// Rounded half to even; RuntimeError 6 (overflow) outside the range of the type and for NaN.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);

// The greatest integer not above the value, range-checked like ToInt32: Int(-0.5) is -1.
std::int32_t Int(double value);

// 15 twips are one pixel, on every screen: stored offsets keep their meaning between machines, and a
// dense display scales the finished window and never these numbers.
inline constexpr int kTwipsPerPixel = 15;

}  // namespace orv
