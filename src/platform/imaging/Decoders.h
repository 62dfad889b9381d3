#pragma once

#include <QByteArrayView>
#include <QImage>

#include "imaging/Picture.h"

namespace orv {

// The room's inner face: one decoder a format, each called with bytes that begin like its format. Opaque
// pictures come as Format_RGB32, transparent ones as Format_ARGB32_Premultiplied. RuntimeError 481 for
// bytes that are broken or cut short and for a picture that is too large.
QImage DecodeBmp(QByteArrayView bytes);
QImage DecodeJpeg(QByteArrayView bytes, RowBand band);
QImage DecodeGif(QByteArrayView bytes);
QImage DecodeWmf(QByteArrayView bytes);

bool LooksLikeWmf(QByteArrayView bytes);

inline constexpr qint64 kMaxPixels = 64'000'000;
inline constexpr int kDotsPerMeter = 3780;  // 96 an inch

// RuntimeError 481.
[[noreturn]] void BadPicture();
// RuntimeError 481 if a side is not positive or the area is more than kMaxPixels.
void CheckSize(qint64 width, qint64 height);
// An image after CheckSize, its pixels not set.
QImage NewImage(qint64 width, qint64 height, QImage::Format format);
// The picture over white where it is transparent, as Format_RGB32.
QImage OverWhite(const QImage& image);

}  // namespace orv
