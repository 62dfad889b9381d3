#include "imaging/PngFile.h"

#include <png.h>

#include <QImage>
#include <csetjmp>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

// By measurement: of zlib's levels the quickest, and of the filters the one that is quick and gives small
// files.
constexpr int kCompression = 1;
constexpr int kFilters = PNG_FILTER_UP;

void AppendBytes(png_structp png, png_bytep bytes, std::size_t count) {
  static_cast<QByteArray*>(png_get_io_ptr(png))
      ->append(reinterpret_cast<const char*>(bytes), qsizetype(count));
}

[[noreturn]] void Escape(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}

class PngEncoder {
 public:
  PngEncoder() : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Escape, nullptr)) {
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
  }
  ~PngEncoder() { png_destroy_write_struct(&png_, &info_); }
  PngEncoder(const PngEncoder&) = delete;
  PngEncoder& operator=(const PngEncoder&) = delete;

  // A picture of Format_RGB32. False if the library failed.
  bool Encode(const QImage& image, QByteArray* bytes);

 private:
  png_structp png_;
  png_infop info_ = nullptr;
};

// Holds no object with a destructor, which the library's way out of an error would pass over.
bool PngEncoder::Encode(const QImage& image, QByteArray* bytes) {
  if (info_ == nullptr || setjmp(png_jmpbuf(png_)) != 0) return false;
  png_set_write_fn(png_, bytes, AppendBytes, nullptr);
  png_set_compression_level(png_, kCompression);
  png_set_filter(png_, PNG_FILTER_TYPE_BASE, kFilters);
  png_set_IHDR(png_, info_, static_cast<png_uint_32>(image.width()), static_cast<png_uint_32>(image.height()),
               8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_set_pHYs(png_, info_, kDotsPerMeter, kDotsPerMeter, PNG_RESOLUTION_METER);
  png_write_info(png_, info_);
  if (Q_BYTE_ORDER == Q_LITTLE_ENDIAN) png_set_bgr(png_);
  png_set_filler(png_, 0, Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? PNG_FILLER_AFTER : PNG_FILLER_BEFORE);
  for (int y = 0; y < image.height(); ++y) png_write_row(png_, image.constScanLine(y));
  png_write_end(png_, nullptr);
  return true;
}

}  // namespace

void SavePng(const Picture& picture, const QString& path) {
  if (picture.IsEmpty()) BadPicture();
  QByteArray bytes;
  if (!PngEncoder().Encode(OverWhite(picture.Image()), &bytes)) {
    throw RuntimeError(kErrInternal, QStringLiteral("The PNG picture could not be encoded"));
  }
  ReplaceFile(path, bytes);
}

}  // namespace orv
