#include <QImage>
#include <QList>
#include <QPainter>
#include <cmath>

#include "base/Rounding.h"
#include "forms/Surface.h"
#include "forms/inner/TextFace.h"

namespace orv {
namespace {

constexpr int kHandleLine = qRgb(0x60, 0x60, 0x60);
constexpr int kHandleFill = qRgb(0xC8, 0xC8, 0xC8);

// Where the line ends with which a paragraph starts: at the last blank before which it is no wider than
// `width`, or at the first one.
qsizetype LineEnd(const TextFace& face, QStringView paragraph, double width) {
  const qsizetype fitting = face.Fitting(paragraph, std::floor(width) + 1);
  if (fitting == paragraph.size()) return fitting;
  const qsizetype last = paragraph.first(fitting + 1).lastIndexOf(u' ');
  const qsizetype first = last < 0 ? paragraph.indexOf(u' ') : last;
  return first < 0 ? paragraph.size() : first;
}

// Lines broken at blanks as far as they fit, as a label on a form shows a long text, and no more than asked.
QList<QStringView> WrapAtBlanks(const TextFace& face, QStringView text, double width, int most) {
  QList<QStringView> lines;
  while (lines.size() < most) {
    const qsizetype feed = text.indexOf(u'\n');
    QStringView paragraph = feed < 0 ? text : text.first(feed);
    if (feed > 0 && paragraph.endsWith(u'\r')) paragraph.chop(1);
    while (lines.size() < most) {
      const qsizetype end = LineEnd(face, paragraph, width);
      lines.append(paragraph.first(end));
      if (end == paragraph.size()) break;
      paragraph = paragraph.sliced(end + 1);
    }
    if (feed < 0) break;
    text = text.sliced(feed + 1);
  }
  return lines;
}

}  // namespace

void Label::DrawLine(QImage& target, int left, QStringView line, double y) const {
  const TextFace& face = TextFace::For(GetFont());
  double x = 0;
  if (alignment_ == Alignment::Centre) x = std::floor(width_ / 2 - face.Width(line) / 2.0);
  if (alignment_ == Alignment::Right) x = width_ - face.Width(line);
  face.Draw(target, left + static_cast<int>(RoundHalfEven(x)), static_cast<int>(y), line, ForeColor());
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
  const int most = height / face.Height() + 2;
  const QList<QStringView> lines =
      wrap_ ? WrapAtBlanks(face, caption_, width_, most) : QList<QStringView>{caption_};
  // The marks of the first line's letters stand above the label, or in it at the upper edge of the surface.
  const int rise = face.Rise(lines.first());
  const int room = top_ < 0 ? rise : std::min(rise, static_cast<int>(RoundHalfEven(top_)));
  // What fits is never cut, though slanted letters at its ends reach beyond the label; what doesn't fit is
  // cut.
  const int side = face.Height();
  QImage image(side + width + side, room + height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  const auto inside = [&](int left, int across) {
    return QImage(image.bits() + left * 4, across, image.height(), image.bytesPerLine(), image.format());
  };
  double y = top_ < 0 ? room : rise;
  for (const QStringView line : lines) {
    if (y >= room + height_) break;
    const bool fits = face.Width(line) <= width_;
    QImage part = fits ? inside(0, image.width()) : inside(side, width);
    DrawLine(part, fits ? side : 0, line, y);
    y += face.Height();
  }
  painter.drawImage(-side, -room, image);
}

}  // namespace orv
