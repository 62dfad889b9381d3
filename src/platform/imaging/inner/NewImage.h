#pragma once

#include <QImage>

namespace orv {

inline constexpr qint64 kMaxPixels = 64'000'000;
inline constexpr int kDotsPerMeter = 3780;  // 96 an inch

// A lower bound than kMaxPixels for what this thread decodes, as long as one lives.
class PixelLimit {
 public:
  explicit PixelLimit(qint64 pixels);
  ~PixelLimit();
  PixelLimit(const PixelLimit&) = delete;
  PixelLimit& operator=(const PixelLimit&) = delete;

 private:
  qint64 former_;
};

// RuntimeError 481.
[[noreturn]] void BadPicture();
// RuntimeError 481 if a side is not positive or the area is more than the bound.
void CheckSize(qint64 width, qint64 height);
// RuntimeError 481 for a side that 16 bits can't measure.
void CheckSide(int width, int height);
// An image after CheckSize, its pixels not set.
QImage NewImage(qint64 width, qint64 height, QImage::Format format);
// The picture over white where it is transparent, as Format_RGB32.
QImage OverWhite(const QImage& image);

}  // namespace orv
