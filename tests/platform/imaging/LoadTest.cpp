#include <gtest/gtest.h>

#include <QBuffer>
#include <QTemporaryDir>
#include <random>

#include "base/Files.h"
#include "imaging/Picture.h"
#include "platform/imaging/Samples.h"
#include "support/Errors.h"

namespace orv {
namespace {

using samples::BmpShape;
using samples::GifShape;
using samples::JpegShape;

int Distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

// `colour` gives what stands at a place.
template <class Colour>
void ExpectPixels(const QImage& image, Colour colour) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      ASSERT_EQ(image.pixel(x, y), colour(x, y)) << x << ", " << y;
    }
  }
}

TEST(LoadPicture, BmpOfEachKind) {
  // Bits, header, compression, top down.
  for (const BmpShape& shape :
       {BmpShape(1), BmpShape(4), BmpShape(8), BmpShape(16), BmpShape(24), BmpShape(32), BmpShape(1, 12),
        BmpShape(8, 12), BmpShape(24, 12), BmpShape(8, 64), BmpShape(24, 124), BmpShape(16, 40, 3),
        BmpShape(32, 40, 3), BmpShape(16, 56, 3), BmpShape(32, 108, 3), BmpShape(24, 40, 0, true),
        BmpShape(8, 40, 0, true), BmpShape(1, 40, 0, false, 33, 2)}) {
    SCOPED_TRACE(testing::Message() << shape.bits << " bits, header " << shape.header << ", compression "
                                    << shape.compression << ", " << shape.top_down);
    const QImage image = LoadPicture(samples::Bmp(shape)).Image();
    ASSERT_EQ(image.size(), QSize(shape.width, shape.height));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    ExpectPixels(image, [&](int x, int y) { return samples::BmpColour(shape.bits, x, y); });
  }
}

TEST(LoadPicture, RunLengthBmp) {
  // Bottom row: a run of 3 and three single pixels (padded); then a move over a row; the top row by runs
  // that reach over the edge.
  const QByteArray codes8("\3\x9\0\3\1\2\3\0\0\0\0\2\2\1\xC8\7\0\1", 18);
  const int rows8[3][6] = {{0, 0, 7, 7, 7, 7}, {0, 0, 0, 0, 0, 0}, {9, 9, 9, 1, 2, 3}};
  const QImage eight = LoadPicture(samples::RunLengthBmp(8, 6, 3, codes8)).Image();
  ExpectPixels(eight, [&](int x, int y) { return samples::PaletteColour(rows8[y][x]); });
  const QByteArray codes4("\5\x12\0\0\0\5\x34\x56\x70\0\0\1", 12);
  const int rows4[2][5] = {{3, 4, 5, 6, 7}, {1, 2, 1, 2, 1}};
  const QImage four = LoadPicture(samples::RunLengthBmp(4, 5, 2, codes4)).Image();
  ExpectPixels(four, [&](int x, int y) { return samples::PaletteColour(rows4[y][x]); });
}

TEST(LoadPicture, JpegOfEachKind) {
  // Size, grey, progressive, ink, transformed, marked.
  for (const JpegShape& shape :
       {JpegShape(40, 24), JpegShape(39, 25, true), JpegShape(40, 24, false, true),
        JpegShape(40, 24, true, true), JpegShape(40, 24, false, false, true),
        JpegShape(40, 24, false, false, true, true), JpegShape(40, 24, false, true, true, false, false)}) {
    SCOPED_TRACE(testing::Message() << shape.grey << shape.progressive << shape.ink << shape.ink_as_luma
                                    << shape.ink_marked);
    const QImage image = LoadPicture(samples::Jpeg(shape)).Image();
    ASSERT_EQ(image.size(), QSize(shape.width, shape.height));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    for (const int x : {4, shape.width - 4}) {
      for (const int y : {4, shape.height - 4}) {
        EXPECT_LE(Distance(image.pixel(x, y), samples::JpegColour(shape, x, y)), 8) << x << ", " << y;
      }
    }
  }
}

TEST(LoadPicture, OrientationAndResolutionOfAFileAreIgnored) {
  const QImage image = LoadPicture(samples::Turned(samples::Jpeg({}))).Image();
  EXPECT_EQ(image.size(), QSize(40, 24));
  EXPECT_EQ(image.dotsPerMeterX(), 3780);
  EXPECT_EQ(LoadPicture(samples::Bmp({})).Image().dotsPerMeterX(), 3780);
  // Unless it is asked for: what was on the left lies on top.
  const QImage upright = LoadUpright(samples::Turned(samples::Jpeg({}))).Image();
  EXPECT_EQ(upright, image.transformed(QTransform().rotate(90)));
  EXPECT_EQ(upright.size(), QSize(24, 40));
  EXPECT_EQ(LoadUpright(samples::Jpeg({})).Image(), image);
}

