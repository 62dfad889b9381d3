#include <gtest/gtest.h>

#include <QImage>

#include "base/RuntimeError.h"
#include "imaging/Picture.h"
#include "platform/imaging/Samples.h"

namespace orv {
namespace {

using samples::Bytes;
using samples::Wmf;

constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kGreen = 0xff00ff00;
constexpr QRgb kBlue = 0xff0000ff;
constexpr QRgb kClear = 0;
constexpr int kNullPen = 5;

// A window of 100 by 50 with no pen and the given brushes as objects 1, 2, ...; the first is selected.
Wmf Start(std::initializer_list<QRgb> brushes) {
  Wmf wmf;
  wmf.Window(0, 0, 100, 50).Pen(kNullPen, 0, 0).Record(0x012D, {0});
  for (const QRgb colour : brushes) wmf.Brush(colour);
  return wmf.Record(0x012D, {1});
}

QImage Load(const QByteArray& bytes) {
  return LoadPicture(bytes).Image();
}

void ExpectPixels(const QImage& image, std::initializer_list<std::pair<QPoint, QRgb>> pixels) {
  for (const auto& [at, colour] : pixels) {
    EXPECT_EQ(image.pixel(at), colour) << at.x() << ", " << at.y();
  }
}

TEST(Wmf, SizesOfBothKinds) {
  const auto drawing = [](int scale) {
    return Wmf()
        .Window(0, 0, 100 * scale, 50 * scale)
        .Pen(kNullPen, 0, 0)
        .Brush(kRed)
        .Record(0x012D, {0})
        .Record(0x012D, {1})
        .Record(0x041B, {50 * scale, 50 * scale, 0, 0});
  };
  for (const QByteArray& bytes : {drawing(15).Placeable({0, 0, 1500, 750}, 1440), drawing(1).Unplaced()}) {
    const QImage image = Load(bytes);
    ASSERT_EQ(image.size(), QSize(100, 50));
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    ExpectPixels(image, {{{0, 0}, kRed}, {{49, 49}, kRed}, {{50, 0}, kClear}, {{99, 49}, kClear}});
  }
  EXPECT_EQ(Load(drawing(300).Unplaced()).size(), QSize(2048, 1024));  // too many units for pixels
}

// Without a window the drawing itself gives the size; with a fixed unit its y axis goes up.
TEST(Wmf, SizeFromTheDrawing) {
  Wmf plain;
  plain.Pen(kNullPen, 0, 0).Brush(kRed).Brush(kBlue).Record(0x012D, {0}).Record(0x012D, {1});
  Wmf metric = Wmf(plain).Record(0x0103, {3});  // 2540 units an inch
  plain.Record(0x041B, {40, 60, 10, 20}).Record(0x012D, {2}).Record(0x041B, {50, 60, 40, 20});
  metric.Record(0x041B, {2540, 5080, 0, 0}).Record(0x012D, {2}).Record(0x041B, {5080, 5080, 2540, 0});
  const QImage pixels = Load(plain.Unplaced());
  ASSERT_EQ(pixels.size(), QSize(40, 40));
  ExpectPixels(pixels, {{{0, 0}, kRed}, {{39, 29}, kRed}, {{0, 30}, kBlue}, {{39, 39}, kBlue}});
  const QImage inches = Load(metric.Unplaced());
  ASSERT_EQ(inches.size(), QSize(192, 192));
  ExpectPixels(inches, {{{5, 5}, kBlue}, {{5, 186}, kRed}});
}

TEST(Wmf, WindowMayBeMovedScaledAndUpsideDown) {
  Wmf wmf = Start({kRed, kBlue});
  wmf.Record(0x020B, {50, 0}).Record(0x020C, {-50, 100});  // y goes up
  wmf.Record(0x041B, {10, 10, 0, 0});
  wmf.Record(0x020B, {0, 0}).Record(0x020C, {50, 100}).Record(0x020F, {0, -50});
  wmf.Record(0x0410, {2, 1, 2, 1}).Record(0x012D, {2}).Record(0x041B, {5, -45, 0, -50});
  ExpectPixels(Load(wmf.Unplaced()), {{{0, 49}, kRed},
                                      {{9, 40}, kRed},
                                      {{9, 39}, kClear},
                                      {{10, 45}, kClear},
                                      {{0, 0}, kBlue},
                                      {{9, 9}, kBlue},
                                      {{10, 9}, kClear}});
}

TEST(Wmf, ObjectsTakeTheLowestFreePlace) {
  Wmf wmf = Start({kRed, kBlue});
  wmf.Record(0x01F0, {1}).Brush(kGreen).Record(0x012D, {1}).Record(0x041B, {10, 10, 0, 0});
  wmf.Record(0x012D, {99}).Record(0x06FF, {}).Record(0x012D, {3}).Record(0x041B, {10, 20, 0, 10});
  wmf.Record(0x012D, {2}).Record(0x041B, {10, 30, 0, 20});
  ExpectPixels(Load(wmf.Unplaced()), {{{5, 5}, kGreen}, {{15, 5}, kGreen}, {{25, 5}, kBlue}});
}

TEST(Wmf, PolygonsWithHoles) {
  const QByteArray outer = Bytes().U16(0).U16(0).U16(40).U16(0).U16(40).U16(40).U16(0).U16(40).data;
  const QByteArray inner = Bytes().U16(10).U16(10).U16(30).U16(10).U16(30).U16(30).U16(10).U16(30).data;
  for (const int mode : {1, 2}) {
    const QImage image =
        Load(Start({kRed}).Record(0x0106, {mode}).Record(0x0538, {2, 4, 4}, outer + inner).Unplaced());
    ExpectPixels(image, {{{5, 5}, kRed}, {{20, 20}, mode == 1 ? kClear : kRed}, {{41, 20}, kClear}});
  }
}

TEST(Wmf, LinesCurvesAndPixels) {
  Wmf wmf = Start({kRed});
  wmf.Record(0x0418, {20, 20, 0, 0});                  // a disc
  wmf.Record(0x081A, {0, 50, 20, 80, 40, 70, 0, 30});  // a pie: from the right up to the top
  wmf.Record(0x0830, {30, 0, 10, 0, 50, 40, 30, 20});  // a chord
  wmf.Record(0x041F, {0x00ff, 0xff, 45, 90});          // a pixel
  wmf.Pen(0, 0, kBlue).Record(0x012D, {2}).Record(0x0214, {40, 60}).Record(0x0213, {40, 70});
  wmf.Record(0x0213, {49, 70})
      .Record(0x0325, {2, 75, 40, 85, 40})
      .Record(0x0817, {0, 90, 0, 90, 20, 100, 0, 80});
  const QImage image = Load(wmf.Unplaced());
  ExpectPixels(image, {{{10, 10}, kRed},
                       {{1, 1}, kClear},
                       {{55, 10}, kRed},
                       {{45, 10}, kClear},
                       {{55, 25}, kClear},
                       {{90, 45}, 0xffff00ff},
                       {{65, 40}, kBlue},
                       {{70, 45}, kBlue},
                       {{65, 41}, kClear},
                       {{80, 40}, kBlue},
                       {{90, 10}, kClear}});
  EXPECT_GT(qBlue(image.pixel(90, 0)), 0);  // the top of the arc
}

TEST(Wmf, StateIsSavedAndClippingRestored) {
  Wmf wmf = Start({kRed, kBlue});
  wmf.Record(0x001E, {}).Record(0x012D, {2}).Record(0x0416, {10, 10, 0, 0}).Record(0x041B, {50, 50, 0, 0});
  wmf.Record(0x0127, {-1}).Record(0x041B, {50, 50, 40, 0});
  wmf.Record(0x0104, {11}).Record(0x041B, {50, 100, 0, 0});  // leaves the ground as it is
  wmf.Record(0x0127, {-7}).Record(0x7777, {1, 2, 3});        // unknown things do nothing
  ExpectPixels(Load(wmf.Unplaced()),
               {{{9, 9}, kBlue}, {{20, 20}, kClear}, {{20, 45}, kRed}, {{90, 5}, kClear}});
}

TEST(Wmf, Bitmaps) {
  const samples::BmpShape shape{24, 40, 0, false, 4, 2};
  const QByteArray dib = samples::Dib(shape);
  const auto colour = [](int x, int y) { return samples::BmpColour(24, x, y); };
  Wmf wmf = Start({kRed});
  wmf.Record(0x0F43, {0x20, 0xCC, 0, 2, 4, 0, 0, 2, 4, 0, 0}, dib);    // as it is
  wmf.Record(0x0F43, {0x20, 0xCC, 0, 2, 4, 0, 0, 2, -4, 0, 14}, dib);  // mirrored
  wmf.Record(0x0F43, {0x20, 0xCC, 0, 1, 1, 0, 3, 1, 1, 0, 20}, dib);   // its lower right pixel
  wmf.Record(0x0B41, {0x20, 0xCC, 1, 1, 0, 3, 1, 1, 0, 30}, dib);      // its upper right pixel
  wmf.Record(0x0940, {0x20, 0xCC, 0, 0, 2, 4, 0, 40}, dib);
  wmf.Record(0x0D33, {0, 2, 0, 0, 0, 2, 4, 0, 50}, dib);
  wmf.Record(0x0940, {0x62, 0xFF, 0, 0, 0, 10, 10, 20, 0});  // white, no bitmap
  wmf.Record(0x061D, {0x21, 0xF0, 10, 10, 20, 20}).Record(0x061D, {0x42, 0, 10, 10, 20, 40});
  wmf.Record(0x0142, {3, 0}, samples::Dib({24, 40, 0, false, 1, 1})).Record(0x012D, {2});
  wmf.Record(0x041B, {30, 70, 20, 60});
  wmf.Record(0x0F43, {0xC6, 0x88, 0, 2, 4, 0, 0, 2, 4, 40, 0}, dib);  // only the white is left out
  const QImage image = Load(wmf.Unplaced());
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 4; ++x) {
      for (const int left : {0, 40, 50}) EXPECT_EQ(image.pixel(left + x, y), colour(x, y)) << left + x << y;
      EXPECT_EQ(image.pixel(10 + x, y), colour(3 - x, y));
    }
  }
  ExpectPixels(image, {{{20, 0}, colour(3, 1)},
                       {{30, 0}, colour(3, 0)},
                       {{5, 25}, 0xffffffff},
                       {{25, 25}, kRed},
                       {{45, 25}, 0xff000000},
                       {{65, 25}, colour(0, 0)},
                       {{1, 40}, colour(1, 0)}});
}

