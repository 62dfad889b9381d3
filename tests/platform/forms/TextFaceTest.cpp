#include "forms/TextFace.h"

#include <gtest/gtest.h>

#include <QImage>

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

TEST(TextFace, WidthIsTheSumOfWholeAdvances) {
  const TextFace& face = TextFace::For(kSmall);
  const QString text = "AVATAR To Wä.";
  int sum = 0;
  for (const QChar c : text) sum += face.Width(QString(c));
  EXPECT_EQ(face.Width(text), sum) << "no kerning";
  EXPECT_EQ(face.Width(u""), 0);
  EXPECT_EQ(face.Width(u"\r\n"), 0) << "a line end is not treated";
}

TEST(TextFace, PointsAreWholePixelHeights) {
  using Row = std::pair<double, int>;
  for (const auto& [points, pixels] : {Row(5, 7), Row(5.25, 7), Row(7, 9), Row(14, 19), Row(14.25, 19)}) {
    const TextFace& face = TextFace::For({"Small Fonts", points, false, false});
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
