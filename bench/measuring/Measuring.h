#pragma once

#include <functional>
#include <vector>

namespace orv {

// The time of one action on the wall clock, in milliseconds.
double Milliseconds(const std::function<void()>& action);

// The value below which `share` (0 to 1) of the values lie.
double Percentile(std::vector<double> values, double share);
double Median(const std::vector<double>& values);

// Prints a ratio beside its goal; false if it is above.
bool PrintRatio(const char* what, double ratio, double goal);

}  // namespace orv
