#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "imaging/inner/ByteReader.h"
#include "imaging/inner/Decoders.h"
#include "imaging/inner/NewImage.h"
#include "imaging/inner/WmfCanvas.h"
#include "imaging/inner/WmfFields.h"
#include "imaging/inner/WmfPlayer.h"

namespace orv {
namespace {

constexpr quint32 kPlaceableKey = 0x9AC6CDD7;
constexpr qsizetype kPlaceableHeader = 22;
constexpr qsizetype kHeader = 18;
constexpr double kDotsPerInch = 96;
constexpr double kMaxUnplacedSide = 2048;  // pixels
constexpr qint64 kMaxFineDots = 16'000'000;

bool StartsWithHeader(QByteArrayView bytes) {
  if (bytes.size() < kHeader) return false;
  ByteReader in(bytes);
  const int type = in.U16();
  const int words = in.U16();
  const int version = in.U16();
  return (type == 1 || type == 2) && words == kHeader / 2 && (version == 0x100 || version == 0x300);
}

bool IsPlaceable(QByteArrayView bytes) {
  return bytes.size() >= kPlaceableHeader && ByteReader(bytes).U32() == kPlaceableKey;
}

// The records up to the one that ends the file; what stands behind it is no part of the picture.
std::vector<WmfRecord> ReadRecords(QByteArrayView bytes) {
  ByteReader in(bytes);
  in.Skip(kHeader);
  std::vector<WmfRecord> records;
  for (;;) {
    constexpr qsizetype kRecordHeader = 6;
    const qint64 size = qint64{in.U32()} * 2;
    const quint16 function = in.U16();
    if (size < kRecordHeader) BadPicture();
    if (function == WmfFunction::kEnd) return records;
    records.push_back({function, in.Take(size - kRecordHeader)});
  }
}

// How a metafile lies on its image.
struct Frame {
  QSizeF size;    // pixels
  QRectF window;  // logical units
  bool fixed = false;
};

Frame PlaceableFrame(QByteArrayView bytes) {
  ByteReader in(bytes);
  in.Skip(6);
  const double left = in.I16();
  const double top = in.I16();
  const double right = in.I16();
  const double bottom = in.I16();
  const int inch = in.U16();
  if (inch == 0) BadPicture();
  const QRectF window(QPointF(left, top), QPointF(right, bottom));
  const double scale = kDotsPerInch / inch;
  return {{std::abs(window.width()) * scale, std::abs(window.height()) * scale}, window};
}

// Units an inch of the mapping mode that the file sets first; a pixel where it sets none with a fixed unit.
double UnitsPerInch(const std::vector<WmfRecord>& records) {
  constexpr std::array<double, 7> kUnits = {0, kDotsPerInch, 254, 2540, 100, 1000, 1440};
  for (const WmfRecord& record : records) {
    if (record.function != WmfFunction::kSetMapMode) continue;
    const std::size_t mode = ByteReader(record.parameters).U16();
    return mode >= 1 && mode < kUnits.size() ? kUnits[mode] : kDotsPerInch;
  }
  return kDotsPerInch;
}

QRectF Measure(const std::vector<WmfRecord>& records) {
  WmfCanvas canvas(nullptr, QRectF(0, 0, 1, 1), 1);
  WmfPlayer player(&canvas, false);
  for (const WmfRecord& record : records) player.Play(record);
  return canvas.Bounds();
}

// The window that the file sets first, a unit a pixel.
std::optional<QRectF> FirstWindow(const std::vector<WmfRecord>& records) {
  QPointF origin;
  for (const WmfRecord& record : records) {
    ByteReader in(record.parameters);
    if (record.function == WmfFunction::kSetWindowOrg) origin = ReadPoint(&in);
    if (record.function != WmfFunction::kSetWindowExt) continue;
    const QPointF extent = ReadPoint(&in);
    if (extent.x() != 0 && extent.y() != 0) return QRectF(origin, QSizeF(extent.x(), extent.y()));
  }
  return {};
}

Frame UnplacedFrame(const std::vector<WmfRecord>& records) {
  const double units = UnitsPerInch(records);
  const bool metric = units != kDotsPerInch;
  const std::optional<QRectF> set = metric ? std::nullopt : FirstWindow(records);
  Frame frame;
  frame.fixed = !set.has_value();
  frame.window = set ? *set : Measure(records);
  if (frame.window.width() == 0 || frame.window.height() == 0) BadPicture();
  QSizeF size(std::abs(frame.window.width()), std::abs(frame.window.height()));
  size *= kDotsPerInch / units;
  size *= std::min(1.0, kMaxUnplacedSide / std::max(size.width(), size.height()));
  frame.size = size;
  // The modes with a fixed unit have a y axis that goes up.
  if (metric) {
    frame.window = QRectF(frame.window.bottomLeft(), QSizeF(frame.window.width(), -frame.window.height()));
  }
  return frame;
}

// The largest pictures are smooth enough without.
int Fineness(qint64 pixels) {
  int fineness = 3;
  while (fineness > 1 && pixels * fineness * fineness > kMaxFineDots) --fineness;
  return fineness;
}

// Each pixel is the mean of a square of dots.
QImage Average(const QImage& dots, int side) {
  QImage image = NewImage(dots.width() / side, dots.height() / side, dots.format());
  const int count = side * side;
  for (int y = 0; y < image.height(); ++y) {
    auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      std::array<int, 4> sum = {count / 2, count / 2, count / 2, count / 2};
      for (int i = 0; i < count; ++i) {
        const auto* row = reinterpret_cast<const QRgb*>(dots.constScanLine(y * side + i / side));
        const QRgb dot = row[x * side + i % side];
        for (int channel = 0; channel < 4; ++channel) sum[channel] += int(dot >> (8 * channel) & 255);
      }
      to[x] = qRgba(sum[2] / count, sum[1] / count, sum[0] / count, sum[3] / count);
    }
  }
  return image;
}

}  // namespace

bool LooksLikeWmf(QByteArrayView bytes) {
  return StartsWithHeader(IsPlaceable(bytes) ? bytes.sliced(kPlaceableHeader) : bytes);
}

QImage DecodeWmf(QByteArrayView bytes) {
  const bool placeable = IsPlaceable(bytes);
  const std::vector<WmfRecord> records = ReadRecords(placeable ? bytes.sliced(kPlaceableHeader) : bytes);
  const Frame frame = placeable ? PlaceableFrame(bytes) : UnplacedFrame(records);
  const qint64 width = std::llround(std::max(frame.size.width(), 1.0));
  const qint64 height = std::llround(std::max(frame.size.height(), 1.0));
  CheckSize(width, height);
  const int fineness = Fineness(width * height);
  QImage image = NewImage(width * fineness, height * fineness, QImage::Format_ARGB32_Premultiplied);
  image.fill(0);
  WmfCanvas canvas(&image, frame.window, fineness);
  WmfPlayer player(&canvas, !frame.fixed);
  for (const WmfRecord& record : records) player.Play(record);
  return fineness == 1 ? image : Average(image, fineness);
}

}  // namespace orv
