#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <functional>
#include <initializer_list>
#include <vector>

// Small files of each format, made byte by byte or by the format's own library.
namespace samples {

// Little-endian numbers one after the other.
class Bytes {
 public:
  Bytes& U8(int v) { return Add(v, 1); }
  Bytes& U16(int v) { return Add(v, 2); }
  Bytes& U32(qint64 v) { return Add(v, 4); }
  Bytes& Raw(const QByteArray& bytes) { return data.append(bytes), *this; }
  QByteArray data;

 private:
  Bytes& Add(qint64 v, int count) {
    for (int i = 0; i < count; ++i) data.append(char(v >> (8 * i) & 255));
    return *this;
  }
};

struct BmpShape {
  int bits = 24;
  int header = 40;
  int compression = 0;
  bool top_down = false;
  int width = 5;
  int height = 3;
};
// The colour that a sample of so many bits shows at a place.
QRgb BmpColour(int bits, int x, int y);
QByteArray Bmp(const BmpShape& shape);
// A bitmap of 4 or 8 bits whose pixels are the given codes; its palette is that of BmpColour.
QByteArray RunLengthBmp(int bits, int width, int height, const QByteArray& codes);
QRgb PaletteColour(int index);
// The same without the file header, as metafiles hold it.
QByteArray Dib(const BmpShape& shape);

struct JpegShape {
  int width = 40;
  int height = 24;
  bool grey = false;
  bool progressive = false;
  bool ink = false;          // four inks
  bool ink_as_luma = false;  // transformed
  bool ink_marked = true;    // by the marker that goes with inverted inks
  int quality = 95;
  QSize sampling{2, 2};   // pixels that share a colour, across and down
  bool photo = false;     // PhotoLike in place of the quarters
  bool restarts = false;  // a mark behind each row of blocks
};
// Four flat quarters: red, green, blue, white; with inks the same; in grey their brightness.
QByteArray Jpeg(const JpegShape& shape);
// With the tag that says "rotate by a quarter" in front of everything else.
QByteArray Turned(QByteArray jpeg);
QRgb JpegColour(const JpegShape& shape, int x, int y);

struct GifShape {
  QSize screen{8, 6};
  QRect frame{0, 0, 8, 6};
  int transparent = -1;
  bool interlaced = false;
  int frames = 1;
};
// Pixels count up through the palette of four along each row, from the row's number.
QByteArray Gif(const GifShape& shape);
QRgb GifColour(int x, int y);

class Wmf {
 public:
  Wmf& Record(int function, std::initializer_list<int> words, const QByteArray& rest = {});
  Wmf& Pen(int style, int width, QRgb colour);
  Wmf& Brush(QRgb colour);
  Wmf& Select(int object) { return Record(0x012D, {object}); }
  Wmf& Rectangle(int bottom, int right, int top, int left) {
    return Record(0x041B, {bottom, right, top, left});
  }
  Wmf& Window(int x, int y, int width, int height);
  QByteArray Unplaced(bool ended = true) const;
  QByteArray Placeable(const QRect& box, int units_per_inch) const;

 private:
  QByteArray records_;
};

// Half of it clear in steps, so that each pixel shows how it lies over white.
QImage Fading(int width, int height);
QByteArray Png(const QImage& image, bool interlaced = false);
QByteArray Webp(const QImage& image, bool lossless = true);

// Smooth shades, edges and grain.
QImage PhotoLike(int width, int height);

}  // namespace samples
