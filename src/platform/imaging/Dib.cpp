#include "imaging/inner/Dib.h"

#include <QtEndian>
#include <algorithm>
#include <bit>

#include "imaging/inner/ByteReader.h"
#include "imaging/inner/Decoders.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

enum Compression : quint32 { kPlain = 0, kRle8 = 1, kRle4 = 2, kBitFields = 3, kAlphaBitFields = 6 };

constexpr quint32 kCoreHeader = 12;
constexpr quint32 kInfoHeader = 40;
constexpr quint32 kOs2Header = 64;  // gives the compressions from 3 on another meaning
constexpr int kFileHeader = 14;

bool IsHeaderSize(quint32 size) {
  constexpr std::array<quint32, 7> kSizes = {kCoreHeader, kInfoHeader, 52, 56, kOs2Header, 108, 124};
  return std::find(kSizes.begin(), kSizes.end(), size) != kSizes.end();
}

bool AreBitsFor(quint32 compression, int bits) {
  switch (compression) {
    case kPlain:
      return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case kRle8:
      return bits == 8;
    case kRle4:
      return bits == 4;
    case kBitFields:
    case kAlphaBitFields:
      return bits == 16 || bits == 32;
    default:
      return false;
  }
}

}  // namespace

int Dib::Channel::Of(quint32 pixel) const {
  if (max == 0) return 0;
  return static_cast<int>((quint64{(pixel & mask) >> shift} * 255 + max / 2) / max);
}

Dib::Dib(QByteArrayView bytes, qint64 pixels_at) {
  ByteReader in(bytes);
  ReadHeader(&in);
  ReadPalette(&in, pixels_at);
  if (pixels_at > in.At()) in.Skip(pixels_at - in.At());
  pixels_ = in.TakeRest();
}

void Dib::ReadHeader(ByteReader* in) {
  const quint32 size = in->U32();
  if (!IsHeaderSize(size)) BadPicture();
  if (size == kCoreHeader) {
    width_ = in->U16();
    height_ = in->U16();
    entry_bytes_ = 3;
  } else {
    width_ = in->I32();
    height_ = in->I32();
  }
  in->Skip(2);  // planes
  bits_ = in->U16();
  if (size != kCoreHeader) {
    compression_ = in->U32();
    in->Skip(12);  // size of the image, resolution
    colours_ = in->U32();
    in->Skip(4);
  }
  top_down_ = height_ < 0;
  height_ = std::abs(height_);
  CheckSize(width_, height_);
  if (!AreBitsFor(compression_, bits_) || (size == kOs2Header && compression_ > kRle4)) BadPicture();
  if (top_down_ && (compression_ == kRle8 || compression_ == kRle4)) BadPicture();
  ReadMasks(in, size);
}

void Dib::ReadMasks(ByteReader* in, quint32 header_size) {
  if (bits_ == 16) SetMasks(0x7c00, 0x03e0, 0x001f);
  if (bits_ == 32) SetMasks(0xff0000, 0x00ff00, 0x0000ff);
  qint64 rest = header_size > kInfoHeader ? header_size - kInfoHeader : 0;
  if (compression_ == kBitFields || compression_ == kAlphaBitFields) {
    const quint32 red = in->U32();
    const quint32 green = in->U32();
    SetMasks(red, green, in->U32());
    // The older header has its masks behind it.
    rest = rest > 0 ? rest - 12 : (compression_ == kAlphaBitFields ? 4 : 0);
  }
  in->Skip(rest);
}

void Dib::SetMasks(quint32 red, quint32 green, quint32 blue) {
  const auto channel = [](quint32 mask) {
    const int shift = mask == 0 ? 0 : std::countr_zero(mask);
    return Channel{mask, shift, mask >> shift};
  };
  channels_ = {channel(red), channel(green), channel(blue)};
}

void Dib::ReadPalette(ByteReader* in, qint64 pixels_at) {
  palette_.fill(qRgb(0, 0, 0));
  if (bits_ > 8) {
    // A palette of such a picture is only a hint for displays.
    if (pixels_at == 0) in->Skip(qint64{colours_} * entry_bytes_);
    return;
  }
  const quint32 most = 1U << bits_;
  qint64 count = colours_ == 0 ? most : std::min(colours_, most);
  // Some writers tell of a full palette and store fewer colours.
  if (pixels_at > in->At()) count = std::min(count, (pixels_at - in->At()) / entry_bytes_);
  for (qint64 i = 0; i < count; ++i) {
    const QByteArrayView entry = in->Take(entry_bytes_);
    palette_[i] = qRgb(uchar(entry[2]), uchar(entry[1]), uchar(entry[0]));
  }
}

