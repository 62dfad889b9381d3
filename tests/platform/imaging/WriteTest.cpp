#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>

#include "base/Files.h"
#include "imaging/GifControl.h"
#include "imaging/JpegLibrary.h"
#include "imaging/Picture.h"
#include "imaging/PngFile.h"
#include "platform/imaging/Samples.h"
#include "support/Errors.h"

namespace orv {
namespace {

// Of each channel.
double MeanError(const QImage& a, const QImage& b) {
  double sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y);
      const QRgb q = b.pixel(x, y);
      sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
    }
  }
  return sum / 3 / a.width() / a.height();
}

// Rows of blue, green and red, the last row of the image first if told so, with padding that shows.
QByteArray Rows(const QImage& image, bool bottom_up, int padding) {
  QByteArray rows;
  for (int i = 0; i < image.height(); ++i) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb c = image.pixel(x, bottom_up ? image.height() - 1 - i : i);
      rows.append(char(qBlue(c))).append(char(qGreen(c))).append(char(qRed(c)));
    }
    rows.append(padding, '\x7f');
  }
  return rows;
}

class Write : public testing::Test {
 protected:
  QString Path(const char* name) const { return folder_.filePath(name); }
  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

  int WriteJpeg(const QImage& image, const QString& path, bool bottom_up = true) const {
    const int padding = (4 - image.width() * 3 % 4) % 4;
    const QByteArray rows = Rows(image, bottom_up, padding);
    const QByteArray name = QFile::encodeName(path);
    JPEG_CORE_PROPERTIES record;
    EXPECT_EQ(ijlInit(&record), IJL_OK);
    record.DIBWidth = record.JPGWidth = image.width();
    record.JPGHeight = image.height();
    record.DIBHeight = bottom_up ? -image.height() : image.height();
    record.DIBBytes = reinterpret_cast<const std::uint8_t*>(rows.data());
    record.DIBPadBytes = padding;
    record.JPGFile = name.data();
    record.jquality = 90;
    const int result = ijlWrite(&record, IJL_JFILE_WRITEWHOLEIMAGE);
    EXPECT_EQ(ijlFree(&record), IJL_OK);
    return result;
  }
  // Converts a.bmp to a.gif and reads this by another decoder.
  QImage GifOfBmp(bool interlaced) const {
    GifControl control;
    control.Convert(Path("a.bmp"), Path("a.gif"), interlaced);
    EXPECT_FALSE(control.Failed()) << control.ErrorText().toStdString();
    return QImageReader(Path("a.gif"), "gif").read().convertToFormat(QImage::Format_RGB32);
  }

  QTemporaryDir folder_;
};

TEST_F(Write, BmpIsPlainAndReadsBackExactly) {
  for (const int width : {1, 2, 3, 4, 61}) {
    const QImage image = samples::PhotoLike(width, 7);
    SavePicture(Picture(image), Path("a.bmp"));
    EXPECT_EQ(QFile(Path("a.bmp")).size(), 54 + (width * 3 + 3) / 4 * 4 * 7);
    EXPECT_EQ(QImage(Path("a.bmp"), "bmp").convertToFormat(QImage::Format_RGB32), image) << width;
  }
  SavePicture(LoadPicture(samples::Gif({{4, 1}, {0, 0, 4, 1}, 1})), Path("b.bmp"));
  EXPECT_EQ(LoadPicture(Path("b.bmp")).Image().pixel(1, 0), 0xffffffff) << "clear over white";
  EXPECT_EQ(LoadPicture(Path("b.bmp")).Image().pixel(2, 0), samples::GifColour(2, 0));
  EXPECT_NE(ErrorOf([&] { SavePicture(Picture(), Path("c.bmp")); }), 0);
  EXPECT_NE(ErrorOf([&] { SavePicture(LoadPicture(Path("b.bmp")), Path("a?.bmp")); }), 0);
  EXPECT_EQ(Files(), QStringList({"a.bmp", "b.bmp"}));
}