TEST(Wmf, TextInItsColourAndPlace) {
  Wmf wmf = Start({kRed});
  wmf.Record(0x02FB, {-20, 0, 0, 0, 700, 0, 0, 0, 0}, QByteArray("Arial\0", 6)).Record(0x012D, {2});
  wmf.Record(0x0102, {1}).Record(0x0209, {0, 0xff}).Record(0x012E, {24});  // blue, on the base line
  wmf.Record(0x0521, {3}, Bytes().Raw(QByteArray("HHH\0", 4)).U16(30).U16(2).data);
  wmf.Record(0x0A32, {30, 60, 2, 0}, QByteArray("HH\x14\0\x14\0", 6));  // 20 units apart
  const QImage image = Load(wmf.Unplaced());
  const auto inked = [&](const QRect& box) {
    int count = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
      for (int x = box.left(); x <= box.right(); ++x) count += image.pixel(x, y) == kBlue ? 1 : 0;
    }
    return count;
  };
  EXPECT_GT(inked({2, 15, 50, 15}), 60);
  EXPECT_EQ(inked({0, 31, 100, 19}), 0);  // nothing under the base line
  EXPECT_EQ(inked({0, 0, 100, 14}), 0);
  EXPECT_GT(inked({60, 15, 18, 15}), 20);
  EXPECT_GT(inked({80, 15, 18, 15}), 20);
}

