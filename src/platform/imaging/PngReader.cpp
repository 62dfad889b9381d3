#include <png.h>

#include "imaging/inner/Decoders.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

constexpr png_uint_32 kRgb32 = Q_BYTE_ORDER == Q_LITTLE_ENDIAN
                                   ? PNG_FORMAT_BGRA
                                   : PNG_FORMAT_ARGB;  // the bytes of QImage::Format_ARGB32

class PngReader {
 public:
  PngReader() { image_.version = PNG_IMAGE_VERSION; }
  ~PngReader() { png_image_free(&image_); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  QImage Read(QByteArrayView bytes) {
    const auto size = static_cast<std::size_t>(bytes.size());
    if (png_image_begin_read_from_memory(&image_, bytes.data(), size) == 0) BadPicture();
    const bool transparent = (image_.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    QImage image =
        NewImage(image_.width, image_.height, transparent ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    image_.format = kRgb32;
    // Deep pixels are no other colours than shallow ones.
    image_.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    if (png_image_finish_read(&image_, nullptr, image.bits(), static_cast<png_int_32>(image.bytesPerLine()),
                              nullptr) == 0) {
      BadPicture();
    }
    return OverWhite(image);
  }

 private:
  png_image image_ = {};
};

}  // namespace

QImage DecodePng(QByteArrayView bytes) {
  return PngReader().Read(bytes);
}

}  // namespace orv
