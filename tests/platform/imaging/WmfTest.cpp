#include <gtest/gtest.h>

#include <QImage>

#include "imaging/Picture.h"
#include "platform/imaging/Samples.h"
#include "support/Errors.h"

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
  wmf.Window(0, 0, 100, 50).Pen(kNullPen, 0, 0).Select(0);
  for (const QRgb colour : brushes) wmf.Brush(colour);
  return wmf.Select(1);
}

QImage Load(const QByteArray& bytes) {
  return LoadPicture(bytes).Image();
}

struct At {
  int x, y;
  QRgb colour;
};

void ExpectPixels(const QImage& image, std::initializer_list<At> pixels) {
  for (const auto& [x, y, colour] : pixels) EXPECT_EQ(image.pixel(x, y), colour) << x << ", " << y;
}

TEST(Wmf, SizesOfBothKinds) {
  const auto drawing = [](int scale) {
    const Wmf wmf = Wmf().Window(0, 0, 100 * scale, 50 * scale).Pen(kNullPen, 0, 0).Brush(kRed);
    return Wmf(wmf).Select(0).Select(1).Rectangle(50 * scale, 50 * scale, 0, 0);
  };
  for (const QByteArray& bytes : {drawing(15).Placeable({0, 0, 1500, 750}, 1440), drawing(1).Unplaced()}) {
    const QImage image = Load(bytes);
    ASSERT_EQ(image.size(), QSize(100, 50));
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    ExpectPixels(image, {At(0, 0, kRed), At(49, 49, kRed), At(50, 0, kClear), At(99, 49, kClear)});
  }
  EXPECT_EQ(Load(drawing(300).Unplaced()).size(), QSize(2048, 1024));  // too many units for pixels
}

// Without a window the drawing itself gives the size; with a fixed unit its y axis goes up.
TEST(Wmf, SizeFromTheDrawing) {
  Wmf plain;
  plain.Pen(kNullPen, 0, 0).Brush(kRed).Brush(kBlue).Select(0).Select(1);
  Wmf metric = Wmf(plain).Record(0x0103, {3});  // 2540 units an inch
  plain.Rectangle(40, 60, 10, 20).Select(2).Rectangle(50, 60, 40, 20);
  metric.Rectangle(2540, 5080, 0, 0).Select(2).Rectangle(5080, 5080, 2540, 0);
  const QImage pixels = Load(plain.Unplaced());
  ASSERT_EQ(pixels.size(), QSize(40, 40));
  ExpectPixels(pixels, {At(0, 0, kRed), At(39, 29, kRed), At(0, 30, kBlue), At(39, 39, kBlue)});
  const QImage inches = Load(metric.Unplaced());
  ASSERT_EQ(inches.size(), QSize(192, 192));
  ExpectPixels(inches, {At(5, 5, kBlue), At(5, 186, kRed)});
}

TEST(Wmf, WindowMayBeMovedScaledAndUpsideDown) {
  Wmf wmf = Start({kRed, kBlue});
  wmf.Record(0x020B, {50, 0}).Record(0x020C, {-50, 100});  // y goes up
  wmf.Rectangle(10, 10, 0, 0);
  wmf.Record(0x020B, {0, 0}).Record(0x020C, {50, 100}).Record(0x020F, {0, -50});
  wmf.Record(0x0410, {2, 1, 2, 1}).Select(2).Rectangle(5, -45, 0, -50);
  ExpectPixels(Load(wmf.Unplaced()), {At(0, 49, kRed), At(9, 40, kRed), At(9, 39, kClear), At(10, 45, kClear),
                                      At(0, 0, kBlue), At(9, 9, kBlue), At(10, 9, kClear)});
}

TEST(Wmf, ObjectsTakeTheLowestFreePlace) {
  Wmf wmf = Start({kRed, kBlue});
  wmf.Record(0x01F0, {1}).Brush(kGreen).Select(1).Rectangle(10, 10, 0, 0);
  wmf.Select(99).Record(0x06FF, {}).Select(3).Rectangle(10, 20, 0, 10);
  wmf.Select(2).Rectangle(10, 30, 0, 20);
  ExpectPixels(Load(wmf.Unplaced()), {At(5, 5, kGreen), At(15, 5, kGreen), At(25, 5, kBlue)});
}

TEST(Wmf, PolygonsWithHoles) {
  const QByteArray outer = Bytes().U16(0).U16(0).U16(40).U16(0).U16(40).U16(40).U16(0).U16(40).data;
  const QByteArray inner = Bytes().U16(10).U16(10).U16(30).U16(10).U16(30).U16(30).U16(10).U16(30).data;
  for (const int mode : {1, 2}) {
    const QImage image =
        Load(Start({kRed}).Record(0x0106, {mode}).Record(0x0538, {2, 4, 4}, outer + inner).Unplaced());
    ExpectPixels(image, {At(5, 5, kRed), At(20, 20, mode == 1 ? kClear : kRed), At(41, 20, kClear)});
  }
}

