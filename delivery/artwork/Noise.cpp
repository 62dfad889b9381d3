#include "artwork/Noise.h"

#include <algorithm>
#include <cmath>

namespace orv::artwork {

namespace {

// For `part` from 0 to 1, and `low` and `high` of one sign: std::lerp minds all others, and takes time for
// it.
double Between(double low, double high, double part) {
  return low + part * (high - low);
}

double Eased(double part) {
  return part * part * (3 - 2 * part);
}

}  // namespace

double Hash(std::int32_t x, std::int32_t y, int seed) {
  auto h = static_cast<std::uint32_t>(x) * 0x9E3779B1u ^ static_cast<std::uint32_t>(y) * 0x85EBCA77u ^
           static_cast<std::uint32_t>(seed) * 0xC2B2AE3Du;
  h = (h ^ (h >> 15)) * 0x2C1B3C6Du;
  h = (h ^ (h >> 12)) * 0x297A2D39u;
  h ^= h >> 15;
  return h / 4294967295.0;
}

double Step(double from, double to, double value) {
  const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
  return Eased(t);
}

double Noise(double x, double y, int seed) {
  const double fx = std::floor(x);
  const double fy = std::floor(y);
  const auto ix = static_cast<std::int32_t>(fx);
  const auto iy = static_cast<std::int32_t>(fy);
  const double u = Eased(x - fx);
  const double v = Eased(y - fy);
  const double top = Between(Hash(ix, iy, seed), Hash(ix + 1, iy, seed), u);
  const double bottom = Between(Hash(ix, iy + 1, seed), Hash(ix + 1, iy + 1, seed), u);
  return Between(top, bottom, v);
}

namespace {

template <typename Shape>
double Octaves(double x, double y, int seed, int octaves, Shape shape) {
  double sum = 0;
  double weight = 0.5;
  double total = 0;
  for (int i = 0; i < octaves; ++i) {
    sum += weight * shape(Noise(x, y, seed + i));
    total += weight;
    weight *= 0.5;
    // Turned a little for each octave, so that the lattice does not show.
    const double turned = 1.6 * x + 1.2 * y;
    y = 1.6 * y - 1.2 * x;
    x = turned;
  }
  return sum / total;
}

}  // namespace

double Fractal(double x, double y, int seed, int octaves) {
  return Octaves(x, y, seed, octaves, [](double n) { return n; });
}

double Crests(double x, double y, int seed, int octaves) {
  return Octaves(x, y, seed, octaves, [](double n) { return 1 - std::abs(2 * n - 1); });
}

}  // namespace orv::artwork
