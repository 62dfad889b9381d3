#include <algorithm>
#include <cstring>

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
  // Four bytes a pixel: those of Format_RGB32, or ink values if IsInk. Only the rows of the band are filled
  // in, but the picture is read to its end, and what is broken beyond the band fails too.
  bool ReadRows(uchar* pixels, qsizetype row_bytes, RowBand band);
  bool IsInk() const { return codec_.out_color_space == JCS_CMYK; }
  bool IsInkInverted() const { return codec_.saw_Adobe_marker; }

 private:
  void Read(uchar* pixels, qsizetype row_bytes, JDIMENSION end);
  void Skip(JDIMENSION end);
  bool IsWhole();

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

// On to the row `end`, into the picture.
void JpegReader::Read(uchar* pixels, qsizetype row_bytes, JDIMENSION end) {
  while (codec_.output_scanline < end) {
    JSAMPROW rows[8];
    for (int i = 0; i < 8; ++i) rows[i] = pixels + row_bytes * (qsizetype{codec_.output_scanline} + i);
    jpeg_read_scanlines(&codec_, rows, qMin(8U, end - codec_.output_scanline));
  }
}

void JpegReader::Skip(JDIMENSION end) {
  if (codec_.output_scanline < end) jpeg_skip_scanlines(&codec_, end - codec_.output_scanline);
}

// The end mark follows, behind nothing but coded pixels, or was read. To find it takes a hundredth of the
// time that decoding takes.
bool JpegReader::IsWhole() {
  if (jpeg_input_complete(&codec_) || codec_.unread_marker == JPEG_EOI) return true;
  const uchar* at = codec_.src->next_input_byte;
  const uchar* const end = at + codec_.src->bytes_in_buffer;
  while ((at = std::find(at, end, 0xff)) != end && ++at != end) {
    if (*at == JPEG_EOI) return true;
    const bool is_within_pixels = *at == 0 || *at == 0xff || (*at >= JPEG_RST0 && *at <= JPEG_RST0 + 7);
    if (!is_within_pixels) return false;
  }
  return false;
}

bool JpegReader::ReadRows(uchar* pixels, qsizetype row_bytes, RowBand band) {
  if (setjmp(errors_.escape) != 0) return false;
  jpeg_start_decompress(&codec_);
  Skip(static_cast<JDIMENSION>(band.first));
  Read(pixels, row_bytes, static_cast<JDIMENSION>(band.end));
  if (codec_.output_scanline < codec_.output_height && IsWhole()) return true;
  Read(pixels, row_bytes, codec_.output_height);
  jpeg_finish_decompress(&codec_);  // reads up to the end mark
  return true;
}

// Ink on white paper, in place. The writers that leave the marker store the inks inverted.
void InkToRgb(QImage* image, RowBand band, bool inverted) {
  for (int y = band.first; y < band.end; ++y) {
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

QImage DecodeJpeg(QByteArrayView bytes, RowBand band) {
  JpegReader reader(bytes);
  if (!reader.ReadHeader()) BadPicture();
  QImage image = NewImage(reader.Width(), reader.Height(), QImage::Format_RGB32);
  band.first = qBound(0, band.first, image.height());
  band.end = qBound(band.first, band.end, image.height());
  if (!reader.ReadRows(image.bits(), image.bytesPerLine(), band)) BadPicture();
  if (reader.IsInk()) InkToRgb(&image, band, reader.IsInkInverted());
  const auto whiten = [&](int first, int end) {
    if (first < end) std::memset(image.scanLine(first), 255, std::size_t(end - first) * image.bytesPerLine());
  };
  whiten(0, band.first);
  whiten(band.end, image.height());
  return image;
}

}  // namespace orv
