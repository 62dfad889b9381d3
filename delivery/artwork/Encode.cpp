#include "artwork/Encode.h"

#include <QBuffer>
#include <QImageWriter>
#include <stdexcept>

namespace orv::artwork {
namespace {

QByteArray Encoded(const QImage& image, const char* format, int quality) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format);
  writer.setQuality(quality);
  if (!writer.write(image.convertToFormat(QImage::Format_RGB888))) {
    throw std::runtime_error(writer.errorString().toStdString());
  }
  return bytes;
}

}  // namespace

QByteArray ToBmp(const QImage& image) {
  return Encoded(image, "bmp", -1);
}

QByteArray ToJpg(const QImage& image) {
  return Encoded(image, "jpg", 93);
}

}  // namespace orv::artwork
