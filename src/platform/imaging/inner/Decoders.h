#pragma once

#include <QByteArrayView>
#include <QImage>

namespace orv {

// The room's inner face: one decoder a format, each called with bytes that begin like its format. Opaque
// pictures come as Format_RGB32, transparent ones as Format_ARGB32_Premultiplied. RuntimeError 481 for
// bytes that are broken or cut short and for a picture that is too large.
QImage DecodeBmp(QByteArrayView bytes);
QImage DecodeJpeg(QByteArrayView bytes);
QImage DecodeGif(QByteArrayView bytes);
QImage DecodeWmf(QByteArrayView bytes);
// These two lay transparent parts over white.
QImage DecodePng(QByteArrayView bytes);
QImage DecodeWebp(QByteArrayView bytes);

bool LooksLikeWmf(QByteArrayView bytes);
bool LooksLikeWebp(QByteArrayView bytes);

}  // namespace orv
