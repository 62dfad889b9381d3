#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include "base/RuntimeError.h"
#include "imaging/Picture.h"
#include "platform/imaging/Samples.h"

namespace orv {
namespace {

using samples::Bytes;

int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

int Distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

TEST(LoadPicture, BmpOfEachKind) {
  // Bits, header, compression, top down.
  const samples::BmpShape kShapes[] = {{1},
                                       {4},
                                       {8},
                                       {16},
                                       {24},
                                       {32},
                                       {1, 12},
                                       {8, 12},
                                       {24, 12},
                                       {8, 64},
                                       {24, 124},
                                       {16, 40, 3},
                                       {32, 40, 3},
                                       {16, 56, 3},
                                       {32, 108, 3},
                                       {24, 40, 0, true},
                                       {8, 40, 0, true},
                                       {1, 40, 0, false, 33, 2}};
  for (const samples::BmpShape& shape : kShapes) {
    SCOPED_TRACE(testing::Message() << shape.bits << " bits, header " << shape.header << ", compression "
                                    << shape.compression << ", " << shape.top_down);
    const Picture picture = LoadPicture(samples::Bmp(shape));
    ASSERT_EQ(picture.Width(), shape.width);
    ASSERT_EQ(picture.Height(), shape.height);
    EXPECT_EQ(picture.Image().format(), QImage::Format_RGB32);
    for (int y = 0; y < shape.height; ++y) {
      for (int x = 0; x < shape.width; ++x) {
        ASSERT_EQ(picture.Image().pixel(x, y), samples::BmpColour(shape.bits, x, y)) << x << ", " << y;
      }
    }
  }
}

TEST(LoadPicture, RunLengthBmp) {
  using samples::PaletteColour;
  // Bottom row: a run of 3 and two single pixels (padded); then a move over a row; the top row by runs
  // that reach over the edge.
  const QByteArray codes8 = Bytes()
                                .U8(3)
                                .U8(9)
                                .U8(0)
                                .U8(3)
                                .U8(1)
                                .U8(2)
                                .U8(3)
                                .U8(0)
                                .U8(0)
                                .U8(0)
                                .U8(0)
                                .U8(2)
                                .U8(2)
                                .U8(1)
                                .U8(200)
                                .U8(7)
                                .U8(0)
                                .U8(1)
                                .data;
  const QImage eight = LoadPicture(samples::RunLengthBmp(8, 6, 3, codes8)).Image();
  const int kRows8[3][6] = {{0, 0, 7, 7, 7, 7}, {0, 0, 0, 0, 0, 0}, {9, 9, 9, 1, 2, 3}};
  const QByteArray codes4 =
      Bytes().U8(5).U8(0x12).U8(0).U8(0).U8(0).U8(5).U8(0x34).U8(0x56).U8(0x70).U8(0).U8(0).U8(1).data;
  const QImage four = LoadPicture(samples::RunLengthBmp(4, 5, 2, codes4)).Image();
  const int kRows4[2][5] = {{3, 4, 5, 6, 7}, {1, 2, 1, 2, 1}};
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 6; ++x) EXPECT_EQ(eight.pixel(x, y), PaletteColour(kRows8[y][x])) << x << ", " << y;
  }
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 5; ++x) EXPECT_EQ(four.pixel(x, y), PaletteColour(kRows4[y][x])) << x << ", " << y;
  }
}

TEST(LoadPicture, JpegOfEachKind) {
  const samples::JpegShape kShapes[] = {{40, 24},
                                        {39, 25, true},
                                        {40, 24, false, true},
                                        {40, 24, true, true},
                                        {40, 24, false, false, true},
                                        {40, 24, false, false, true, true},
                                        {40, 24, false, true, true, false, false}};
  for (const samples::JpegShape& shape : kShapes) {
    SCOPED_TRACE(testing::Message() << shape.grey << shape.progressive << shape.ink << shape.ink_as_luma
                                    << shape.ink_marked);
    const Picture picture = LoadPicture(samples::Jpeg(shape));
    ASSERT_EQ(picture.Image().size(), QSize(shape.width, shape.height));
    EXPECT_EQ(picture.Image().format(), QImage::Format_RGB32);
    for (const QPoint at : {QPoint(4, 4), QPoint(shape.width - 4, 4), QPoint(4, shape.height - 4),
                            QPoint(shape.width - 4, shape.height - 4)}) {
      EXPECT_LE(Distance(picture.Image().pixel(at), samples::JpegColour(shape, at.x(), at.y())), 8)
          << at.x() << ", " << at.y();
    }
  }
}