QImage Dib::Decode() const {
  QImage image = NewImage(width_, height_, QImage::Format_RGB32);
  if (compression_ == kRle8 || compression_ == kRle4) {
    DecodeRuns(&image);
    return image;
  }
  const qint64 row = (width_ * bits_ + 31) / 32 * 4;
  // The last row may lack its padding.
  if (pixels_.size() < row * (height_ - 1) + (width_ * bits_ + 7) / 8) BadPicture();
  for (qint64 y = 0; y < height_; ++y) {
    const qint64 line = top_down_ ? y : height_ - 1 - y;
    DecodeRow(reinterpret_cast<const uchar*>(pixels_.data()) + row * y,
              reinterpret_cast<QRgb*>(image.scanLine(static_cast<int>(line))));
  }
  return image;
}

void Dib::DecodeRow(const uchar* from, QRgb* to) const {
  const auto masked = [this](quint32 pixel) {
    return qRgb(channels_[0].Of(pixel), channels_[1].Of(pixel), channels_[2].Of(pixel));
  };
  switch (bits_) {
    case 1:
      for (qint64 x = 0; x < width_; ++x) to[x] = palette_[from[x / 8] >> (7 - x % 8) & 1];
      break;
    case 4:
      for (qint64 x = 0; x < width_; ++x) to[x] = palette_[from[x / 2] >> (x % 2 == 0 ? 4 : 0) & 15];
      break;
    case 8:
      for (qint64 x = 0; x < width_; ++x) to[x] = palette_[from[x]];
      break;
    case 16:
      for (qint64 x = 0; x < width_; ++x) to[x] = masked(qFromLittleEndian<quint16>(from + 2 * x));
      break;
    case 24:
      for (qint64 x = 0; x < width_; ++x) to[x] = qRgb(from[3 * x + 2], from[3 * x + 1], from[3 * x]);
      break;
    default:
      for (qint64 x = 0; x < width_; ++x) to[x] = masked(qFromLittleEndian<quint32>(from + 4 * x));
  }
}

// Pairs of a count and a value; a count of 0 makes the value a command: 0 ends the row, 1 the picture,
// 2 moves, and anything more is the number of pixels that follow one by one. Pixels that are passed over
// show the first colour.
void Dib::DecodeRuns(QImage* image) const {
  image->fill(palette_[0]);
  ByteReader in(pixels_);
  const bool nibbles = compression_ == kRle4;
  qint64 x = 0;
  qint64 y = 0;
  const auto put = [&](const auto& index_of, int count) {
    auto* row = reinterpret_cast<QRgb*>(image->scanLine(static_cast<int>(height_ - 1 - y)));
    for (int i = 0; i < count && x + i < width_; ++i) row[x + i] = palette_[index_of(i)];
    x += count;
  };
  const auto nibble = [](int byte, int i) { return i % 2 == 0 ? byte >> 4 : byte & 15; };
  while (y < height_) {
    if (in.Left() == 0 && y == height_ - 1 && x >= width_) return;
    const int count = in.U8();
    const int value = in.U8();
    if (count > 0) {
      put([&](int i) { return nibbles ? nibble(value, i) : value; }, count);
    } else if (value == 0) {
      x = 0;
      ++y;
    } else if (value == 1) {
      return;
    } else if (value == 2) {
      x += in.U8();
      y += in.U8();
    } else {
      const QByteArrayView run = in.Take(nibbles ? (value + 1) / 2 : value);
      put([&](int i) { return nibbles ? nibble(uchar(run[i / 2]), i) : uchar(run[i]); }, value);
      if (run.size() % 2 == 1 && in.Left() > 0) in.Skip(1);
    }
  }
}

QImage DecodeBmp(QByteArrayView bytes) {
  ByteReader in(bytes);
  in.Skip(10);
  const qint64 pixels_at = qint64{in.U32()} - kFileHeader;
  return Dib(in.TakeRest(), std::max<qint64>(pixels_at, 0)).Decode();
}

}  // namespace orv
