#include "forms/TextFace.h"

#include <gtest/gtest.h>

#include <QImage>

namespace orv {
namespace {

const Font kSmall{QStringLiteral("Small Fonts"), 7, false, false};

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
  const QString text = QStringLiteral("AVATAR To Wä.");
  int sum = 0;
  for (const QChar c : text) sum += face.Width(QString(c));
  EXPECT_EQ(face.Width(text), sum) << "no kerning";
  EXPECT_EQ(face.Width(QString()), 0);
  EXPECT_EQ(face.Width(QStringLiteral("\r\n")), 0) << "a line end is not treated";
}

TEST(TextFace, PointsAreWholePixelHeights) {
  struct Row {
    double points;
    int pixels;
  };
  for (const Row& row : {Row{5, 7}, {5.25, 7}, {7, 9}, {14, 19}, {14.25, 19}}) {
    const TextFace& face = TextFace::For({QStringLiteral("Small Fonts"), row.points, false, false});
    EXPECT_GE(face.Height(), row.pixels);
    EXPECT_LE(face.Height(), row.pixels * 1.4);
  }
}

TEST(TextFace, InkLiesInTheCellInTheColourAndGreyOnly) {
  QImage image(60, 30, QImage::Format_RGB32);
  image.fill(Qt::white);
  const TextFace& face = TextFace::For(kSmall);
  face.Draw(image, 10, 8, QStringLiteral("HEM"), kBlack);
  const QRect ink = InkOf(image);
  EXPECT_GE(ink.left(), 10);
  EXPECT_LE(ink.right(), 10 + face.Width(QStringLiteral("HEM")));
  EXPECT_GE(ink.top(), 8);
  EXPECT_LT(ink.bottom(), 8 + face.Height());
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      ASSERT_EQ(qRed(pixel), qGreen(pixel));
      ASSERT_EQ(qRed(pixel), qBlue(pixel));
    }
  }
}

TEST(TextFace, TextsThatNeedShapingAreMeasuredAsTheyAreDrawn) {
  for (const char16_t* text : {u"e\u0301", u"\u0645\u0631\u062D\u0628\u0627", u"\U0001F409", u"A\u200BB"}) {
    const TextFace& face = TextFace::For(kSmall);
    QImage image(80, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    face.Draw(image, 20, 8, QString::fromUtf16(text), kBlack);
    const QRect ink = InkOf(image);
    EXPECT_LE(ink.right(), 20 + face.Width(QString::fromUtf16(text)) + 3);
  }
}

}  // namespace
}  // namespace orv
