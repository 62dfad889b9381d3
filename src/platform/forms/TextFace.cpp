#include "forms/inner/TextFace.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>
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

// A letter of this height fills any card; a larger face would cost time and memory for what nobody sees.
constexpr double kMostPixels = 400;
// Kept glyphs of one face; far more than the letters of a language take at the size of a card's text.
constexpr qsizetype kMostGlyphBytes = 16'000'000;
// Wider than any surface on which a text is read.
constexpr int kWidestInk = 8192;
// What is shaped at once for measuring. No word is longer; a longer run is measured in pieces, so that a
// text of any length costs a bounded time a character.
constexpr qsizetype kLongestPiece = 24;
// By how many of the face's heights a ligature may be narrower than the beginning of its letters.
constexpr int kMostJoined = 3;
constexpr QChar kJoiner = u'\u200D';  // makes one picture of some
// Longer texts than this run over every surface, and the shaper gets them in parts.
constexpr qsizetype kLongText = 1000;

// Whether a character is drawn right as one glyph, set side by side with others. The rest (combining marks,
// right-to-left and joined scripts, pairs of surrogates) is left to the shaper.
bool IsPlainCharacter(QChar c) {
  const char16_t u = c.unicode();
  return u < 0x0300 || (u >= 0x0370 && u < 0x0590 && !(u >= 0x0483 && u <= 0x0489)) ||
         (u >= 0x1E00 && u < 0x2C00 && !(u >= 0x200B && u <= 0x200F) && !(u >= 0x2028 && u <= 0x202F) &&
          !(u >= 0x2060 && u <= 0x206F) && !(u >= 0x20D0 && u <= 0x20FF));
}

bool IsPlain(QStringView text) {
  return std::ranges::all_of(text, IsPlainCharacter);
}

// Whether a character stands by itself: what comes before it does not change with it, nor does it with that.
bool IsStarter(QChar c) {
  const char16_t u = c.unicode();
  const bool kana = u >= 0x3041 && u < 0x3100 && u != 0x3099 && u != 0x309A;
  return IsPlainCharacter(c) || kana || (u >= 0x3400 && u < 0xA000) || (u >= 0xAC00 && u < 0xD7A4);
}

bool IsMark(QChar c) {
  return c.unicode() >= 0x0300 && c.unicode() < 0x0370;
}

// A part of a text that is set by itself: what stands before and behind it does not change its width.
struct Piece {
  enum Border { kNone, kNatural, kForced };

  qsizetype start = 0;  // in the text
  qsizetype size = 0;
  bool plain = true;
  bool simple = true;  // nothing but starters, and marks upon them
  bool blank = false;  // at its end

  Border Before(QChar next) const {
    if (blank || (!plain && simple && IsStarter(next))) return kNatural;
    return size >= kLongestPiece && !next.isLowSurrogate() ? kForced : kNone;
  }

  void Add(QChar c) {
    ++size;
    plain = plain && IsPlainCharacter(c);
    simple = simple && (IsStarter(c) || IsMark(c));
    blank = c == u' ';
  }
};

