#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "base/RuntimeError.h"
#include "forms/Application.h"
#include "pictures/cDIBSection.h"
#include "support/DialogScript.h"

namespace orv {
namespace {

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

int Blue(const cDIBSection& section, int x, int y) {
  return section.DIBSectionBitsPtr()[y * section.BytesPerScanLine() + 3 * x];
}

TEST(DibSection, RowsArePaddedToFourBytes) {
  const int bytes[] = {4, 8, 12, 12, 16};
  for (int width = 1; width <= 5; ++width) {
    cDIBSection section;
    ASSERT_TRUE(section.Create(width, 2));
    EXPECT_EQ(section.BytesPerScanLine(), bytes[width - 1]);
  }
}

TEST(DibSection, AFailedCreateLeavesItEmpty) {
  cDIBSection section = Filled(2, 2, [](int, int) { return 1; });
  EXPECT_FALSE(section.Create(0, 5));
  EXPECT_EQ(section.Width(), 0);
  EXPECT_EQ(section.DIBSectionBitsPtr(), nullptr);
  EXPECT_THROW(section.Create(std::numeric_limits<std::int32_t>::max(), 1), RuntimeError);
  EXPECT_EQ(section.DIBSectionBitsPtr(), nullptr);
}

TEST(DibSection, PixelsLieBottomUpInBlueGreenRed) {
  Surface surface;
  surface.Place(0, 0, 3, 2);
  surface.SetPixel(0, 0, Rgb(10, 20, 30));
  surface.SetPixel(2, 1, Rgb(40, 50, 60));
  cDIBSection section;
  section.CreateFromPicture(surface.Image());
  const std::uint8_t* bits = section.DIBSectionBitsPtr();
  EXPECT_EQ(bits[section.BytesPerScanLine() + 0], 30);
  EXPECT_EQ(bits[section.BytesPerScanLine() + 2], 10);
  EXPECT_EQ(bits[6], 60) << "the last row of the picture is the first in memory";
  Surface copy;
  copy.Place(0, 0, 3, 2);
  section.PaintPicture(copy);
  EXPECT_EQ(copy.GetPixel(2, 1), Rgb(40, 50, 60));
  cDIBSection again;
  ASSERT_TRUE(again.Create(3, 2));
  again.LoadPictureBlt(copy);
  EXPECT_EQ(std::memcmp(again.DIBSectionBitsPtr(), bits, 2 * section.BytesPerScanLine()), 0);
}

TEST(DibSection, ResampleOfTheSameSizeIsACopy) {
  const cDIBSection section = Filled(5, 4, [](int x, int y) { return 40 * x + y; });
  const auto copy = section.Resample(4, 5);
  ASSERT_TRUE(copy);
  EXPECT_EQ(
      std::memcmp(copy->DIBSectionBitsPtr(), section.DIBSectionBitsPtr(), 4 * section.BytesPerScanLine()), 0);
}

TEST(DibSection, ResampleNeverReachesTheFarEdge) {
  const cDIBSection section = Filled(2, 2, [](int x, int y) { return 100 * x + 50 * y; });
  const auto larger = section.Resample(4, 4);
  ASSERT_TRUE(larger);
  // Columns at 0, 1/4, 1/2 and 3/4 between the two: first down, then across, a half to the even number.
  const int first_row[] = {0, 25, 50, 75};
  const int last_row[] = {38, 63, 88, 113};
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(Blue(*larger, x, 0), first_row[x]);
    EXPECT_EQ(Blue(*larger, x, 3), last_row[x]);
  }
}

TEST(DibSection, ResampleToAnotherShapeTakesHeightFirst) {
  const cDIBSection section = Filled(4, 6, [](int x, int) { return 10 * x; });
  const auto smaller = section.Resample(3, 2);
  ASSERT_TRUE(smaller);
  EXPECT_EQ(smaller->Width(), 2);
  EXPECT_EQ(smaller->Height(), 3);
  EXPECT_EQ(Blue(*smaller, 1, 2), 15);
  EXPECT_EQ(section.Resample(0, 4), nullptr);
}

TEST(DibSection, ResampleNeedsTwoByTwo) {
  for (const auto& [width, height] : {std::pair{1, 4}, {4, 1}}) {
    const cDIBSection section = Filled(width, height, [](int, int) { return 7; });
    EXPECT_THROW(section.Resample(8, 8), RuntimeError);
  }
}

TEST(DibSection, NoiseIsGreyOrGreenAndRed) {
  cDIBSection section = Filled(16, 16, [](int, int) { return 1; });
  section.RandomiseBits(false);
  int other = 0;
  for (int x = 0; x < 16; ++x) {
    EXPECT_EQ(Blue(section, x, 3), 0);
    const std::uint8_t* pixel = section.DIBSectionBitsPtr() + 3 * section.BytesPerScanLine() + 3 * x;
    other += pixel[1] != pixel[2] ? 1 : 0;
  }
  EXPECT_GT(other, 0);
  section.RandomiseBits(true);
  for (int x = 0; x < 16; ++x) {
    const std::uint8_t* pixel = section.DIBSectionBitsPtr() + 3 * x;
    EXPECT_EQ(pixel[0], pixel[1]);
    EXPECT_EQ(pixel[1], pixel[2]);
  }
}

TEST(DibSection, GoesToTheClipboardAsABitmapOnly) {
  DialogScript script;
  const DialogResponderScope answers(script);
  cDIBSection section = Filled(3, 3, [](int x, int) { return 20 * x; });
  EXPECT_FALSE(section.CopyToClipboard(true));
  ASSERT_EQ(script.boxes.size(), 1u);
  EXPECT_EQ(script.boxes[0].prompt,
            QStringLiteral("I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!"));
  EXPECT_TRUE(section.CopyToClipboard(false));
  EXPECT_EQ(Clipboard::GetImage().Width(), 3);
  EXPECT_FALSE(cDIBSection().CopyToClipboard(false));
}

}  // namespace
}  // namespace orv
