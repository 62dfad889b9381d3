#include <webp/decode.h>

#include "imaging/inner/Decoders.h"
#include "imaging/inner/NewImage.h"

namespace orv {

bool LooksLikeWebp(QByteArrayView bytes) {
  return bytes.startsWith("RIFF") && bytes.size() >= 12 && bytes.sliced(8).startsWith("WEBP");
}

QImage DecodeWebp(QByteArrayView bytes) {
  const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  const auto size = static_cast<std::size_t>(bytes.size());
  WebPDecoderConfig config;
  if (WebPInitDecoderConfig(&config) == 0) BadPicture();
  if (WebPGetFeatures(data, size, &config.input) != VP8_STATUS_OK || config.input.has_animation != 0) {
    BadPicture();
  }
  QImage image = NewImage(config.input.width, config.input.height,
                          config.input.has_alpha != 0 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  config.output.colorspace = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? MODE_BGRA : MODE_ARGB;
  config.output.is_external_memory = 1;
  config.output.u.RGBA = {image.bits(), static_cast<int>(image.bytesPerLine()),
                          static_cast<std::size_t>(image.sizeInBytes())};
  if (WebPDecode(data, size, &config) != VP8_STATUS_OK) BadPicture();
  return OverWhite(image);
}

}  // namespace orv
