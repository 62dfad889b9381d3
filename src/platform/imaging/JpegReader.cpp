#include "imaging/inner/Decoders.h"
#include "imaging/inner/JpegErrors.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

// A progressive picture costs a pass over all its blocks for every scan, however few bytes that scan has, and
// it lies in memory as coefficients, of two bytes, until the last scan is read.
constexpr int kMaxScans = 64;
constexpr qint64 kMaxScannedPixels = 10 * kMaxPixels;
constexpr long kMaxCoefficientBytes = 128'000'000;
constexpr J_COLOR_SPACE kRgb32 =
    Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRA : JCS_EXT_ARGB;  // the bytes of QImage::Format_RGB32

class JpegReader {
 public:
  explicit JpegReader(QByteArrayView bytes) : bytes_(bytes) {}
  ~JpegReader() { jpeg_destroy_decompress(&codec_); }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;

  bool ReadHeader();
  qint64 Width() const { return codec_.image_width; }
  qint64 Height() const { return codec_.image_height; }
  // Four bytes a pixel: those of Format_RGB32, or ink values if IsInk.
  bool ReadRows(uchar* pixels, qsizetype row_bytes);
  bool IsInk() const { return codec_.out_color_space == JCS_CMYK; }
  bool IsInkInverted() const { return codec_.saw_Adobe_marker; }

 private:
  static void LimitScans(j_common_ptr codec) {
    const auto& picture = *reinterpret_cast<j_decompress_ptr>(codec);
    const qint64 pixels = qint64{picture.image_width} * picture.image_height;
    if (picture.input_scan_number > kMaxScans || picture.input_scan_number * pixels > kMaxScannedPixels) {
      JpegErrors::Escape(codec);
    }
  }

  QByteArrayView bytes_;
  JpegErrors errors_;
  jpeg_progress_mgr progress_ = {};
  jpeg_decompress_struct codec_ = {};
};

bool JpegReader::ReadHeader() {
  codec_.err = &errors_;
  if (setjmp(errors_.escape) != 0) return false;
  jpeg_create_decompress(&codec_);
  progress_.progress_monitor = LimitScans;
  codec_.progress = &progress_;
  codec_.mem->max_memory_to_use = kMaxCoefficientBytes;  // the library has no other place and gives up
  jpeg_mem_src(&codec_, reinterpret_cast<const uchar*>(bytes_.data()),
               static_cast<unsigned long>(bytes_.size()));
  jpeg_read_header(&codec_, TRUE);
  const bool ink = codec_.jpeg_color_space == JCS_CMYK || codec_.jpeg_color_space == JCS_YCCK;
  codec_.out_color_space = ink ? JCS_CMYK : kRgb32;
  return codec_.jpeg_color_space != JCS_UNKNOWN;
}

bool JpegReader::ReadRows(uchar* pixels, qsizetype row_bytes) {
  if (setjmp(errors_.escape) != 0) return false;
  jpeg_start_decompress(&codec_);
  while (codec_.output_scanline < codec_.output_height) {
    JSAMPROW rows[8];
    for (int i = 0; i < 8; ++i) rows[i] = pixels + row_bytes * (qsizetype{codec_.output_scanline} + i);
    jpeg_read_scanlines(&codec_, rows, qMin(8U, codec_.output_height - codec_.output_scanline));
  }
  jpeg_finish_decompress(&codec_);  // reads up to the end mark
  return true;
}

// Ink on white paper, in place. The writers that leave the marker store the inks inverted.
void InkToRgb(QImage* image, bool inverted) {
  for (int y = 0; y < image->height(); ++y) {
    uchar* pixel = image->scanLine(y);
    for (int x = 0; x < image->width(); ++x, pixel += 4) {
      const auto light = [&](int i) { return inverted ? pixel[i] : 255 - pixel[i]; };
      const auto mixed = [&](int i) { return (light(i) * light(3) + 127) / 255; };
      const QRgb colour = qRgb(mixed(0), mixed(1), mixed(2));
      *reinterpret_cast<QRgb*>(pixel) = colour;
    }
  }
}

}  // namespace

QImage DecodeJpeg(QByteArrayView bytes) {
  JpegReader reader(bytes);
  if (!reader.ReadHeader()) BadPicture();
  QImage image = NewImage(reader.Width(), reader.Height(), QImage::Format_RGB32);
  if (!reader.ReadRows(image.bits(), image.bytesPerLine())) BadPicture();
  if (reader.IsInk()) InkToRgb(&image, reader.IsInkInverted());
  return image;
}

}  // namespace orv
