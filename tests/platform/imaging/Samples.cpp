#include "platform/imaging/Samples.h"

#include <cstdio>

#include <gif_lib.h>
#include <jpeglib.h>
#include <png.h>
#include <webp/encode.h>

#include <cmath>
#include <random>

namespace samples {
namespace {

int FiveBits(int v) {
  return (v * 31 + 127) / 255;
}

// The number that stands for the pixel in the file.
quint32 BmpNumber(const BmpShape& shape, int x, int y) {
  const QRgb c = BmpColour(shape.bits, x, y);
  switch (shape.bits) {
    case 16:
      if (shape.compression == 3)
        return FiveBits(qRed(c)) << 11 | FiveBits(qGreen(c)) << 6 | FiveBits(qBlue(c));
      return FiveBits(qRed(c)) << 10 | FiveBits(qGreen(c)) << 5 | FiveBits(qBlue(c));
    case 24:
      return c & 0xffffff;
    // With masks the order is turned round.
    case 32:
      return shape.compression == 3 ? quint32(qRed(c) | qGreen(c) << 8 | qBlue(c) << 16) : c & 0xffffff;
    default:
      return (x + 3 * y) % (1 << shape.bits);
  }
}

QByteArray BmpRow(const BmpShape& shape, int y) {
  QByteArray row((shape.width * shape.bits + 31) / 32 * 4, '\0');
  for (int x = 0; x < shape.width; ++x) {
    const quint32 number = BmpNumber(shape, x, y);
    if (shape.bits < 8) {
      row[x * shape.bits / 8] =
          char(row[x * shape.bits / 8] | number << (8 - shape.bits - x * shape.bits % 8));
    } else {
      for (int i = 0; i < shape.bits / 8; ++i) row[x * shape.bits / 8 + i] = char(number >> (8 * i));
    }
  }
  return row;
}

Bytes DibHeader(const BmpShape& shape) {
  Bytes out;
  out.U32(shape.header);
  if (shape.header == 12) return out.U16(shape.width).U16(shape.height).U16(1).U16(shape.bits);
  out.U32(shape.width).U32(shape.top_down ? -shape.height : shape.height).U16(1).U16(shape.bits);
  out.U32(shape.compression).U32(0).U32(2835).U32(1).U32(0).U32(0);
  if (shape.compression == 3 && shape.bits == 16) out.U32(0xf800).U32(0x07c0).U32(0x001f);
  if (shape.compression == 3 && shape.bits == 32) out.U32(0xff).U32(0xff00).U32(0xff0000);
  if (shape.header > 40) out.Raw(QByteArray(shape.header - out.data.size(), '\0'));
  return out;
}

QByteArray Palette(const BmpShape& shape) {
  Bytes out;
  for (int i = 0; shape.bits <= 8 && i < 1 << shape.bits; ++i) {
    const QRgb c = PaletteColour(i);
    out.U8(qBlue(c)).U8(qGreen(c)).U8(qRed(c));
    if (shape.header != 12) out.U8(0);
  }
  return out.data;
}

QByteArray BmpFile(const QByteArray& head, const QByteArray& pixels) {
  return Bytes()
      .Raw("BM")
      .U32(14 + head.size() + pixels.size())
      .U32(0)
      .U32(14 + head.size())
      .Raw(head + pixels)
      .data;
}

}  // namespace

QRgb PaletteColour(int index) {
  return qRgb(index * 37 % 256, 255 - index, index * 101 % 256);
}

QRgb BmpColour(int bits, int x, int y) {
  if (bits <= 8) return PaletteColour((x + 3 * y) % (1 << bits));
  return qRgb(x % 2 * 255, y % 2 * 255, (x + y) % 3 == 0 ? 255 : 0);
}

QByteArray Dib(const BmpShape& shape) {
  QByteArray out = DibHeader(shape).data + Palette(shape);
  for (int i = 0; i < shape.height; ++i) out += BmpRow(shape, shape.top_down ? i : shape.height - 1 - i);
  return out;
}

QByteArray Bmp(const BmpShape& shape) {
  const QByteArray head = DibHeader(shape).data + Palette(shape);
  return BmpFile(head, Dib(shape).mid(head.size()));
}

QByteArray RunLengthBmp(int bits, int width, int height, const QByteArray& codes) {
  const BmpShape shape{bits, 40, bits == 8 ? 1 : 2, false, width, height};
  return BmpFile(DibHeader(shape).data + Palette(shape), codes);
}

QByteArray Turned(QByteArray jpeg) {
  return jpeg.insert(2, QByteArray("\xff\xe1\0\x22"
                                   "Exif\0\0II\x2a\0\x8\0\0\0\1\0\x12\1\3\0\1\0\0\0\6\0\0\0\0\0\0\0",
                                   36));
}

QRgb JpegColour(const JpegShape& shape, int x, int y) {
  constexpr QRgb kQuarters[] = {0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff};
  const QRgb c = kQuarters[(x >= shape.width / 2) + 2 * (y >= shape.height / 2)];
  const int grey = int(std::lround(0.299 * qRed(c) + 0.587 * qGreen(c) + 0.114 * qBlue(c)));
  return shape.grey ? qRgb(grey, grey, grey) : c;
}

QByteArray Jpeg(const JpegShape& shape) {
  jpeg_compress_struct codec = {};
  jpeg_error_mgr errors;
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  unsigned char* out = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&codec, &out, &size);
  codec.image_width = shape.width;
  codec.image_height = shape.height;
  codec.input_components = shape.ink ? 4 : shape.grey ? 1 : 3;
  codec.in_color_space = shape.ink ? JCS_CMYK : shape.grey ? JCS_GRAYSCALE : JCS_RGB;
  jpeg_set_defaults(&codec);
  if (shape.ink_as_luma) jpeg_set_colorspace(&codec, JCS_YCCK);
  codec.comp_info[0].h_samp_factor = shape.sampling.width();
  codec.comp_info[0].v_samp_factor = shape.sampling.height();
  codec.restart_in_rows = shape.restarts ? 1 : 0;
  codec.write_Adobe_marker = shape.ink && shape.ink_marked;
  jpeg_set_quality(&codec, shape.quality, TRUE);
  if (shape.progressive) jpeg_simple_progression(&codec);
  jpeg_start_compress(&codec, TRUE);
  const QImage photo = shape.photo ? PhotoLike(shape.width, shape.height) : QImage();
  for (int y = 0; y < shape.height; ++y) {
    Bytes row;
    for (int x = 0; x < shape.width; ++x) {
      const QRgb c = shape.photo ? photo.pixel(x, y) : JpegColour(shape, x, y);
      const int turn = shape.ink && !shape.ink_marked ? 255 : 0;
      row.U8(qRed(c) ^ turn);
      if (!shape.grey) row.U8(qGreen(c) ^ turn).U8(qBlue(c) ^ turn);
      if (shape.ink) row.U8(255 ^ turn);
    }
    JSAMPROW rows[1] = {reinterpret_cast<JSAMPROW>(row.data.data())};
    jpeg_write_scanlines(&codec, rows, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  const QByteArray bytes(reinterpret_cast<char*>(out), qsizetype(size));
  std::free(out);
  return bytes;
}

QRgb GifColour(int x, int y) {
  constexpr QRgb kColours[] = {0xff102030, 0xffff0000, 0xff00ff00, 0xff3040ff};
  return kColours[(x + y) % 4];
}

QByteArray Gif(const GifShape& shape) {
  QByteArray bytes;
  GifFileType* gif = EGifOpen(
      &bytes,
      [](GifFileType* file, const GifByteType* data, int count) {
        static_cast<QByteArray*>(file->UserData)->append(reinterpret_cast<const char*>(data), count);
        return count;
      },
      nullptr);
  EGifSetGifVersion(gif, shape.transparent >= 0);
  ColorMapObject* map = GifMakeMapObject(4, nullptr);
  for (int i = 0; i < 4; ++i) {
    map->Colors[i] = {GifByteType(qRed(GifColour(i, 0))), GifByteType(qGreen(GifColour(i, 0))),
                      GifByteType(qBlue(GifColour(i, 0)))};
  }
  EGifPutScreenDesc(gif, shape.screen.width(), shape.screen.height(), 8, 0, map);
  for (int frame = 0; frame < shape.frames; ++frame) {
    if (shape.transparent >= 0) {
      const GifByteType control[] = {1, 0, 0, GifByteType(shape.transparent)};
      EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, control);
    }
    EGifPutImageDesc(gif, shape.frame.x(), shape.frame.y(), shape.frame.width(), shape.frame.height(),
                     shape.interlaced, nullptr);
    std::vector<int> order;
    for (const auto& [first, step] : std::vector<std::pair<int, int>>{{0, 8}, {4, 8}, {2, 4}, {1, 2}}) {
      for (int y = first; y < shape.frame.height(); y += step) order.push_back(y);
    }
    for (int i = 0; i < shape.frame.height(); ++i) {
      const int y = shape.interlaced ? order[i] : i;
      std::vector<GifPixelType> line;
      for (int x = 0; x < shape.frame.width(); ++x) line.push_back(GifPixelType((x + y + frame) % 4));
      EGifPutLine(gif, line.data(), int(line.size()));
    }
  }
  GifFreeMapObject(map);
  EGifCloseFile(gif, nullptr);
  return bytes;
}

Wmf& Wmf::Record(int function, std::initializer_list<int> words, const QByteArray& rest) {
  Bytes record;
  record.U32(3 + qsizetype(words.size()) + (rest.size() + 1) / 2).U16(function);
  for (const int word : words) record.U16(word);
  records_ += record.Raw(rest).data;
  if (rest.size() % 2 == 1) records_.append('\0');
  return *this;
}

Wmf& Wmf::Pen(int style, int width, QRgb c) {
  return Record(0x02FA, {style, width, 0, qRed(c) | qGreen(c) << 8, qBlue(c)});
}

Wmf& Wmf::Brush(QRgb c) {
  return Record(0x02FC, {0, qRed(c) | qGreen(c) << 8, qBlue(c), 0});
}

Wmf& Wmf::Window(int x, int y, int width, int height) {
  return Record(0x020B, {y, x}).Record(0x020C, {height, width});
}

QByteArray Wmf::Unplaced(bool ended) const {
  const QByteArray all = ended ? Bytes().Raw(records_).U32(3).U16(0).data : records_;
  return Bytes().U16(1).U16(9).U16(0x300).U32(9 + all.size() / 2).U16(16).U32(1000).U16(0).Raw(all).data;
}

QByteArray Wmf::Placeable(const QRect& box, int units_per_inch) const {
  Bytes out;
  out.U32(0x9AC6CDD7).U16(0).U16(box.left()).U16(box.top());
  out.U16(box.left() + box.width()).U16(box.top() + box.height()).U16(units_per_inch).U32(0).U16(0);
  return out.Raw(Unplaced()).data;
}

QImage Fading(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.setPixel(x, y, qRgba(20 * y % 256, 200, 40, x * 255 / (width - 1)));
  }
  return image;
}

