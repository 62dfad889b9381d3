#include "imaging/Scaler.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>
#include <numbers>

#include "platform/imaging/Samples.h"
#include "support/Errors.h"

namespace orv {
namespace {

double Light(int value) {
  return std::pow(value / 255.0, 2.2);
}

// Black and white in turn, so fine that only their mean is left.
QImage Checks(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.setPixel(x, y, (x + y) % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
  }
  return image;
}

TEST(Scaler, MixesLightAndNotNumbers) {
  for (const auto& [from, to] :
       {std::pair(QSize(64, 48), QSize(20, 15)), std::pair(QSize(1024, 768), QSize(20, 15)),
        std::pair(QSize(1023, 769), QSize(400, 300))}) {
    const QImage image =
        Scaler(Picture(Checks(from.width(), from.height()))).Scale(to.width(), to.height()).Image();
    ASSERT_EQ(image.size(), to);
    EXPECT_NEAR(qGreen(image.pixel(to.width() / 2, to.height() / 2)), 188, 6) << from.width();
  }
}

// A wave lies where it lay, whatever halves were used, also where sides are odd; and a flat colour stays.
TEST(Scaler, KeepsPlacesAndColours) {
  const auto tone = [](double place) { return 128 + 100 * std::sin(place * 6 * std::numbers::pi); };
  for (const int side : {90, 257, 1001, 1531}) {
    QImage image(side, side - 1, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < side; ++x) {
        image.setPixel(x, y, qRgb(int(tone((x + 0.5) / side)), int(tone((y + 0.5) / (side - 1))), 77));
      }
    }
    const Scaler scaler{Picture(image)};
    for (const int to : {61, 80, 130, 200}) {
      const QImage scaled = scaler.Scale(to, to).Image();
      for (int i = 5; i < to - 5; i += 3) {
        const QRgb pixel = scaled.pixel(i, to - 1 - i);
        ASSERT_NEAR(qRed(pixel), tone((i + 0.5) / to), 5) << side << " to " << to << " at " << i;
        ASSERT_NEAR(qGreen(pixel), tone((to - i - 0.5) / to), 5) << side << " to " << to << " at " << i;
        ASSERT_EQ(qBlue(pixel), 77);
      }
    }
  }
}

// The root of the mean square of all differences.
double Difference(const QImage& a, const QImage& b) {
  double sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb one = a.pixel(x, y), other = b.pixel(x, y);
      for (const int shift : {0, 8, 16}) {
        const double difference = int(one >> shift & 255) - int(other >> shift & 255);
        sum += difference * difference;
      }
    }
  }
  return std::sqrt(sum / (3.0 * a.width() * a.height()));
}

// As sharp as what another hand makes by the same filter in linear light. Thin lines tell most.
TEST(Scaler, AgreesWithImageMagick) {
  const QTemporaryDir folder;
  QImage lines(900, 600, QImage::Format_RGB32);
  lines.fill(Qt::white);
  for (int y = 0; y < 600; ++y) {
    for (int x = 0; x < 900; ++x)
      if ((x + y / 3) % 23 < 2 || (y - x / 5 + 900) % 31 < 2) lines.setPixel(x, y, qRgb(90, 0, 40));
  }
  const Scaler scaler{Picture(lines)};
  ASSERT_TRUE(lines.save(folder.filePath("from.png")));
  for (const QSize& size : {QSize(90, 60), QSize(225, 150), QSize(300, 211), QSize(720, 480)}) {
    const QString wanted = QStringLiteral("%1x%2!").arg(size.width()).arg(size.height());
    QProcess::execute("convert",
                      {folder.filePath("from.png"), "-colorspace", "RGB", "-filter", "Lanczos", "-resize",
                       wanted, "-colorspace", "sRGB", "-depth", "8", folder.filePath("to.png")});
    const QImage expected(folder.filePath("to.png"));
    ASSERT_EQ(expected.size(), size);
    EXPECT_LT(Difference(scaler.Scale(size.width(), size.height()).Image(), expected), 2.5) << size.width();
  }
}

TEST(Scaler, SameSizeSamePixels) {
  const QImage photo = samples::PhotoLike(300, 200);
  const Scaler scaler{Picture(photo)};
  EXPECT_EQ(scaler.Scale(300, 200).Image(), photo);
  const QImage small = scaler.Scale(40, 30).Image();
  (void)scaler.Scale(700, 800);
  EXPECT_EQ(scaler.Scale(40, 30).Image(), small);
  EXPECT_EQ(scaler.Scale(1, 1).Width(), 1);
  EXPECT_EQ(Scaler(Picture(QImage(photo.scaled(1, 1)))).Scale(7, 900).Height(), 900);
  const QImage fading = Scaler(Picture(samples::Fading(40, 24))).Scale(20, 12).Image();
  EXPECT_GT(Light(qRed(fading.pixel(0, 5))), 0.9);
  for (const QSize& size : {QSize(0, 5), QSize(32768, 2), QSize(20000, 20000)}) {
    EXPECT_EQ(ErrorOf([&] { scaler.Scale(size.width(), size.height()); }), kErrInvalidPicture);
  }
}

}  // namespace
}  // namespace orv
