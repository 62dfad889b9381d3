#include "forms/Surface.h"

#include <gtest/gtest.h>

#include <QImage>

#include "support/Pixels.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

constexpr Colour kRed = Rgb(255, 0, 0);
constexpr Colour kGreen = Rgb(0, 255, 0);

Picture Plain(int width, int height, Colour colour) {
  return LoadPicture(TestDatabase::PlainPicture(width, height, colour));
}

class SurfaceTest : public ::testing::Test {
 protected:
  SurfaceTest() { surface_.Place(0, 0, 20, 12); }
  Surface surface_;
};

TEST_F(SurfaceTest, TheBorderMakesTheInsideTwoPixelsSmaller) {
  surface_.SetBorderStyle(1);
  EXPECT_EQ(surface_.InsideWidth(), 18);
  EXPECT_EQ(surface_.Image().Height(), 10);
  EXPECT_EQ(surface_.Width(), 20);
  EXPECT_EQ(surface_.Render().Image().pixel(0, 0), qRgb(0, 0, 0));
  EXPECT_EQ(surface_.Render().Image().pixel(1, 1), qRgb(255, 255, 255));
}

TEST_F(SurfaceTest, PictureStandsBehindTheDrawingAndSurvivesItsClearing) {
  surface_.SetPicture(Plain(5, 4, kRed));
  surface_.SetPixel(10, 10, kGreen);
  surface_.SetPixel(0, 0, kGreen);
  surface_.SetBackColor(Rgb(1, 2, 3));
  EXPECT_EQ(surface_.GetPixel(0, 0), kRed);
  EXPECT_EQ(surface_.GetPixel(4, 3), kRed);
  EXPECT_EQ(surface_.GetPixel(5, 3), Rgb(1, 2, 3)) << "unscaled at the corner";
  EXPECT_EQ(surface_.GetPixel(10, 10), Rgb(1, 2, 3));
  surface_.SetPixel(0, 0, kGreen);
  surface_.SetPicture(surface_.Image());
  surface_.SetBackColor(kRed);
  EXPECT_EQ(surface_.GetPixel(0, 0), kGreen) << "frozen into the picture";
  surface_.SetPicture(LoadPicture());
  EXPECT_EQ(surface_.GetPixel(0, 0), kRed);
}

TEST_F(SurfaceTest, OutlineHasBothCornersInclusiveAndIsUnfilled) {
  surface_.LineB(2, 3, 7, 9, kRed);
  for (int x = 0; x < 20; ++x) {
    for (int y = 0; y < 12; ++y) {
      const bool inside = x >= 2 && x <= 7 && y >= 3 && y <= 9;
      const bool edge = inside && (x == 2 || x == 7 || y == 3 || y == 9);
      ASSERT_EQ(surface_.GetPixel(x, y), edge ? kRed : kWhite) << x << ", " << y;
    }
  }
  surface_.LineB(15, 5, 40, 50, kGreen);
  EXPECT_EQ(surface_.GetPixel(19, 5), kGreen) << "what lies outside leaves no trace";
  EXPECT_EQ(surface_.GetPixel(19, 6), kWhite);
}

TEST_F(SurfaceTest, ACopyPastTheSourcesEdgeLeavesTheRestAsItIs) {
  surface_.PaintPicture(LoadPicture(TestDatabase::GradientPicture(8, 6)), 3, 2, 10, 9, 4, 3, 10, 9);
  EXPECT_EQ(surface_.GetPixel(3, 2), GradientAt(4, 3));
  EXPECT_EQ(surface_.GetPixel(6, 4), GradientAt(7, 5));
  EXPECT_EQ(surface_.GetPixel(7, 4), kWhite);
  EXPECT_EQ(surface_.GetPixel(6, 5), kWhite);
  surface_.PaintPicture(Plain(4, 4, kRed), 0, 0, 3, 2);
  EXPECT_EQ(surface_.GetPixel(2, 1), kRed) << "stretched over the rectangle and no further";
  EXPECT_EQ(surface_.GetPixel(3, 1), kWhite);
  surface_.PaintPicture(Picture(), 0, 0);
  surface_.PaintPicture(Plain(4, 4, kGreen), 18, -2);
  EXPECT_EQ(surface_.GetPixel(19, 1), kGreen);
  EXPECT_EQ(surface_.GetPixel(19, 2), kWhite);
}

TEST_F(SurfaceTest, PlacesOnAPixelScaleAreWholeAndInTwipsKeepAFraction) {
  Surface frame(&surface_);
  frame.SetLeft(2.5);
  EXPECT_EQ(frame.Left(), 2) << "half to even";
  frame.SetLeft(3.5);
  EXPECT_EQ(frame.Left(), 4);
  frame.SetScaleMode(ScaleMode::Twips);
  Surface image(&frame);
  image.SetLeft(-37.5);
  EXPECT_DOUBLE_EQ(image.Left(), -37.5);
  image.SetWidth(150);
  frame.SetScaleMode(ScaleMode::Pixels);
  EXPECT_EQ(image.Width(), 10);
  EXPECT_EQ(image.Left(), -2);
}

TEST_F(SurfaceTest, TextGoesToTheCursorInTheScaleOfTheSurface) {
  const double pixels = surface_.TextWidth("H");
  surface_.SetScaleMode(ScaleMode::Twips);
  EXPECT_EQ(surface_.TextWidth("H"), 15 * pixels);
  surface_.SetCurrentX(5 * 15);
  surface_.SetCurrentY(-2 * 15);
  surface_.SetForeColor(kRed);
  surface_.Print("HH");
  EXPECT_EQ(surface_.CurrentX(), 0);
  EXPECT_EQ(surface_.CurrentY(), -2 * 15 + surface_.TextHeight(QString()));
  for (int y = 0; y < 12; ++y) EXPECT_EQ(surface_.GetPixel(4, y), kWhite) << "ink before the cursor";
}

TEST_F(SurfaceTest, PixelsOutsideAreReadAsNothing) {
  EXPECT_EQ(surface_.GetPixel(-1, 0), -1);
  EXPECT_EQ(surface_.GetPixel(20, 0), -1);
  surface_.SetPixel(20, 12, kRed);
  surface_.SetPixel(0, -1, kRed);
}

TEST_F(SurfaceTest, ControlsAreShownOverTheBitmapAndNeverReadFromIt) {
  Surface box(&surface_);
  box.Place(4, 4, 4, 4);
  box.SetBackColor(kRed);
  EXPECT_EQ(surface_.GetPixel(5, 5), kWhite);
  EXPECT_EQ(surface_.Render().Image().pixel(5, 5), qRgb(255, 0, 0));
  box.SetVisible(false);
  EXPECT_EQ(surface_.Render().Image().pixel(5, 5), qRgb(255, 255, 255));
}

}  // namespace
}  // namespace orv