TEST_F(Write, JpegIsUprightAndClose) {
  for (const QSize size : {QSize(101, 60), QSize(1, 1), QSize(1, 9), QSize(50, 1)}) {
    const QImage image = samples::PhotoLike(size.width(), size.height());
    for (const bool bottom_up : {true, false}) {
      ASSERT_EQ(WriteJpeg(image, Path("a.jpg"), bottom_up), IJL_OK);
      const QImage back = QImageReader(Path("a.jpg"), "jpeg").read();
      ASSERT_EQ(back.size(), size);
      EXPECT_LT(MeanError(back, image), 4) << size.width() << " by " << size.height() << " " << bottom_up;
      EXPECT_LT(MeanError(LoadPicture(Path("a.jpg")).Image(), back), 0.5);
    }
  }
}

TEST_F(Write, JpegHasTheTablesOfQuality90AndFullColour) {
  ASSERT_EQ(WriteJpeg(samples::PhotoLike(20, 20), Path("a.jpg")), IJL_OK);
  const QByteArray bytes = ReadWhole(Path("a.jpg"));
  // Both tables, each behind a mark, its length and its number.
  const auto tables_of = [](const QByteArray& jpeg) {
    return jpeg.mid(jpeg.indexOf("\xff\xdb"), 2 * 69).toHex();
  };
  samples::JpegShape shape;
  shape.quality = 90;
  EXPECT_EQ(tables_of(bytes), tables_of(samples::Jpeg(shape)));
  EXPECT_TRUE(bytes.contains(QByteArray("\3\1\x11\0\2\x11\1\3\x11\1", 10))) << "three components of one size";
  EXPECT_EQ(bytes.mid(6, 12).toHex(), QByteArray("JFIF\0\1\1\1\0\x60\0\x60", 12).toHex())
      << "96 dots an inch";
}

TEST_F(Write, PngReadsBackExactly) {
  for (const QSize size : {QSize(1, 1), QSize(61, 7), QSize(608, 256)}) {
    const QImage image = samples::PhotoLike(size.width(), size.height());
    SavePng(Picture(image), Path("a.png"));
    const QImage back = QImageReader(Path("a.png"), "png").read();
    EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), image) << size.width();
    EXPECT_EQ(back.dotsPerMeterX(), 3780);
    EXPECT_EQ(back.dotsPerMeterY(), 3780);
  }
  const QByteArray before = ReadWhole(Path("a.png"));
  EXPECT_NE(ErrorOf([&] { SavePng(Picture(), Path("a.png")); }), 0);
  EXPECT_NE(ErrorOf([&] { SavePng(Picture(samples::PhotoLike(9, 9)), Path("none/a.png")); }), 0);
  EXPECT_EQ(ReadWhole(Path("a.png")), before);
  EXPECT_EQ(Files(), QStringList("a.png"));
}

TEST_F(Write, JpegFailuresAreNegativeCodes) {
  const QImage image = samples::PhotoLike(300, 200);
  EXPECT_LT(WriteJpeg(image, Path("none/a.jpg")), 0);
  EXPECT_LT(WriteJpeg(image, folder_.path()), 0);
  EXPECT_LT(WriteJpeg(image, "/dev/full"), 0);
  EXPECT_LT(WriteJpeg(samples::PhotoLike(66000, 1), Path("wide.jpg")), 0);
  JPEG_CORE_PROPERTIES record;
  EXPECT_LT(ijlWrite(&record, IJL_JFILE_WRITEWHOLEIMAGE), 0) << "not prepared";
  EXPECT_LT(ijlFree(&record), 0);
  ASSERT_EQ(ijlInit(&record), IJL_OK);
  EXPECT_LT(ijlWrite(&record, IJL_JFILE_WRITEWHOLEIMAGE), 0) << "nothing filled in";
  EXPECT_EQ(ijlFree(&record), IJL_OK);
}