TEST(LoadPicture, OrientationAndResolutionOfAJpegAreIgnored) {
  QByteArray bytes = samples::Jpeg({});
  // "Rotate by a quarter" and 300 dots an inch, in front of everything else.
  const QByteArray exif = Bytes()
                              .Raw(QByteArray("Exif\0\0II", 8))
                              .U16(42)
                              .U32(8)
                              .U16(1)
                              .U16(0x112)
                              .U16(3)
                              .U32(1)
                              .U32(6)
                              .U32(0)
                              .data;
  bytes.insert(2, QByteArray("\xff\xe1\0", 3) + char(exif.size() + 2) + exif);
  const Picture picture = LoadPicture(bytes);
  EXPECT_EQ(picture.Image().size(), QSize(40, 24));
  EXPECT_EQ(picture.Image().dotsPerMeterX(), 3780);
  EXPECT_EQ(LoadPicture(samples::Bmp({})).Image().dotsPerMeterX(), 3780);
}

TEST(LoadPicture, GifFramesAndTransparency) {
  const samples::GifShape kShapes[] = {{},
                                       {{8, 6}, {0, 0, 8, 6}, -1, true},
                                       {{8, 6}, {0, 0, 8, 6}, 2},
                                       {{8, 11}, {2, 1, 3, 9}, -1, true},
                                       {{8, 6}, {5, 4, 6, 5}, 1},
                                       {{8, 6}, {0, 0, 8, 6}, -1, false, 2}};
  for (const samples::GifShape& shape : kShapes) {
    SCOPED_TRACE(testing::Message() << shape.frame.x() << " " << shape.transparent << shape.interlaced);
    const QImage image = LoadPicture(samples::Gif(shape)).Image();
    const bool opaque = shape.transparent < 0 && shape.frame.size() == shape.screen;
    EXPECT_EQ(image.format(), opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    ASSERT_EQ(image.rect(), QRect(QPoint(), shape.screen) | shape.frame);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const int fx = x - shape.frame.x();
        const int fy = y - shape.frame.y();
        const bool clear = !shape.frame.contains(x, y) || (fx + fy) % 4 == shape.transparent;
        ASSERT_EQ(image.pixel(x, y), clear ? 0 : samples::GifColour(fx, fy)) << x << ", " << y;
      }
    }
  }
}

TEST(LoadPicture, BytesBehindThePictureAreIgnored) {
  const QByteArray wmf = samples::Wmf().Window(0, 0, 9, 9).Record(0x041B, {5, 5, 0, 0}).Unplaced();
  const QByteArray run = samples::RunLengthBmp(8, 4, 1, QByteArray("\x04\x01\0\x01", 4));
  for (const QByteArray& bytes : {samples::Bmp({8}), run, samples::Jpeg({}), samples::Gif({}), wmf}) {
    const QImage plain = LoadPicture(bytes).Image();
    EXPECT_EQ(LoadPicture(bytes + QByteArray(200, '\0')).Image(), plain) << bytes.left(4).toStdString();
    EXPECT_EQ(LoadPicture(bytes + "BM and more").Image(), plain) << bytes.left(4).toStdString();
  }
}

TEST(LoadPicture, OnlyTheFourFormatsArePictures) {
  const QImage image = samples::PhotoLike(20, 20);
  for (const char* format : {"png", "ppm", "xpm", "ico"}) {
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
  EXPECT_EQ(LoadPicture().Width(), 0);
  EXPECT_TRUE(Picture(QImage()).IsEmpty());
}

TEST(LoadPicture, FromAFile) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("b\u00e4r.pic"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(samples::Gif({}));
  file.close();
  EXPECT_EQ(LoadPicture(file.fileName()).Image(), LoadPicture(samples::Gif({})).Image());
  EXPECT_EQ(ErrorOf([&] { LoadPicture(folder.filePath("none.bmp")); }), kErrFileNotFound);
  EXPECT_EQ(ErrorOf([&] { LoadPicture(folder.filePath("none/none.bmp")); }), kErrPathNotFound);
  EXPECT_EQ(ErrorOf([&] { LoadPicture(folder.path()); }), kErrPathFileAccess);
  EXPECT_EQ(ErrorOf([&] { LoadPicture(QStringLiteral("/dev/zero")); }), kErrPathFileAccess);
}

}  // namespace
}  // namespace orv
