#include "forms/inner/TextFace.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "base/App.h"

namespace orv {
namespace {

bool IsInstalled(const QString& family) {
  static const QStringList families = QFontDatabase::families();
  return families.contains(family, Qt::CaseInsensitive);
}

// Whether the text is drawn right with one glyph a character, set side by side. Others (combining marks,
// right-to-left and joined scripts, pairs of surrogates) are left to the shaper.
bool IsPlain(QStringView text) {
  for (const QChar c : text) {
    const char16_t u = c.unicode();
    const bool plain =
        u < 0x0300 || (u >= 0x0370 && u < 0x0590 && !(u >= 0x0483 && u <= 0x0489)) ||
        (u >= 0x1E00 && u < 0x2C00 && !(u >= 0x200B && u <= 0x200F) && !(u >= 0x2028 && u <= 0x202F) &&
         !(u >= 0x2060 && u <= 0x206F) && !(u >= 0x20D0 && u <= 0x20FF));
    if (!plain) return false;
  }
  return true;
}

// Control characters take no room and leave no ink.
bool IsControl(QChar c) {
  return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

QRgb ToRgb(Colour colour) {
  return qRgb(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

int Mix(int under, int over, int coverage) {
  return under + ((over - under) * coverage + (over > under ? 127 : -127)) / 255;
}

QRgb Blend(QRgb under, QRgb over, int coverage) {
  return qRgba(Mix(qRed(under), qRed(over), coverage), Mix(qGreen(under), qGreen(over), coverage),
               Mix(qBlue(under), qBlue(over), coverage), Mix(qAlpha(under), 255, coverage));
}

void BlendMask(QImage& target, int x0, int y0, const QImage& mask, QRgb colour) {
  const int from_x = std::max(0, -x0);
  const int to_x = std::min(mask.width(), target.width() - x0);
  const int from_y = std::max(0, -y0);
  const int to_y = std::min(mask.height(), target.height() - y0);
  for (int y = from_y; y < to_y; ++y) {
    auto* const row = reinterpret_cast<QRgb*>(target.scanLine(y0 + y)) + x0;
    const uchar* const coverage = mask.constScanLine(y);
    for (int x = from_x; x < to_x; ++x) {
      if (coverage[x] != 0) row[x] = Blend(row[x], colour, coverage[x]);
    }
  }
}

// The least rectangle with all coverage of a mask; empty without any.
QRect InkOf(const QImage& mask) {
  QRect ink;
  for (int y = 0; y < mask.height(); ++y) {
    const uchar* const coverage = mask.constScanLine(y);
    for (int x = 0; x < mask.width(); ++x) {
      if (coverage[x] != 0) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

}  // namespace

QString FamilyFor(const QString& face) {
  if (IsInstalled(face)) return face;
  for (const Program::StandIn& stand_in : App::Running().stand_ins) {
    if (face.compare(stand_in.face, Qt::CaseInsensitive) == 0) return stand_in.family;
  }
  return QStringLiteral("Liberation Sans");
}

struct TextFace::Impl {
  struct Coverage {
    QImage mask;   // 8 bits, no larger than its ink
    int left = 0;  // of the mask, from the cell's corner
    int top = 0;
  };

  struct Glyph {
    Coverage ink;
    int advance = 0;
  };

  explicit Impl(const orv::Font& description)
      : font(MakeFont(description)), metrics(font), margin(metrics.height()) {}

  static QFont MakeFont(const orv::Font& description) {
    QFont font(FamilyFor(description.Name));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(description.Size * 96 / 72))));
    font.setBold(description.Bold);
    font.setItalic(description.Italic);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return font;
  }

  // What a text covers. Slanted and wide letters reach beyond the cell, and so do marks on capital letters.
  Coverage Cover(const QString& text) const {
    const QRect cell(0, 0, metrics.horizontalAdvance(text), metrics.height());
    const QRect room = (cell | metrics.boundingRect(text).translated(0, metrics.ascent()))
                           .adjusted(-margin, -margin, margin, margin);
    QImage image(room.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(-room.left(), metrics.ascent() - room.top(), text);
    painter.end();
    const QImage mask = image.convertToFormat(QImage::Format_Alpha8);
    const QRect ink = InkOf(mask);
    if (ink.isNull()) return {};
    return {mask.copy(ink), ink.left() + room.left(), ink.top() + room.top()};
  }

  const Glyph& GlyphOf(QChar c) {
    const auto known = glyphs.constFind(c);
    if (known != glyphs.constEnd()) return *known;
    Glyph glyph;
    if (!IsControl(c)) glyph = {Cover(c), metrics.horizontalAdvance(c)};
    return *glyphs.insert(c, glyph);
  }

  int AdvanceOf(QChar c) {
    if (c.unicode() >= advances.size()) return GlyphOf(c).advance;
    int& advance = advances[c.unicode()];
    if (advance < 0) advance = GlyphOf(c).advance;
    return advance;
  }

  QFont font;
  QFontMetrics metrics;
  int margin;  // pixels around what a text is measured to cover
  QHash<QChar, Glyph> glyphs;
  std::vector<int> advances = std::vector<int>(256, -1);
};

TextFace::TextFace(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}

const TextFace& TextFace::For(const Font& font) {
  struct Entry {
    Font font;
    std::unique_ptr<TextFace> face;
  };
  // A set has thirteen slots; a walk over a handful of entries is the whole search.
  static std::vector<Entry> faces;
  for (const Entry& entry : faces) {
    if (entry.font == font) return *entry.face;
  }
  faces.push_back({font, std::unique_ptr<TextFace>(new TextFace(std::make_shared<Impl>(font)))});
  return *faces.back().face;
}

int TextFace::Width(QStringView text) const {
  if (!IsPlain(text)) return impl_->metrics.horizontalAdvance(text.toString());
  int width = 0;
  for (const QChar c : text) width += impl_->AdvanceOf(c);
  return width;
}

int TextFace::Height() const {
  return impl_->metrics.height();
}

int TextFace::Ascent() const {
  return impl_->metrics.ascent();
}

QFont TextFace::Enlarged(int times) const {
  QFont font = impl_->font;
  font.setPixelSize(font.pixelSize() * times);
  font.setHintingPreference(QFont::PreferNoHinting);
  // Spacing, however small, keeps letters from being joined, as they are not on whole pixels either.
  font.setLetterSpacing(QFont::AbsoluteSpacing, 1.0 / 64);
  return font;
}

int TextFace::Rise(QStringView text) const {
  if (!IsPlain(text)) return std::max(0, -impl_->Cover(text.toString()).top);
  int rise = 0;
  for (const QChar c : text) rise = std::max(rise, -impl_->GlyphOf(c).ink.top);
  return rise;
}

void TextFace::Draw(QImage& target, int x, int y, QStringView text, Colour colour) const {
  const QRgb rgb = ToRgb(colour);
  const auto blend = [&](const Impl::Coverage& ink) {
    BlendMask(target, x + ink.left, y + ink.top, ink.mask, rgb);
  };
  if (!IsPlain(text)) {
    blend(impl_->Cover(text.toString()));
    return;
  }
  for (const QChar c : text) {
    const Impl::Glyph& glyph = impl_->GlyphOf(c);
    blend(glyph.ink);
    x += glyph.advance;
  }
}

}  // namespace orv