TEST(LoadPicture, PngAndWebpLieOverWhite) {
  const QImage photo = samples::PhotoLike(40, 24);
  const QImage grey = photo.convertToFormat(QImage::Format_Grayscale8);
  const QImage deep = photo.convertToFormat(QImage::Format_RGBX64);
  const QImage fading = samples::Fading(40, 24);
  const struct {
    QByteArray bytes;
    QImage shown;
    int tolerance;
  } kCases[] = {
      {samples::Png(photo), photo, 0},         {samples::Png(grey), grey, 0},
      {samples::Png(deep), deep, 0},           {samples::Png(fading), fading, 1},
      {samples::Png(fading, true), fading, 1}, {samples::Webp(photo), photo, 0},
      {samples::Webp(fading), fading, 1},      {samples::Webp(photo, false), photo, 40},
  };
  for (const auto& [bytes, shown, tolerance] : kCases) {
    const QImage image = LoadPicture(bytes).Image();
    ASSERT_EQ(image.size(), shown.size());
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = shown.pixel(x, y);
        const auto over_white = [&](int value) { return 255 - (255 - value) * qAlpha(pixel) / 255; };
        ASSERT_LE(Distance(image.pixel(x, y), qRgb(over_white(qRed(pixel)), over_white(qGreen(pixel)),
                                                   over_white(qBlue(pixel)))),
                  tolerance)
            << x << ", " << y << " of " << bytes.left(4).toStdString();
      }
    }
  }
}

TEST(LoadPicture, GifFramesAndTransparency) {
  // Screen, frame, transparent colour, interlaced, frames.
  const QSize screen(8, 6);
  const QRect whole({0, 0}, screen);
  for (const GifShape& shape : {GifShape(), GifShape(screen, whole, -1, true), GifShape(screen, whole, 2),
                                GifShape({8, 11}, {2, 1, 3, 9}, -1, true), GifShape(screen, {5, 4, 6, 5}, 1),
                                GifShape(screen, whole, -1, false, 2)}) {
    SCOPED_TRACE(testing::Message() << shape.frame.x() << " " << shape.transparent << shape.interlaced);
    const QImage image = LoadPicture(samples::Gif(shape)).Image();
    const bool opaque = shape.transparent < 0 && shape.frame.size() == shape.screen;
    EXPECT_EQ(image.format(), opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    ASSERT_EQ(image.rect(), QRect(QPoint(), shape.screen) | shape.frame);
    ExpectPixels(image, [&](int x, int y) {
      const int fx = x - shape.frame.x();
      const int fy = y - shape.frame.y();
      const bool clear = !shape.frame.contains(x, y) || (fx + fy) % 4 == shape.transparent;
      return clear ? 0 : samples::GifColour(fx, fy);
    });
  }
}

TEST(LoadPicture, BytesBehindThePictureAreIgnored) {
  const QByteArray wmf = samples::Wmf().Window(0, 0, 9, 9).Rectangle(5, 5, 0, 0).Unplaced();
  const QByteArray run = samples::RunLengthBmp(8, 4, 1, QByteArray("\x04\x01\0\x01", 4));
  for (const QByteArray& bytes :
       {samples::Bmp({8}), run, samples::Jpeg({}), samples::Gif({}), samples::Png(samples::Fading(9, 9)),
        samples::Webp(samples::Fading(9, 9)), wmf}) {
    const QImage plain = LoadPicture(bytes).Image();
    EXPECT_EQ(LoadPicture(bytes + QByteArray(200, '\0')).Image(), plain) << bytes.left(4).toStdString();
    EXPECT_EQ(LoadPicture(bytes + "BM and more").Image(), plain) << bytes.left(4).toStdString();
  }
}

TEST(LoadPicture, NothingElseIsAPicture) {
  const QImage image = samples::PhotoLike(20, 20);
  for (const char* format : {"ppm", "xpm", "ico"}) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, format)) << format;
    EXPECT_EQ(ErrorOf([&] { LoadPicture(bytes); }), kErrInvalidPicture) << format;
  }
  for (const QByteArray& bytes : {QByteArray(), QByteArray("B"), QByteArray("plain text, no picture at all"),
                                  QByteArray(5000, '\0'), QByteArray("GIF88a no such version")}) {
    EXPECT_EQ(ErrorOf([&] { LoadPicture(bytes); }), kErrInvalidPicture) << bytes.left(10).toStdString();
  }
  EXPECT_TRUE(LoadPicture().IsEmpty());
  EXPECT_TRUE(Picture(QImage()).IsEmpty());
}

TEST(LoadPicture, FromAFile) {
  const QTemporaryDir folder;
  const auto error_of = [](const QString& path) { return ErrorOf([&] { LoadPicture(path); }); };
  ReplaceFile(folder.filePath("bär.pic"), samples::Gif({}));
  EXPECT_EQ(LoadPicture(folder.filePath("bär.pic")).Image(), LoadPicture(samples::Gif({})).Image());
  EXPECT_EQ(error_of(folder.filePath("none.bmp")), kErrFileNotFound);
  EXPECT_EQ(error_of(folder.filePath("none/none.bmp")), kErrPathNotFound);
  EXPECT_EQ(error_of(folder.path()), kErrPathFileAccess);
  EXPECT_EQ(error_of("/dev/zero"), kErrPathFileAccess);
}

}  // namespace
}  // namespace orv
