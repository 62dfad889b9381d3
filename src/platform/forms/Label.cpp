#include <QImage>
#include <QPainter>
#include <cmath>

#include "base/Rounding.h"
#include "forms/Surface.h"
#include "forms/inner/TextFace.h"

namespace orv {
namespace {

constexpr int kHandleLine = qRgb(0x60, 0x60, 0x60);
constexpr int kHandleFill = qRgb(0xC8, 0xC8, 0xC8);

// Lines broken at blanks as far as they fit, as a label on a form shows a long text.
QStringList WrapAtBlanks(const TextFace& face, const QString& text, double width) {
  QStringList lines;
  for (const QString& paragraph :
       QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split(u'\n')) {
    QString line;
    for (const QString& word : paragraph.split(u' ')) {
      const QString longer = line.isNull() ? word : line + u' ' + word;
      if (!line.isNull() && face.Width(longer) > width) {
        lines.append(line);
        line = word;
      } else {
        line = longer;
      }
    }
    lines.append(line);
  }
  return lines;
}

}  // namespace

void Label::DrawLine(QImage& target, const QString& line, double y) const {
  const TextFace& face = TextFace::For(GetFont());
  double x = 0;
  if (alignment_ == Alignment::Centre) x = std::floor(width_ / 2 - face.Width(line) / 2.0);
  if (alignment_ == Alignment::Right) x = width_ - face.Width(line);
  face.Draw(target, static_cast<int>(RoundHalfEven(x)), static_cast<int>(y), line, ForeColor());
}

void Label::Draw(QPainter& painter) const {
  const int width = static_cast<int>(RoundHalfEven(width_));
  const int height = static_cast<int>(RoundHalfEven(height_));
  if (width < 1 || height < 1) return;
  if (handle_) {
    painter.fillRect(0, 0, width, height, QColor::fromRgb(kHandleFill));
    if (width >= height) {
      painter.fillRect(width / 4, height / 2, width - width / 4 * 2, 1, QColor::fromRgb(kHandleLine));
    } else {
      painter.fillRect(width / 2, height / 4, 1, height - height / 4 * 2, QColor::fromRgb(kHandleLine));
    }
    return;
  }
  if (caption_.isEmpty()) return;
  const TextFace& face = TextFace::For(GetFont());
  const QStringList lines = wrap_ ? WrapAtBlanks(face, caption_, width_) : QStringList{caption_};
  // The marks of the first line's letters stand above the label, or in it at the upper edge of the surface.
  const int rise = face.Rise(lines.first());
  const int room = top_ < 0 ? rise : std::min(rise, static_cast<int>(RoundHalfEven(top_)));
  QImage image(width, room + height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  double y = top_ < 0 ? room : rise;
  for (const QString& line : lines) {
    if (y >= room + height_) break;
    DrawLine(image, line, y);
    y += face.Height();
  }
  painter.drawImage(0, -room, image);
}

}  // namespace orv
