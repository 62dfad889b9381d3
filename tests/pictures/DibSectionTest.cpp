#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <cstring>
#include <limits>

#include "forms/Application.h"
#include "pictures/cDIBSection.h"
#include "support/DialogScript.h"
#include "support/Errors.h"

namespace orv {
namespace {

const std::uint8_t* PixelOf(const cDIBSection& section, int x, int y) {
  return section.DIBSectionBitsPtr() + y * section.BytesPerScanLine() + 3 * x;
}

int Blue(const cDIBSection& section, int x, int y) {
  return PixelOf(section, x, y)[0];
}

// A section whose blue byte at (x, y), counted from the lowest address, is what `value` gives.
template <class Function>
cDIBSection Filled(int width, int height, Function value) {
  cDIBSection section;
  EXPECT_TRUE(section.Create(width, height));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      section.DIBSectionBitsPtr()[y * section.BytesPerScanLine() + 3 * x] =
          static_cast<std::uint8_t>(value(x, y));
    }
  }
  return section;
}

// Of all bytes, padding and all.
void ExpectSame(const cDIBSection& a, const cDIBSection& b) {
  ASSERT_EQ(a.BytesPerScanLine(), b.BytesPerScanLine());
  EXPECT_EQ(std::memcmp(a.DIBSectionBitsPtr(), b.DIBSectionBitsPtr(), a.Height() * a.BytesPerScanLine()), 0);
}

TEST(DibSection, RowsArePaddedToFourBytes) {
  for (const auto& [width, bytes] : {std::pair(1, 4), std::pair(2, 8), std::pair(3, 12), std::pair(4, 12)}) {
    EXPECT_EQ(Filled(width, 2, [](int, int) { return 0; }).BytesPerScanLine(), bytes);
  }
}

TEST(DibSection, AFailedCreateLeavesItEmpty) {
  cDIBSection section = Filled(2, 2, [](int, int) { return 1; });
  EXPECT_FALSE(section.Create(0, 5));
  EXPECT_EQ(section.Width(), 0);
  EXPECT_EQ(section.DIBSectionBitsPtr(), nullptr);
  EXPECT_NE(ErrorOf([&] { section.Create(std::numeric_limits<std::int32_t>::max(), 1); }), 0);
  EXPECT_EQ(section.DIBSectionBitsPtr(), nullptr);
}

TEST(DibSection, PixelsLieBottomUpInBlueGreenRed) {
  Surface surface;
  surface.Place(0, 0, 3, 2);
  surface.SetPixel(0, 0, Rgb(10, 20, 30));
  surface.SetPixel(2, 1, Rgb(40, 50, 60));
  cDIBSection section;
  section.CreateFromPicture(surface.Image());
  EXPECT_EQ(PixelOf(section, 0, 1)[0], 30);
  EXPECT_EQ(PixelOf(section, 0, 1)[2], 10);
  EXPECT_EQ(PixelOf(section, 2, 0)[0], 60) << "the last row of the picture is the first in memory";
  Surface copy;
  copy.Place(0, 0, 3, 2);
  section.PaintPicture(copy);
  EXPECT_EQ(copy.GetPixel(2, 1), Rgb(40, 50, 60));
  cDIBSection again;
  ASSERT_TRUE(again.Create(3, 2));
  again.LoadPictureBlt(copy);
  ExpectSame(again, section);
}

TEST(DibSection, ResampleNeverReachesTheFarEdge) {
  const cDIBSection section = Filled(2, 2, [](int x, int y) { return 100 * x + 50 * y; });
  ExpectSame(*section.Resample(2, 2), section);
  const auto larger = section.Resample(4, 4);
  // Columns at 0, 1/4, 1/2 and 3/4 between the two: first down, then across, a half to the even number.
  const int first_row[] = {0, 25, 50, 75};
  const int last_row[] = {38, 63, 88, 113};
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(Blue(*larger, x, 0), first_row[x]);
    EXPECT_EQ(Blue(*larger, x, 3), last_row[x]);
  }
}

TEST(DibSection, ResampleTakesHeightFirstAndNeedsTwoByTwo) {
  const cDIBSection section = Filled(4, 6, [](int x, int) { return 10 * x; });
  const auto smaller = section.Resample(3, 2);
  EXPECT_EQ(smaller->Width(), 2);
  EXPECT_EQ(smaller->Height(), 3);
  EXPECT_EQ(Blue(*smaller, 1, 2), 15);
  EXPECT_EQ(section.Resample(0, 4), nullptr);
  for (const auto& [width, height] : {std::pair(1, 4), std::pair(4, 1)}) {
    const cDIBSection thin = Filled(width, height, [](int, int) { return 7; });
    EXPECT_NE(ErrorOf([&] { (void)thin.Resample(8, 8); }), 0);
  }
}

TEST(DibSection, NoiseIsGreyOrGreenAndRed) {
  cDIBSection section = Filled(16, 16, [](int, int) { return 1; });
  section.RandomiseBits(false);
  int other = 0;
  for (int x = 0; x < 16; ++x) {
    const std::uint8_t* const pixel = PixelOf(section, x, 3);
    EXPECT_EQ(pixel[0], 0);
    other += pixel[1] != pixel[2] ? 1 : 0;
  }
  EXPECT_GT(other, 0);
  section.RandomiseBits(true);
  for (int x = 0; x < 16; ++x) {
    const std::uint8_t* const pixel = PixelOf(section, x, 0);
    EXPECT_EQ(pixel[0], pixel[1]);
    EXPECT_EQ(pixel[1], pixel[2]);
  }
}

TEST(DibSection, GoesToTheClipboardAsABitmapOnly) {
  DialogScript script;
  const DialogResponderScope answers(script);
  cDIBSection section = Filled(3, 3, [](int x, int) { return 20 * x; });
  EXPECT_FALSE(section.CopyToClipboard(true));
  EXPECT_EQ(script.LastPrompt(), "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!");
  EXPECT_TRUE(section.CopyToClipboard(false));
  EXPECT_EQ(QGuiApplication::clipboard()->image().width(), 3);
  EXPECT_FALSE(cDIBSection().CopyToClipboard(false));
}

}  // namespace
}  // namespace orv
