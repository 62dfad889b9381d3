#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>

class QImage;

namespace orv {

struct Drawing;

// A decoded image, a value: copies share the pixels. The empty picture has no size and paints nothing.
class Picture {
 public:
  Picture() = default;  // the empty picture
  // For the platform's own rooms. Takes any format; pixels stay as they are and are shared.
  explicit Picture(const QImage& image);
  // One that keeps how it was drawn, which gives the same pixels when it is played.
  Picture(const QImage& image, std::shared_ptr<const Drawing> drawing);

  bool IsEmpty() const { return image_ == nullptr; }
  int Width() const;            // pixels
  int Height() const;           // pixels
  const QImage& Image() const;  // a null image for the empty picture
  // How it was drawn, shared with its copies; null for one that was loaded, or that nobody asked to keep.
  const std::shared_ptr<const Drawing>& HowDrawn() const { return drawing_; }

 private:
  std::shared_ptr<const QImage> image_;
  std::shared_ptr<const Drawing> drawing_;
};

// The empty picture.
Picture LoadPicture();
// A picture from the bytes of a BMP (1, 4, 8, 16, 24 or 32 bits, run-length too), JPG (grey, progressive,
// CMYK), GIF (first frame, transparent where the file says so), PNG, WebP (one that doesn't move; transparent
// parts of both over white) or WMF file (with or without a placeable header), told by their content. Bytes
// behind the end of the picture are ignored, and so are resolution and orientation tags. RuntimeError 481 for
// anything else, for a picture that is broken or cut short, and for one of more than 64 megapixels (32 with
// transparent parts) or with a side of more than 32767. Time and memory are bounded: beside the picture
// itself decoding takes at most 128 MB, which limits a progressive JPG, and as many scans as come to 640
// megapixels.
Picture LoadPicture(const QByteArray& bytes);
// The same with a bound on pixels of its own, below the common one.
Picture LoadPicture(const QByteArray& bytes, std::int64_t most_pixels);
// The whole picture, turned as the orientation tag of a JPG says.
Picture LoadUpright(const QByteArray& bytes);
// Whether the tag leaves it as it is.
bool IsUpright(const QByteArray& bytes);
// The bytes of a file; RuntimeError 53, 75 or 76 if it can't be read, 481 for more than any picture needs.
QByteArray ReadPictureFile(const QString& path);
// From a file, with the errors of both.
Picture LoadPicture(const QString& path);

// A part of a picture, which must lie within it.
Picture Cropped(const Picture& picture, int left, int top, int width, int height);

// A plain 24-bit Windows bitmap, transparent parts over white.
QByteArray BitmapFile(const Picture& picture);
// Writes it by ReplaceFile.
void SavePicture(const Picture& picture, const QString& path);

// 24-bit pixels in the order blue, green, red, in rows that lie bottom-up: the lowest address is the
// last row of the image. `bytes_per_row` counts the padding.

// Fills a block of the picture's size; transparent parts over white. The block is the caller's.
void CopyToRows(const Picture& picture, std::uint8_t* rows, int bytes_per_row);
// A picture with a copy of the pixels.
Picture PictureFromRows(const std::uint8_t* rows, int width, int height, int bytes_per_row);

}  // namespace orv
