#pragma once

#include <limits>

namespace orv {

// Rows of a picture from `first` up to and without `end`; either may lie beyond the picture.
struct RowBand {
  int first = 0;
  int end = std::numeric_limits<int>::max();
};

}  // namespace orv