QByteArray Png(const QImage& image, bool interlaced) {
  png_structp codec = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(codec);
  QByteArray bytes;
  png_set_write_fn(
      codec, &bytes,
      [](png_structp writer, png_bytep data, std::size_t size) {
        static_cast<QByteArray*>(png_get_io_ptr(writer))
            ->append(reinterpret_cast<const char*>(data), qsizetype(size));
      },
      nullptr);
  const bool deep = image.depth() == 64, grey = image.isGrayscale() && image.depth() == 8;
  const int type = grey                              ? PNG_COLOR_TYPE_GRAY
                   : deep || image.hasAlphaChannel() ? PNG_COLOR_TYPE_RGBA
                                                     : PNG_COLOR_TYPE_RGB;
  png_set_IHDR(codec, info, image.width(), image.height(), deep ? 16 : 8, type,
               interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_write_info(codec, info);
  const QImage rows = image.convertToFormat(grey                      ? QImage::Format_Grayscale8
                                            : deep                    ? QImage::Format_RGBA64
                                            : image.hasAlphaChannel() ? QImage::Format_RGBA8888
                                                                      : QImage::Format_RGB888);
  if (deep) png_set_swap(codec);
  const int passes = png_set_interlace_handling(codec);
  for (int pass = 0; pass < passes; ++pass) {
    for (int y = 0; y < rows.height(); ++y) png_write_row(codec, rows.constScanLine(y));
  }
  png_write_end(codec, info);
  png_destroy_write_struct(&codec, &info);
  return bytes;
}

QByteArray Webp(const QImage& image, bool lossless) {
  const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
  const uchar* const from = pixels.constBits();
  const int stride = int(pixels.bytesPerLine());
  std::uint8_t* out = nullptr;
  const std::size_t size = lossless
                               ? WebPEncodeLosslessBGRA(from, pixels.width(), pixels.height(), stride, &out)
                               : WebPEncodeBGRA(from, pixels.width(), pixels.height(), stride, 90, &out);
  const QByteArray bytes(reinterpret_cast<char*>(out), qsizetype(size));
  WebPFree(out);
  return bytes;
}

QImage PhotoLike(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  std::mt19937 grain(7);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const double hill = y > height * (0.55 + 0.1 * std::sin(x * 0.03)) ? 0.45 : 1;
      const auto tone = [&](double base, double wave) {
        return qBound(0, int(hill * (base + 60 * std::sin(wave)) + double(grain() % 13) - 6), 255);
      };
      image.setPixel(x, y,
                     qRgb(tone(150 + x * 0.2, y * 0.02), tone(120 + y * 0.3, x * 0.015),
                          tone(190 - y * 0.4, (x + y) * 0.01)));
    }
  }
  return image;
}

}  // namespace samples
