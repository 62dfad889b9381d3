#pragma once

#include <cstdint>

namespace orv {

// What the pictures of one record may take in memory, so that no record takes more than 400 MB: while one
// lives, the pictures that LoadPictureFromField loads have 64 megapixels among them.
class PictureBudget {
 public:
  PictureBudget();
  ~PictureBudget();
  PictureBudget(const PictureBudget&) = delete;
  PictureBudget& operator=(const PictureBudget&) = delete;

  // Of the living object; the whole without one.
  static std::int64_t PixelsLeft();
  static void Spend(std::int64_t pixels);

 private:
  PictureBudget* former_;
  std::int64_t left_;
};

}  // namespace orv
