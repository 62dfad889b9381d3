#pragma once

#include <QByteArray>
#include <QImage>

namespace orv::artwork {

// The image as a picture file: 24-bit BMP, or JPG at a quality that shows no blocks.
QByteArray ToBmp(const QImage& image);
QByteArray ToJpg(const QImage& image);

}  // namespace orv::artwork