TEST(Wmf, LinesCurvesAndPixels) {
  Wmf wmf = Start({kRed});
  wmf.Record(0x0418, {20, 20, 0, 0});                  // a disc
  wmf.Record(0x081A, {0, 50, 20, 80, 40, 70, 0, 30});  // a pie: from the right up to the top
  wmf.Record(0x0830, {30, 0, 10, 0, 50, 40, 30, 20});  // a chord
  wmf.Record(0x041F, {0x00ff, 0xff, 45, 90});          // a pixel
  wmf.Pen(0, 0, kBlue).Select(2).Record(0x0214, {40, 60}).Record(0x0213, {40, 70});
  wmf.Record(0x0213, {49, 70})
      .Record(0x0325, {2, 75, 40, 85, 40})
      .Record(0x0817, {0, 90, 0, 90, 20, 100, 0, 80});
  const QImage image = Load(wmf.Unplaced());
  ExpectPixels(image, {At(10, 10, kRed), At(1, 1, kClear), At(55, 10, kRed), At(45, 10, kClear),
                       At(55, 25, kClear), At(90, 45, 0xffff00ff), At(65, 40, kBlue), At(70, 45, kBlue),
                       At(65, 41, kClear), At(80, 40, kBlue), At(90, 10, kClear)});
  EXPECT_GT(qBlue(image.pixel(90, 0)), 0);  // the top of the arc
}

TEST(Wmf, StateIsSavedAndClippingRestored) {
  Wmf wmf = Start({kRed, kBlue});
  wmf.Record(0x001E, {}).Select(2).Record(0x0416, {10, 10, 0, 0}).Rectangle(50, 50, 0, 0);
  wmf.Record(0x0127, {-1}).Rectangle(50, 50, 40, 0);
  wmf.Record(0x0104, {11}).Rectangle(50, 100, 0, 0);   // leaves the ground as it is
  wmf.Record(0x0127, {-7}).Record(0x7777, {1, 2, 3});  // unknown things do nothing
  ExpectPixels(Load(wmf.Unplaced()),
               {At(9, 9, kBlue), At(20, 20, kClear), At(20, 45, kRed), At(90, 5, kClear)});
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
  wmf.Record(0x0142, {3, 0}, samples::Dib({24, 40, 0, false, 1, 1})).Select(2);
  wmf.Rectangle(30, 70, 20, 60);
  wmf.Record(0x0F43, {0xC6, 0x88, 0, 2, 4, 0, 0, 2, 4, 40, 0}, dib);  // only the white is left out
  const QImage image = Load(wmf.Unplaced());
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 4; ++x) {
      for (const int left : {0, 40, 50}) EXPECT_EQ(image.pixel(left + x, y), colour(x, y)) << left + x << y;
      EXPECT_EQ(image.pixel(10 + x, y), colour(3 - x, y));
    }
  }
  ExpectPixels(image,
               {At(20, 0, colour(3, 1)), At(30, 0, colour(3, 0)), At(5, 25, 0xffffffff), At(25, 25, kRed),
                At(45, 25, 0xff000000), At(65, 25, colour(0, 0)), At(1, 40, colour(1, 0))});
}

TEST(Wmf, TextInItsColourAndPlace) {
  Wmf wmf = Start({kRed});
  wmf.Record(0x02FB, {-20, 0, 0, 0, 700, 0, 0, 0, 0}, QByteArray("Arial\0", 6)).Select(2);
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
  for (int i = 0; i < 200'000; ++i) fills.Rectangle(32000, 32000, -32000, -32000);
  Wmf dashes = Start({kRed});
  dashes.Record(0x020C, {1, 1}).Pen(1, 0, kRed).Select(2);
  for (int i = 0; i < 20'000; ++i) dashes.Record(0x0325, {3, -32000, 0, 32000, 1, -32000, 0});
  Wmf bitmaps = Start({kRed});
  const QByteArray flat = samples::RunLengthBmp(8, 16000, 1000, QByteArray("\0\1", 2)).mid(14);
  for (int i = 0; i < 2000; ++i) bitmaps.Record(0x0F43, {0x20, 0xCC, 0, 1, 1, 0, 0, 9, 9, 0, 0}, flat);
  Wmf objects = Start({kRed});
  for (int i = 0; i < 100'000; ++i) objects.Brush(kRed);
  Wmf nesting = Start({kRed});
  for (int i = 0; i < 100'000; ++i) nesting.Record(0x001E, {});
  for (const QByteArray& bytes :
       {fills.Placeable({0, 0, 7900, 7900}, 96), dashes.Unplaced(), bitmaps.Unplaced(), objects.Unplaced(),
        nesting.Unplaced(), Start({}).Unplaced(false), Wmf().Unplaced(),
        Start({}).Placeable({0, 0, 9, 9}, 0)}) {
    EXPECT_EQ(ErrorOf([&] { LoadPicture(bytes); }), kErrInvalidPicture);
  }
}

}  // namespace
}  // namespace orv
