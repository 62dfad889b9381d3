#pragma once

#include <cstdint>

namespace orv {

// What the pictures of one record may take in memory, so that no record takes more than 400 MB: while one
// lives, the pictures that LoadPictureFromField loads have 64 megapixels among them, and less where the file
// of one, which lies beside it while it is decoded, is as large as bitmaps are.
class PictureBudget {
 public:
  PictureBudget();
  ~PictureBudget();
  PictureBudget(const PictureBudget&) = delete;
  PictureBudget& operator=(const PictureBudget&) = delete;

  // For a picture out of a file of so many bytes: of the living object; the whole without one.
  static std::int64_t PixelsLeft(std::int64_t file_bytes);
  static void Spend(std::int64_t pixels);

 private:
  PictureBudget* former_;
  std::int64_t left_;
};

}  // namespace orv
