#pragma once

#include <QString>

namespace orv {

// Turns a bitmap file into a GIF file of the same size. Up to 256 colours stay as they are; of more, a
// palette is chosen and smooth areas are dithered. Reports by a flag and a text and never throws.
class GifControl {
 public:
  // Reads the bitmap at `bitmap_path` and writes the GIF at `gif_path` by ReplaceFile. `interlaced`
  // chooses the order of the rows in the file.
  void Convert(const QString& bitmap_path, const QString& gif_path, bool interlaced);

  bool Failed() const { return failed_; }  // of the last conversion
  const QString& ErrorText() const { return error_; }

 private:
  bool failed_ = false;
  QString error_;
};

}  // namespace orv
