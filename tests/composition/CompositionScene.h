#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "base/Rounding.h"
#include "composition/frmCard.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Pixels.h"
#include "support/TestDatabase.h"

namespace orv {

struct Pixel {
  int x, y;
  Colour colour;
};

enum PictureFlags { kHidden = 0, kShown = 1, kOutlined = 2, kResized = 4 };

// A picture in its frame, and what stands on the composed card then.
struct PictureCase {
  const char* what;
  int flags;
  int width, height;  // of the picture, 0 for none
  double left, top;   // its offset, in pixels
  std::vector<Pixel> pixels;
  int frame_width = 121;  // of the kinds whose frame is resized across
};

// What lies around each composition: a database and a record of one kind.
class CompositionScene : public testing::Test {
 protected:
  explicit CompositionScene(Recordset& rows) : rows_(rows) {}

  void Set(const char* column, const Value& value) { Change(rows_, column, value); }
  // An option of the set.
  void SetOption(const char* column, const Value& value) { Change(modData::rsSet, column, value); }
  // The picture itself is a gradient from its upper left corner.
  void Arrange(const PictureCase& row) {
    Set("UsePicture", (row.flags & kShown) != 0);
    Set("UseFrame", (row.flags & kOutlined) != 0);
    Set("PicLeft", row.left * kTwipsPerPixel);
    Set("PicTop", row.top * kTwipsPerPixel);
    Set("Picture", row.width == 0 ? Value() : TestDatabase::GradientPicture(row.width, row.height));
  }
  // Pixels from a corner.
  static void ExpectPixels(const Picture& picture, const std::vector<Pixel>& pixels, int left = 0,
                           int top = 0) {
    for (const auto& [x, y, colour] : pixels) {
      EXPECT_EQ(PixelAt(picture, left + x, top + y), colour) << x << ' ' << y;
    }
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};

 private:
  static void Change(Recordset& rows, const char* column, const Value& value) {
    rows[column] = value;
    rows.Update();
  }

  Recordset& rows_;
};

}  // namespace orv