// The piece that starts at a place of a text.
Piece PieceAt(QStringView text, qsizetype start) {
  Piece piece{start};
  do piece.Add(text[start + piece.size]);
  while (start + piece.size < text.size() && piece.Before(text[start + piece.size]) == Piece::kNone);
  return piece;
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
  if (from_x >= to_x) return;
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

QStringList FamiliesFor(const QString& face) {
  const Program& program = App::Running();
  if (IsInstalled(face)) return {face, program.plain_family};
  for (const Program::StandIn& stand_in : program.stand_ins) {
    if (face.compare(stand_in.face, Qt::CaseInsensitive) == 0) return {stand_in.family, program.plain_family};
  }
  return {program.plain_family};
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
    QFont font(FamiliesFor(description.Name));
    const double pixels = description.Size * 96 / 72;  // no number at all counts as the smallest
    font.setPixelSize(pixels >= 1 ? static_cast<int>(std::lround(std::min(pixels, kMostPixels))) : 1);
    font.setBold(description.Bold);
    font.setItalic(description.Italic);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return font;
  }

  // What a text covers within a part of its plane, whose origin is the corner of the text's cell. Slanted and
  // wide letters reach beyond the cell, and so do marks on capital letters.
  Coverage Cover(const QString& text, const QRect& part) const {
    const QRect cell(0, 0, metrics.horizontalAdvance(text), metrics.height());
    const QRect room = (cell | metrics.boundingRect(text).translated(0, metrics.ascent()))
                           .adjusted(-margin, -margin, margin, margin) &
                       part;
    if (room.isEmpty()) return {};
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

  Coverage CoverAll(const QString& text) const {
    return Cover(text, {-kWidestInk, -kWidestInk, 2 * kWidestInk, 2 * kWidestInk});
  }

  const Glyph& GlyphOf(QChar c) {
    const auto known = glyphs.constFind(c);
    if (known != glyphs.constEnd()) return *known;
    Glyph glyph;
    if (!IsControl(c)) glyph = {CoverAll(c), metrics.horizontalAdvance(c)};
    if (glyph_bytes > kMostGlyphBytes) {
      glyphs.clear();
      glyph_bytes = 0;
    }
    glyph_bytes += glyph.ink.mask.sizeInBytes();
    return *glyphs.insert(c, glyph);
  }

  int AdvanceOf(QChar c) {
    if (c.unicode() >= advances.size()) return GlyphOf(c).advance;
    int& advance = advances[c.unicode()];
    if (advance < 0) advance = GlyphOf(c).advance;
    return advance;
  }

  // The width of a text that is set at once.
  qint64 WidthOf(QStringView text) {
    if (!IsPlain(text)) return metrics.horizontalAdvance(text.toString());
    qint64 width = 0;
    for (const QChar c : text) width += AdvanceOf(c);
    return width;
  }

  // A count of first letters of which no fewer reach over the room either: they stay away from its end by
  // more than a ligature takes away, joined pictures being measured apart.
  qsizetype SurelyFitting(QStringView letters, double room) {
    room -= kMostJoined * metrics.height();
    for (qsizetype count = room > 0 ? letters.size() : 0; count > 1; count /= 2) {
      QString apart = letters.first(count).toString();
      if (WidthOf(apart.remove(kJoiner)) < room) return count;
    }
    return 0;
  }

  QFont font;
  QFontMetrics metrics;
  int margin;  // pixels around what a text is measured to cover
  QHash<QChar, Glyph> glyphs;
  qsizetype glyph_bytes = 0;
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
  qint64 width = 0;
  qsizetype start = 0;
  Piece piece;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (const Piece::Border border = piece.Before(text[i])) {
      if (border == Piece::kForced || i - start >= kLongText) {
        width += impl_->WidthOf(text.sliced(start, i - start));
        start = i;
      }
      piece = {i};
    }
    piece.Add(text[i]);
  }
  width += impl_->WidthOf(text.sliced(start));
  return static_cast<int>(std::min<qint64>(width, std::numeric_limits<int>::max() / 2));
}

// Advances are whole pixels and there is no kerning, so of the pieces before the last one only their widths
// count. One that needs the shaper is set anew for each character from where it may no longer fit.
qsizetype TextFace::Fitting(QStringView text, double width) const {
  qint64 before = 0;
  for (qsizetype start = 0; start < text.size();) {
    const Piece piece = PieceAt(text, start);
    const QStringView letters = text.sliced(start, piece.size);
    const qsizetype sure = piece.plain ? 0 : impl_->SurelyFitting(letters, width - double(before));
    qint64 last = sure < piece.size ? 0 : impl_->WidthOf(letters);
    for (qsizetype i = sure; i < piece.size; ++i) {
      last = piece.plain ? last + impl_->AdvanceOf(letters[i]) : impl_->WidthOf(letters.first(i + 1));
      if (before + last >= width) return start + i;
    }
    before += last;
    start += piece.size;
  }
  return text.size();
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
  if (!IsPlain(text))
    return std::max(0, -impl_->CoverAll(text.first(std::min(text.size(), kLongText)).toString()).top);
  int rise = 0;
  for (const QChar c : text) rise = std::max(rise, -impl_->GlyphOf(c).ink.top);
  return rise;
}

void TextFace::Draw(QImage& target, int x, int y, QStringView text, Colour colour) const {
  const QRgb rgb = ToRgb(colour);
  const auto blend = [&](const Impl::Coverage& ink) {
    BlendMask(target, x + ink.left, y + ink.top, ink.mask, rgb);
  };
  const int end = target.width() + impl_->margin;
  if (!IsPlain(text)) {
    if (y > target.height() + kWidestInk) return;
    for (; x <= end && !text.isEmpty(); text = text.sliced(std::min(text.size(), kLongText))) {
      const QStringView part = text.first(std::min(text.size(), kLongText));
      const int width = text.size() > kLongText || x < 0 ? Width(part) : 0;
      if (x + width >= -impl_->margin) blend(impl_->Cover(part.toString(), target.rect().translated(-x, -y)));
      x += width;
    }
    return;
  }
  for (auto c = text.begin(); c != text.end() && x <= end; ++c) {
    const Impl::Glyph& glyph = impl_->GlyphOf(*c);
    blend(glyph.ink);
    x += glyph.advance;
  }
}

}  // namespace orv
