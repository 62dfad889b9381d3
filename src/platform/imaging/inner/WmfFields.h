#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

#include "imaging/inner/ByteReader.h"
#include "imaging/inner/WmfCanvas.h"

namespace orv {

// What the parameters of metafile records are made of. RuntimeError 481 past the record's end.

// Numbers lie in reverse: y before x, the lower right corner before the upper left.
QPointF ReadPoint(ByteReader* in);
QRectF ReadBox(ByteReader* in);
QRectF ReadSizedBox(ByteReader* in);  // a width and height that lie before a corner
QColor ReadColour(ByteReader* in);
QString ReadText(ByteReader* in, qsizetype length);  // of the code page Windows-1252

WmfPen ReadPen(ByteReader* in);
QBrush ReadBrush(ByteReader* in);
WmfFont ReadFont(ByteReader* in);

}  // namespace orv
