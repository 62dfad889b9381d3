#pragma once

#include <QByteArrayView>
#include <QImage>
#include <array>

namespace orv {

class ByteReader;

// A device-independent bitmap of 1, 4, 8, 16, 24 or 32 bits, run-length coded or not, as it lies in a
// bitmap file behind the file header and in the records of a metafile. An alpha channel is ignored, as
// the format's older headers have none and many writers leave it zero. RuntimeError 481 if it is broken.
class Dib {
 public:
  // `bytes` begins with the information header and must outlive the object; the pixels lie at the offset
  // `pixels_at`, or right behind the palette where that is 0.
  Dib(QByteArrayView bytes, qint64 pixels_at);

  qint64 Width() const { return width_; }
  qint64 Height() const { return height_; }
  QImage Decode() const;  // Format_RGB32

 private:
  struct Channel {
    quint32 mask = 0;
    int shift = 0;
    quint32 max = 0;
    int Of(quint32 pixel) const;
  };

  void ReadHeader(ByteReader* in);
  void ReadMasks(ByteReader* in, quint32 header_size);
  void ReadPalette(ByteReader* in, qint64 pixels_at);
  void SetMasks(quint32 red, quint32 green, quint32 blue);
  void DecodeRow(const uchar* from, QRgb* to) const;
  void DecodeRuns(QImage* image) const;

  qint64 width_ = 0;
  qint64 height_ = 0;
  bool top_down_ = false;
  int bits_ = 0;
  quint32 compression_ = 0;
  quint32 colours_ = 0;  // entries of the palette
  int entry_bytes_ = 4;
  std::array<Channel, 3> channels_;
  std::array<QRgb, 256> palette_;
  QByteArrayView pixels_;
};

}  // namespace orv
