#include "imaging/Picture.h"

#include <QFileInfo>
#include <QImage>
#include <QtEndian>
#include <utility>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "imaging/inner/Decoders.h"
#include "imaging/inner/NewImage.h"
#include "imaging/inner/PixelRows.h"

namespace orv {
namespace {

// No picture within the bound on pixels needs a larger file.
constexpr qint64 kMaxFileBytes = kMaxPixels * 4 + 1'000'000;

QImage Decode(QByteArrayView bytes) {
  if (bytes.startsWith("BM")) return DecodeBmp(bytes);
  if (bytes.startsWith("\xff\xd8\xff")) return DecodeJpeg(bytes);
  if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) return DecodeGif(bytes);
  if (bytes.startsWith("\x89PNG\r\n\x1a\n")) return DecodePng(bytes);
  if (LooksLikeWebp(bytes)) return DecodeWebp(bytes);
  if (LooksLikeWmf(bytes)) return DecodeWmf(bytes);
  BadPicture();
}

template <typename T>
void Append(QByteArray* bytes, T number) {
  number = qToLittleEndian(number);
  bytes->append(reinterpret_cast<const char*>(&number), sizeof number);
}

QByteArray BmpHeader(int width, int height, qsizetype pixel_bytes) {
  constexpr int kHeaders = 14 + 40;
  QByteArray bytes = QByteArrayLiteral("BM");
  Append<quint32>(&bytes, static_cast<quint32>(kHeaders + pixel_bytes));
  Append<quint32>(&bytes, 0);
  Append<quint32>(&bytes, kHeaders);
  Append<quint32>(&bytes, 40);
  Append<qint32>(&bytes, width);
  Append<qint32>(&bytes, height);
  Append<quint16>(&bytes, 1);
  Append<quint16>(&bytes, 24);
  Append<quint32>(&bytes, 0);
  Append<quint32>(&bytes, static_cast<quint32>(pixel_bytes));
  for (const qint32 field : {kDotsPerMeter, kDotsPerMeter, 0, 0}) Append<qint32>(&bytes, field);
  return bytes;
}

}  // namespace

Picture::Picture(const QImage& image)
    : image_(image.isNull() ? nullptr : std::make_shared<const QImage>(image)) {}

Picture::Picture(const QImage& image, std::shared_ptr<const Drawing> drawing) : Picture(image) {
  drawing_ = std::move(drawing);
}

int Picture::Width() const {
  return Image().width();
}

int Picture::Height() const {
  return Image().height();
}

const QImage& Picture::Image() const {
  static const QImage kNone;
  return image_ ? *image_ : kNone;
}

Picture LoadPicture() {
  return {};
}

Picture LoadPicture(const QByteArray& bytes) {
  QImage image = Decode(bytes);
  CheckSide(image.width(), image.height());
  // A surface keeps a second, opaque image of a transparent one.
  if (image.hasAlphaChannel()) CheckSize(image.width() * qint64{2}, image.height());
  image.setDotsPerMeterX(kDotsPerMeter);
  image.setDotsPerMeterY(kDotsPerMeter);
  return Picture(image);
}

Picture LoadPicture(const QByteArray& bytes, std::int64_t most_pixels) {
  const PixelLimit limit(most_pixels);
  return LoadPicture(bytes);
}

QByteArray ReadPictureFile(const QString& path) {
  const QFileInfo info(path);
  if (info.exists() && !info.isFile()) throw RuntimeError(kErrPathFileAccess);
  if (info.size() > kMaxFileBytes) BadPicture();
  return ReadWhole(path);
}

Picture LoadPicture(const QString& path) {
  return LoadPicture(ReadPictureFile(path));
}

void CopyToRows(const Picture& picture, std::uint8_t* rows, int bytes_per_row) {
  WriteRows(OverWhite(picture.Image()), rows, bytes_per_row);
}

Picture PictureFromRows(const std::uint8_t* rows, int width, int height, int bytes_per_row) {
  return Picture(ReadRows(rows, width, height, bytes_per_row));
}

Picture Cropped(const Picture& picture, int left, int top, int width, int height) {
  return Picture(picture.Image().copy(left, top, width, height));
}

QByteArray BitmapFile(const Picture& picture) {
  if (picture.IsEmpty()) BadPicture();
  const int row_bytes = (3 * picture.Width() + 3) / 4 * 4;
  const qsizetype pixel_bytes = qsizetype{row_bytes} * picture.Height();
  QByteArray bytes = BmpHeader(picture.Width(), picture.Height(), pixel_bytes);
  const qsizetype start = bytes.size();
  bytes.append(pixel_bytes, '\0');
  CopyToRows(picture, reinterpret_cast<std::uint8_t*>(bytes.data() + start), row_bytes);
  return bytes;
}

void SavePicture(const Picture& picture, const QString& path) {
  ReplaceFile(path, BitmapFile(picture));
}

}  // namespace orv
