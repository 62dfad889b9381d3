#include <gtest/gtest.h>

#include <random>

#include "imaging/Picture.h"
#include "platform/imaging/Samples.h"
#include "support/Errors.h"

namespace orv {
namespace {

using samples::Bytes;

samples::Wmf Drawing() {
  samples::Wmf wmf;
  wmf.Window(0, 0, 60, 40).Pen(1, 1, qRgb(0, 0, 90)).Brush(qRgb(200, 30, 0));
  wmf.Select(0).Select(1).Record(0x001E, {}).Record(0x0416, {35, 50, 2, 2});
  wmf.Rectangle(30, 40, 3, 3)
      .Record(0x0324, {3, 1, 1, 50, 5, 20, 39})
      .Record(0x0538, {2, 3, 3}, QByteArray(24, 9));
  wmf.Record(0x0127, {-1}).Record(0x081A, {1, 1, 30, 30, 40, 60, 0, 0}).Record(0x061C, {4, 4, 20, 20, 1, 1});
  wmf.Record(0x02FB, {-12, 0, 0, 0, 700, 0, 0, 0, 0}, QByteArray("Arial\0", 6)).Select(2);
  wmf.Record(0x0A32, {5, 5, 3, 6, 0, 0, 30, 20}, QByteArray("abc\0\x06\0\x06\0\x06\0", 10));
  wmf.Record(0x0521, {4}, Bytes().Raw("text").U16(20).U16(2).data).Record(0x01F0, {0});
  wmf.Record(0x0F43, {0x20, 0xCC, 0, 3, 5, 0, 0, 20, 30, 5, 10}, samples::Dib({8}));
  wmf.Record(0x0142, {3, 0}, samples::Dib({4})).Select(0).Record(0x061D, {0x21, 0xF0, 10, 10, 1, 1});
  return wmf;
}

struct Sample {
  const char* name;
  QByteArray bytes;
  qsizetype needed;  // a file cut to fewer bytes lacks a part of the picture
};

std::vector<Sample> Samples() {
  std::vector<Sample> all;
  const auto add = [&](const char* name, const QByteArray& bytes, qsizetype spare) {
    all.push_back({name, bytes, bytes.size() - spare});
  };
  add("BMP of 1 bit", samples::Bmp({1, 40, 0, false, 33, 4}), 3);
  add("BMP of 4 bits", samples::Bmp({4}), 1);
  add("BMP of 8 bits, old header", samples::Bmp({8, 12}), 3);
  add("BMP of 16 bits", samples::Bmp({16, 40, 3}), 2);
  add("BMP of 24 bits", samples::Bmp({24, 40, 0, true}), 1);
  add("BMP of 32 bits", samples::Bmp({32, 124, 3}), 0);
  // Here and in a GIF the end mark may be missing.
  const QByteArray runs("\x03\x09\0\x03\1\2\3\0\0\0\0\2\1\1\x05\x07\0\1", 18);
  add("run-length BMP of 8 bits", samples::RunLengthBmp(8, 6, 3, runs), 2);
  add("run-length BMP of 4 bits", samples::RunLengthBmp(4, 6, 3, runs), 2);
  add("JPG", samples::Jpeg({}), 0);
  samples::JpegShape restarting;
  restarting.restarts = restarting.photo = true;
  add("JPG with restarts", samples::Jpeg(restarting), 0);
  add("grey JPG", samples::Jpeg({40, 24, true}), 0);
  add("progressive JPG", samples::Jpeg({40, 24, false, true}), 0);
  add("ink JPG", samples::Jpeg({40, 24, false, true, true, true}), 0);
  add("GIF", samples::Gif({{60, 40}, {0, 0, 60, 40}}), 1);
  add("transparent GIF", samples::Gif({{60, 40}, {5, 5, 50, 30}, 1, true}), 1);
  // The end mark and what checks a picture that is whole by then.
  add("PNG", samples::Png(samples::PhotoLike(40, 24)), 21);
  add("transparent interlaced PNG", samples::Png(samples::Fading(40, 24), true), 21);
  add("WebP", samples::Webp(samples::PhotoLike(40, 24)), 1);
  add("transparent lossy WebP", samples::Webp(samples::Fading(40, 24), false), 1);
  add("WMF", Drawing().Unplaced(), 0);
  add("placeable WMF", Drawing().Placeable({0, 0, 900, 600}, 1440), 0);
  return all;
}

int ErrorOfLoading(const QByteArray& bytes) {
  return ErrorOf([&] { EXPECT_FALSE(LoadPicture(bytes).IsEmpty()); });
}

TEST(BrokenPicture, CutShort) {
  for (const Sample& sample : Samples()) {
    ASSERT_EQ(ErrorOfLoading(sample.bytes), 0) << sample.name;
    const qsizetype step = std::max<qsizetype>(1, sample.needed / 600);
    for (qsizetype size = sample.needed - 1; size >= 0; size -= step) {
      ASSERT_EQ(ErrorOfLoading(sample.bytes.left(size)), kErrInvalidPicture)
          << sample.name << " cut to " << size << " of " << sample.bytes.size();
    }
  }
}

// Stored pictures have zero bytes behind them, and these must not pass for pixels.
TEST(BrokenPicture, CutShortBeforeZeroBytes) {
  for (const QByteArray& bytes :
       {samples::Jpeg({}), samples::Jpeg({40, 24, false, true}), samples::Gif({{60, 40}, {0, 0, 60, 40}}),
        samples::Png(samples::PhotoLike(40, 24)), samples::Webp(samples::PhotoLike(40, 24)),
        Drawing().Unplaced()}) {
    for (const int part : {40, 70, 90, 97}) {
      EXPECT_EQ(ErrorOfLoading(bytes.left(bytes.size() * part / 100) + QByteArray(40, '\0')),
                kErrInvalidPicture)
          << bytes.left(4).toStdString() << " at " << part;
    }
  }
}

TEST(BrokenPicture, AHundredVariantsOfEach) {
  std::mt19937 random(20240611);
  for (const Sample& sample : Samples()) {
    int loaded = 0;
    for (int variant = 0; variant < 100; ++variant) {
      QByteArray bytes = sample.bytes;
      const unsigned flips = 1 + random() % 8;
      for (unsigned i = 0; i < flips; ++i) {
        const qsizetype at = qsizetype(random()) % bytes.size();
        bytes[at] = random() % 2 == 0 ? char(bytes[at] ^ (1 << random() % 8)) : char(random());
      }
      if (random() % 3 == 0) bytes.truncate(qsizetype(random()) % bytes.size());
      if (random() % 4 == 0) bytes.remove(qsizetype(random()) % (bytes.size() + 1), 1 + random() % 9);
      const int error = ErrorOfLoading(bytes);
      ASSERT_TRUE(error == 0 || error == kErrInvalidPicture) << sample.name << ", variant " << variant;
      loaded += error == 0 ? 1 : 0;
    }
    EXPECT_LT(loaded, 100) << sample.name;
  }
}

TEST(BrokenPicture, TooLarge) {
  const auto patched = [](QByteArray bytes, qsizetype at, const QByteArray& with) {
    return bytes.replace(at, with.size(), with);
  };
  const QByteArray jpeg = samples::Jpeg({});
  const qsizetype frame = jpeg.indexOf(QByteArray("\xff\xc0", 2));
  ASSERT_GT(frame, 0);
  const QByteArray kTooLarge[] = {
      patched(samples::Bmp({24}), 18, Bytes().U32(100000).U32(100000).data),
      patched(samples::Bmp({1}), 18, Bytes().U32(0x7fffffff).U32(0x80000000).data),
      samples::RunLengthBmp(8, 32000, 2001, QByteArray("\0\1", 2)),
      patched(jpeg, frame + 5, QByteArray("\xff\0\xff\0", 4)),
      patched(samples::Gif({}), 6, QByteArray(4, '\xff')),
      samples::Wmf().Placeable({-30000, -30000, 60000, 60000}, 96),
      samples::Wmf().Placeable({0, 0, 5000, 5000}, 1),
      // With a second image for what is transparent.
      samples::Gif({{9000, 4000}, {0, 0, 8, 6}, 1}),
      // A side that 16 bits can't measure.
      samples::Bmp({1, 40, 0, false, 32768, 2}),
      samples::Jpeg({32768, 8}),
      samples::Gif({{32768, 2}, {0, 0, 32768, 2}}),
      samples::Gif({{2, 32768}, {0, 0, 2, 32768}}),
      samples::Wmf().Placeable({-16000, 0, 32000, 1}, 90),
      samples::Png(QImage(32768, 2, QImage::Format_RGB32)),
      samples::Png(QImage(2, 32768, QImage::Format_RGB32)),
      patched(samples::Png(QImage(2, 2, QImage::Format_RGB32)), 16, QByteArray("\0\1\0\0\0\1\0\0", 8)),
  };
  for (const QByteArray& bytes : kTooLarge) {
    EXPECT_EQ(ErrorOfLoading(bytes), kErrInvalidPicture) << bytes.left(6).toHex().toStdString();
  }
  EXPECT_EQ(ErrorOfLoading(samples::RunLengthBmp(8, 32000, 2000, QByteArray("\0\1", 2))), 0);
  EXPECT_EQ(ErrorOfLoading(samples::Bmp({1, 40, 0, false, 32767, 2})), 0);
}

// A progressive picture of few bytes that asks for a pass over everything again and again.
TEST(BrokenPicture, JpegWithEndlessScans) {
  QByteArray bytes = samples::Jpeg({40, 24, true, true});
  const qsizetype last = bytes.lastIndexOf(QByteArray("\xff\xda", 2));
  const QByteArray scan = bytes.mid(last, bytes.size() - 2 - last);
  for (int i = 0; i < 1000; ++i) bytes.insert(last, scan);
  EXPECT_EQ(ErrorOfLoading(bytes), kErrInvalidPicture);
}

// Large ones take the time of each scan and the memory of all coefficients.
TEST(BrokenPicture, LargeProgressiveJpegWithinBounds) {
  EXPECT_EQ(ErrorOfLoading(samples::Jpeg({2000, 2000, false, true})), 0);
  EXPECT_EQ(ErrorOfLoading(samples::Jpeg({4000, 4000})), 0);
  EXPECT_EQ(ErrorOfLoading(samples::Jpeg({4500, 4500, false, true, true, false, true, 95, {1, 1}})),
            kErrInvalidPicture)
      << "memory";
  QByteArray bytes = samples::Jpeg({4500, 4500, true, true});
  EXPECT_EQ(ErrorOfLoading(bytes), 0);
  const qsizetype last = bytes.lastIndexOf(QByteArray("\xff\xda", 2));
  const QByteArray scan = bytes.mid(last, bytes.size() - 2 - last);
  for (int i = 0; i < 30; ++i) bytes.insert(last, scan);
  EXPECT_EQ(ErrorOfLoading(bytes), kErrInvalidPicture) << "scans";
}

}  // namespace
}  // namespace orv
