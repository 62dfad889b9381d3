#include "imaging/inner/WmfFields.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace orv {
namespace {

QString FromWindows1252(QByteArrayView bytes) {
  static const QString kUpper = QStringLiteral(
      u"\u20ac\u0081\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152\u008d\u017d"
      u"\u008f\u0090\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161\u203a\u0153\u009d"
      u"\u017e\u0178");
  QString text = QString::fromLatin1(bytes);
  for (QChar& c : text) {
    if (c >= u'\x80' && c <= u'\x9f') c = kUpper[c.unicode() - 0x80];
  }
  return text;
}

}  // namespace

QPointF ReadPoint(ByteReader* in) {
  const double y = in->I16();
  return {double(in->I16()), y};
}

QRectF ReadBox(ByteReader* in) {
  const QPointF end = ReadPoint(in);
  return {ReadPoint(in), end};
}

QRectF ReadSizedBox(ByteReader* in) {
  const QPointF size = ReadPoint(in);
  return {ReadPoint(in), QSizeF(size.x(), size.y())};
}

QColor ReadColour(ByteReader* in) {
  const int red = in->U8();
  const int green = in->U8();
  const int blue = in->U8();
  in->Skip(1);
  return {red, green, blue};
}

QString ReadText(ByteReader* in, qsizetype length) {
  return FromWindows1252(in->Take(length));
}

WmfPen ReadPen(ByteReader* in) {
  constexpr std::array<Qt::PenStyle, 6> kStyles = {Qt::SolidLine,   Qt::DashLine,       Qt::DotLine,
                                                   Qt::DashDotLine, Qt::DashDotDotLine, Qt::NoPen};
  const unsigned style = in->U16();
  WmfPen pen;
  pen.style = (style & 15) < kStyles.size() ? kStyles[style & 15] : Qt::SolidLine;
  pen.cap = (style & 0xf00) == 0x100 ? Qt::SquareCap : (style & 0xf00) == 0x200 ? Qt::FlatCap : Qt::RoundCap;
  pen.join = (style & 0xf000) == 0x1000   ? Qt::BevelJoin
             : (style & 0xf000) == 0x2000 ? Qt::MiterJoin
                                          : Qt::RoundJoin;
  pen.width = std::abs(in->I16());
  in->Skip(2);
  pen.colour = ReadColour(in);
  return pen;
}

QBrush ReadBrush(ByteReader* in) {
  constexpr std::array<Qt::BrushStyle, 6> kHatches = {Qt::HorPattern,   Qt::VerPattern,
                                                      Qt::FDiagPattern, Qt::BDiagPattern,
                                                      Qt::CrossPattern, Qt::DiagCrossPattern};
  const unsigned style = in->U16();
  const QColor colour = ReadColour(in);
  const unsigned hatch = in->U16();
  if (style == 0) return colour;
  return style == 2 && hatch < kHatches.size() ? QBrush(colour, kHatches[hatch]) : QBrush(Qt::NoBrush);
}

WmfFont ReadFont(ByteReader* in) {
  WmfFont font;
  font.height = in->I16();
  in->Skip(2);  // width
  font.angle = in->I16() / 10.0;
  in->Skip(2);  // orientation
  font.weight = in->I16();
  if (font.weight == 0) font.weight = 400;
  font.italic = in->U8() != 0;
  font.underline = in->U8() != 0;
  font.strike_out = in->U8() != 0;
  in->Skip(5);  // character set, precision, quality, family
  const QByteArrayView face = in->Take(std::min<qsizetype>(in->Left(), 32));
  font.face = FromWindows1252(face.first(std::find(face.begin(), face.end(), '\0') - face.begin()));
  return font;
}

}  // namespace orv
