#pragma once

#include <vector>

namespace orv {

// The rows of a GIF picture in the order in which the file holds them.
inline std::vector<int> GifRowOrder(int height, bool interlaced) {
  std::vector<int> rows;
  rows.reserve(height);
  const auto add = [&](int first, int step) {
    for (int y = first; y < height; y += step) rows.push_back(y);
  };
  if (!interlaced) {
    add(0, 1);
  } else {
    add(0, 8);
    add(4, 8);
    add(2, 4);
    add(1, 2);
  }
  return rows;
}

}  // namespace orv
