#include "forms/inner/TextFace.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <cmath>

#include "forms/Surface.h"

namespace orv {
namespace {

const Font kSmall{"Small Fonts", 7, false, false};

// What a text leaves on white, drawn in black at (20, 8).
QImage Drawn(const TextFace& face, const QString& text) {
  QImage image(80, 30, QImage::Format_RGB32);
  image.fill(Qt::white);
  face.Draw(image, 20, 8, text, kBlack);
  return image;
}

QRect InkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixel(x, y) != qRgb(255, 255, 255)) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

// The same by the toolkit's own text output, with room on all sides.
QRect InkByPainter(const Font& font, const QString& text, int top) {
  QFont plain(FamiliesFor(font.Name));
  plain.setPixelSize(static_cast<int>(std::lround(font.Size * 96 / 72)));
  plain.setBold(font.Bold);
  plain.setHintingPreference(QFont::PreferFullHinting);
  plain.setStyleStrategy(QFont::NoSubpixelAntialias);
  QImage image(80, 100, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setFont(plain);
  painter.drawText(20, top + QFontMetrics(plain).ascent(), text);
  painter.end();
  return InkOf(image);
}

// The ink of a text that a label or Print puts on a surface, the corner of its cell at (20, top).
QRect InkOnSurface(const Font& font, const QString& text, int top, bool by_label) {
  Surface surface;
  surface.Place(0, 0, 80, 100);
  Label label(&surface);
  label.Place(20, top, 40, 30);
  label.SetFont(font);
  if (by_label) {
    label.SetCaption(text);
  } else {
    surface.SetFont(font);
    surface.SetCurrentX(20);
    surface.SetCurrentY(top);
    surface.Print(text);
  }
  return InkOf(surface.Render().Image());
}

TEST(TextFace, MarksOfLettersAreNeverCut) {
  const char16_t* const marked[] = {u"\u00C4", u"\u00D6",        u"\u00DC", u"\u00C5", u"\u00C9",
                                    u"\u00CA", u"\u00C7",        u"\u00D1", u"\u0160", u"\u1E68",
                                    u"\u01D5", u"A\u0308\u0301", u"H"};
  for (const Font& font : {Font{"Small Fonts", 5, false, false},
                           {"Small Fonts", 5.25, false, false},
                           {"Small Fonts", 6, false, false},
                           {"Small Fonts", 6, true, false},
                           {"Small Fonts", 7, false, false},
                           {"Small Fonts", 7, true, false},
                           {"Arial", 14.25, false, false},
                           {"CasablancaAntique", 14, false, false}}) {
    for (const char16_t* letters : marked) {
      const QString text = QString::fromUtf16(letters);
      SCOPED_TRACE(font.Name.toStdString() + " " + std::to_string(font.Size) + ": " + text.toStdString());
      const QRect whole = InkByPainter(font, text, 20);
      for (const bool by_label : {true, false}) {
        const QRect ink = InkOnSurface(font, text, 20, by_label);
        EXPECT_EQ(ink.top(), whole.top());
        EXPECT_EQ(ink.height(), whole.height());
        const QRect at_edge = InkOnSurface(font, text, 0, by_label);
        EXPECT_EQ(at_edge.top(), std::max(0, whole.top() - 20)) << "no lower than the marks need";
        EXPECT_EQ(at_edge.height(), whole.height());
      }
    }
  }
}

TEST(TextFace, WhatIsWiderThanItsBoxIsDrawnFromEdgeToEdge) {
  for (const QString text : {"A plain title that is far wider", "A title with \U0001F409 that is far wider",
                             "\u05D0\u05D1\u05D2 \u05D0\u05D1\u05D2 \u05D0\u05D1\u05D2 \u05D0\u05D1\u05D2",
                             "A\u0308 title with marks, far wider"}) {
    for (const Alignment alignment : {Alignment::Left, Alignment::Centre, Alignment::Right}) {
      SCOPED_TRACE(text.toStdString() + " " + std::to_string(int(alignment)));
      Surface surface;
      surface.Place(0, 0, 80, 40);
      Label label(&surface);
      label.Place(20, 10, 40, 20);
      label.SetFont({"Arial", 14.25, false, false});
      label.SetAlignment(alignment);
      label.SetCaption(text);
      const QRect ink = InkOf(surface.Render().Image());
      EXPECT_LE(ink.left(), 24);
      EXPECT_GE(ink.right(), 54);
    }
  }
}

TEST(TextFace, ALetterLooksTheSameAtEachPlace) {
  for (const Font& font :
       {kSmall, Font{"CasablancaAntique", 9, false, false}, Font{"CasablancaAntique", 14, true, true}}) {
    for (const QString text : {"lead", " lead", "lead ", "  fj  "}) {
      std::vector<QImage> seen;
      for (const Alignment alignment : {Alignment::Left, Alignment::Centre, Alignment::Right}) {
        Surface surface;
        surface.Place(0, 0, 200, 40);
        Label label(&surface);
        label.Place(20, 10, 160, 25);
        label.SetFont(font);
        label.SetAlignment(alignment);
        label.SetCaption(text);
        const QImage image = surface.Render().Image();
        seen.push_back(image.copy(InkOf(image)));
      }
      EXPECT_EQ(seen[0], seen[1]) << font.Name.toStdString() << text.toStdString();
      EXPECT_EQ(seen[0], seen[2]) << font.Name.toStdString() << text.toStdString();
    }
  }
}

// The digests hold on each system: neither its faces nor its version of a library changes a card.
TEST(TextFace, LettersAreTheSameEverywhere) {
  const struct {
    Font font;
    const char16_t* text;
    const char* digest;
  } rows[] = {
      {{"Small Fonts", 6, false, false},
       u"She will trade one thing, \u00C4\u00DF\u0159.",
       "6d992ddaff38ecfb"},
      {{"Small Fonts", 7, true, false}, u"STRENGTH +9", "9ce9b46860daddfc"},
      {{"Arial", 14.25, false, true}, u"\u0416\u0434\u0456 \u03A9\u03BC\u03AE", "b3586747daf99390"},
      {{"CasablancaAntique", 14, false, false}, u"The Heron Wife", "6c23fbc4455ee0fb"},
      {{"CasablancaAntique", 9, true, true}, u"with \u0416\u03A9, which it lacks", "9eec1c8ef7b953f6"},
  };
  for (const auto& row : rows) {
    QImage image(300, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    TextFace::For(row.font).Draw(image, 20, 8, QString::fromUtf16(row.text), kBlack);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(
        QByteArray::fromRawData(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
    EXPECT_EQ(hash.result().toHex().left(16).toStdString(), row.digest)
        << row.font.Name.toStdString() << " " << row.font.Size;
  }
}

TEST(TextFace, WidthIsTheSumOfWholeAdvances) {
  const TextFace& face = TextFace::For(kSmall);
  const QString text = "AVATAR To Wä.";
  int sum = 0;
  for (const QChar c : text) sum += face.Width(QString(c));
  EXPECT_EQ(face.Width(text), sum) << "no kerning";
  EXPECT_EQ(face.Width(text + u'\u0301'), sum) << "nor where the shaper sets the text";
  EXPECT_EQ(face.Width(u""), 0);
  EXPECT_EQ(face.Width(u"\r\n"), 0) << "a line end is not treated";
}

TEST(TextFace, WhatFitsIsToldByTheWidthOfEachWholeCandidate) {
  const QString texts[] = {
      "Roll one die: 1-3",
      QString::fromUtf16(u"e\u0301te\u0301 a\u0302me, fi\u0300n\u00E9"),
      QString::fromUtf16(u"\u0645\u0631\u062D\u0628\u0627 \u0639\u0644\u064A\u0643\u0645 Hero"),
      QString::fromUtf16(u"\U0001F409 eats \U0001F409\U0001F409, \u4E00\u4E01\u200B\u4E02"),
      QString::fromUtf16(u"\u304B\u3099\u0645\r\n\tx\uD55C"),
      QString::fromUtf16(u"\u0644\u0627\u0644\u0644\u0647 \u0628\u0644\u0627\u0644\u0627\u0644\u0627"),
      QString::fromUtf16(
          u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466 and \U0001F44D\U0001F3FD"),
      QString(u'a') + QString(40, u'\u0301') + "bc"};
  for (const Font& font :
       {kSmall, Font{"Arial", 14.25, true, false}, {"CasablancaAntique", 14, false, true}}) {
    const TextFace& face = TextFace::For(font);
    QFont shaped(FamiliesFor(font.Name));
    shaped.setPixelSize(static_cast<int>(std::lround(font.Size * 96 / 72)));
    shaped.setBold(font.Bold);
    shaped.setItalic(font.Italic);
    shaped.setKerning(false);
    shaped.setHintingPreference(QFont::PreferFullHinting);
    for (const QString& text : texts) {
      SCOPED_TRACE(font.Name.toStdString() + ": " + text.toStdString());
      const int whole = QFontMetrics(shaped).horizontalAdvance(text);
      EXPECT_EQ(face.Width(text), whole);
      for (int width = 0; width <= whole + 1; ++width) {
        qsizetype fitting = 0;
        while (fitting < text.size() &&
               QFontMetrics(shaped).horizontalAdvance(text.left(fitting + 1)) < width)
          ++fitting;
        ASSERT_EQ(face.Fitting(text, width), fitting) << width;
      }
    }
  }
}

TEST(TextFace, NoSizeIsTooLarge) {
  for (const double points : {5000.0, 1e300, -7.0, std::nan("")}) {
    const Font font{"Small Fonts", points, false, false};
    const TextFace& face = TextFace::For(font);
    EXPECT_LE(face.Height(), 500) << points;
    Drawn(face, "W");
  }
}

TEST(TextFace, PointsAreWholePixelHeights) {
  using Row = std::pair<double, int>;
  for (const auto& [points, pixels] : {Row(5, 7), Row(5.25, 7), Row(7, 9), Row(14, 19), Row(14.25, 19)}) {
    const Font font{"Small Fonts", points, false, false};
    const TextFace& face = TextFace::For(font);
    EXPECT_GE(face.Height(), pixels);
    EXPECT_LE(face.Height(), pixels * 1.4);
  }
}

TEST(TextFace, InkLiesInTheCellAndIsGreyOnly) {
  const TextFace& face = TextFace::For(kSmall);
  const QImage image = Drawn(face, "HEM");
  const QRect ink = InkOf(image);
  EXPECT_GT(ink.width(), 5);
  EXPECT_TRUE(QRect(20, 8, face.Width(u"HEM") + 1, face.Height()).contains(ink));
  EXPECT_TRUE(image.allGray());
  for (const int edge : {ink.top(), ink.bottom()}) {
    int darkest = 255;
    for (int x = 0; x < image.width(); ++x) darkest = std::min(darkest, qGray(image.pixel(x, edge)));
    EXPECT_LT(darkest, 40) << "letters are hinted onto whole pixels: row " << edge;
  }
}

TEST(TextFace, TextsThatNeedShapingAreMeasuredAsTheyAreDrawn) {
  const TextFace& face = TextFace::For(kSmall);
  for (const char16_t* letters :
       {u"e\u0301", u"\u0645\u0631\u062D\u0628\u0627", u"\U0001F409", u"A\u200BB"}) {
    const QString text = QString::fromUtf16(letters);
    EXPECT_LE(InkOf(Drawn(face, text)).right(), 20 + face.Width(text) + 3);
  }
}

}  // namespace
}  // namespace orv