// Small files that ask for hours of drawing, for a great store of objects or for endless nesting.
TEST(Wmf, WorkIsBounded) {
  Wmf fills = Start({kRed});
  for (int i = 0; i < 200'000; ++i) fills.Record(0x041B, {32000, 32000, -32000, -32000});
  Wmf dashes = Start({kRed});
  dashes.Record(0x020C, {1, 1}).Pen(1, 0, kRed).Record(0x012D, {2});
  for (int i = 0; i < 20'000; ++i) dashes.Record(0x0325, {3, -32000, 0, 32000, 1, -32000, 0});
  Wmf bitmaps = Start({kRed});
  const QByteArray flat = samples::RunLengthBmp(8, 64000, 1000, QByteArray("\0\1", 2)).mid(14);
  for (int i = 0; i < 500; ++i) bitmaps.Record(0x0F43, {0x20, 0xCC, 0, 1, 1, 0, 0, 9, 9, 0, 0}, flat);
  Wmf objects;
  for (int i = 0; i < 100'000; ++i) objects.Brush(kRed);
  Wmf nesting;
  for (int i = 0; i < 100'000; ++i) nesting.Record(0x001E, {});
  for (const QByteArray& bytes :
       {fills.Placeable({0, 0, 7900, 7900}, 96), dashes.Unplaced(), bitmaps.Unplaced(), objects.Unplaced(),
        nesting.Unplaced(), Start({}).Unplaced(false), Wmf().Unplaced(),
        Start({}).Placeable({0, 0, 9, 9}, 0)}) {
    EXPECT_THROW(LoadPicture(bytes), RuntimeError);
  }
}

}  // namespace
}  // namespace orv
