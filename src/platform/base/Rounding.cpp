#include "base/Rounding.h"

#include <cmath>
#include <limits>

#include "base/RuntimeError.h"

namespace orv {
namespace {

template <class Integer>
Integer Checked(double rounded) {
  if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
    throw RuntimeError(kErrOverflow);
  }
  return static_cast<Integer>(rounded);
}

}  // namespace

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double fraction = value - below;
  if (fraction < 0.5) return below;
  if (fraction > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

std::int16_t ToInt16(double value) {
  return Checked<std::int16_t>(RoundHalfEven(value));
}
std::int32_t ToInt32(double value) {
  return Checked<std::int32_t>(RoundHalfEven(value));
}
std::int32_t Int(double value) {
  return Checked<std::int32_t>(std::floor(value));
}

}  // namespace orv
