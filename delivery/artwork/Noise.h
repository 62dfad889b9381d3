#pragma once

#include <cstdint>

namespace orv::artwork {

// Repeatable noise: the same numbers on every run and every machine.

// 0 .. 1, one value for each pair and seed.
double Hash(std::int32_t x, std::int32_t y, int seed);
// 0 .. 1, smooth, with one bump about each unit.
double Noise(double x, double y, int seed);
// 0 .. 1, the sum of `octaves` finer and finer noises.
double Fractal(double x, double y, int seed, int octaves = 5);
// 0 .. 1, the same with sharp crests, as of mountains.
double Crests(double x, double y, int seed, int octaves = 5);
// 0 below `from`, 1 above `to`, smooth between.
double Step(double from, double to, double value);

// A running sequence of numbers 0 .. 1.
class Random {
 public:
  explicit Random(int seed) : seed_(seed) {}
  double Next() { return Hash(count_++, 7919, seed_); }
  double Between(double low, double high) { return low + (high - low) * Next(); }

 private:
  int seed_;
  int count_ = 0;
};

}  // namespace orv::artwork
