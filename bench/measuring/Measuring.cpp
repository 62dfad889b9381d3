#include "measuring/Measuring.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace orv {

double Milliseconds(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Percentile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  const auto index = static_cast<std::size_t>(share * static_cast<double>(values.size()));
  return values[std::min(index, values.size() - 1)];
}

double Median(const std::vector<double>& values) {
  return Percentile(values, 0.5);
}

bool PrintRatio(const char* what, double ratio, double goal) {
  const bool met = ratio <= goal;
  std::printf("%-72s %6.2f  (at most %.2f) %s\n", what, ratio, goal, met ? "ok" : "MISSED");
  return met;
}

}  // namespace orv