TEST_F(Write, GifOfAPhotoOnAPlainPageIsClose) {
  QImage image = samples::PhotoLike(400, 300);
  const QRect page(0, 200, 400, 100);
  for (int y = page.top(); y <= page.bottom(); ++y) {
    for (int x = 0; x < 400; ++x) image.setPixel(x, y, qRgb(0xd5, 0xdb, 0xe2));
  }
  SavePicture(Picture(image), Path("a.bmp"));
  for (const bool interlaced : {false, true}) {
    const QImage back = GifOfBmp(interlaced);
    ASSERT_EQ(back.size(), image.size());
    EXPECT_LT(MeanError(back, image), 8);
    EXPECT_EQ(back.copy(page), image.copy(page)) << "no speckles";
    EXPECT_EQ(LoadPicture(Path("a.gif")).Image(), back);
  }
}

TEST_F(Write, GifOfFewColoursIsExact) {
  using samples::BmpShape;
  for (const BmpShape& shape : {BmpShape(1), BmpShape(4, 40, 0, false, 1, 1),
                                BmpShape(8, 40, 0, false, 16, 9), BmpShape(24, 40, 0, false, 3, 700)}) {
    ReplaceFile(Path("a.bmp"), samples::Bmp(shape));
    EXPECT_EQ(GifOfBmp(false), LoadPicture(Path("a.bmp")).Image()) << shape.bits;
  }
}

// The exact road ends and the reduction begins at 257.
TEST_F(Write, GifOf256ColoursIsExactAndOneOfMoreClose) {
  for (const int colours : {256, 257}) {
    QImage image(colours, 40, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < colours; ++x) image.setPixel(x, y, qRgb(x % 256, 255 - x % 256, x / 256));
    }
    SavePicture(Picture(image), Path("a.bmp"));
    const QImage back = GifOfBmp(false);
    EXPECT_EQ(back == image, colours == 256);
    EXPECT_LT(MeanError(back, image), 1);
  }
}

// What a band of one colour would show is made up for by its neighbours.
TEST_F(Write, GifOfSmoothShadesIsDithered) {
  QImage image(256, 256, QImage::Format_RGB32);
  for (int y = 0; y < 256; ++y) {
    for (int x = 0; x < 256; ++x) image.setPixel(x, y, qRgb(x, y, (x + y) / 2));
  }
  SavePicture(Picture(image), Path("a.bmp"));
  const auto blurred = [](const QImage& of) {
    return of.scaled(32, 32, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  };
  EXPECT_LT(MeanError(blurred(GifOfBmp(false)), blurred(image)), 1.5);
}

TEST_F(Write, GifFailuresAreAFlagAndAText) {
  SavePicture(Picture(samples::PhotoLike(9, 9)), Path("a.bmp"));
  SavePicture(Picture(samples::PhotoLike(65536, 1)), Path("wide.bmp"));
  ReplaceFile(Path("kept.gif"), "old");
  ASSERT_TRUE(QFile::setPermissions(Path("kept.gif"), QFile::ReadOwner));
  const QStringList before = Files();
  GifControl control;
  using Names = std::pair<const char*, const char*>;
  for (const auto& [from, to] :
       {Names("none.bmp", "a.gif"), Names("kept.gif", "a.gif"), Names("wide.bmp", "a.gif"),
        Names("a.bmp", "a:b.gif"), Names("a.bmp", "none/a.gif"), Names("a.bmp", "kept.gif")}) {
    control.Convert(Path(from), Path(to), false);
    EXPECT_TRUE(control.Failed()) << from << " to " << to;
    EXPECT_FALSE(control.ErrorText().isEmpty());
  }
  EXPECT_EQ(Files(), before);
  EXPECT_EQ(ReadWhole(Path("kept.gif")), "old");
  control.Convert(Path("a.bmp"), Path("a.gif"), false);
  EXPECT_FALSE(control.Failed());
  EXPECT_TRUE(control.ErrorText().isEmpty());
}

}  // namespace
}  // namespace orv
