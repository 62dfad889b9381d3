#include "composition/inner/PictureClip.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

struct Row {
  const char* what;
  int image_width, image_height;
  int outline;
  double left, top;  // pixels
  Hug hug;
  int slack;
  Clip expected;
};

// The frame is 139 by 105 throughout.
TEST(PictureClip, CopiesWhatTheFrameShows) {
  const Row rows[] = {
      Row("smaller than the frame", 50, 40, 1, 0, 0, Hug::Nothing, 0, {true, 1, 1, 50, 40, 0, 0}),
      Row("without an outline", 50, 40, 0, 0, 0, Hug::Nothing, 0, {true, 0, 0, 50, 40, 0, 0}),
      Row("shifted in: the source reaches past the picture", 50, 40, 1, 20, 10, Hug::Nothing, 0,
          {true, 21, 11, 70, 50, 0, 0}),
      Row("just fills the frame", 138, 104, 1, 0, 0, Hug::Nothing, 0, {true, 1, 1, 138, 104, 0, 0}),
      Row("one pixel wider", 139, 105, 1, 0, 0, Hug::Nothing, 0, {true, 1, 1, 138, 104, 0, 0}),
      Row("larger", 300, 200, 1, 0, 0, Hug::Nothing, 0, {true, 1, 1, 138, 104, 0, 0}),
      Row("larger, pulled left and up", 300, 200, 1, -20, -30, Hug::Nothing, 0,
          {true, 1, 1, 139, 105, 20, 30}),
      Row("pulled left, right edge in the frame", 100, 40, 1, -20, 0, Hug::Nothing, 0,
          {true, 1, 1, 80, 40, 20, 0}),
      Row("half a pixel goes to the even one", 50, 40, 1, 2.5, 3.5, Hug::Nothing, 0,
          {true, 3, 5, 52, 44, 0, 0}),
      Row("beyond the right edge", 50, 40, 1, 138, 0, Hug::Nothing, 0, {false, 139, 1, 0, 40, 0, 0}),
      Row("last column", 50, 40, 1, 137, 0, Hug::Nothing, 0, {true, 138, 1, 1, 40, 0, 0}),
      Row("pulled out to the left", 50, 40, 1, -50, 0, Hug::Nothing, 0, {false, 1, 1, 0, 40, 50, 0}),
      Row("pulled out upwards", 50, 40, 0, 0, -60, Hug::Nothing, 0, {false, 0, 0, 50, -20, 0, 60}),
      Row("the frame hugs the width", 139, 40, 1, 10, 5, Hug::Width, 0, {true, 1, 6, 137, 45, 0, 0}),
      Row("hugged and pulled left", 139, 40, 1, -10, 5, Hug::Width, 0, {true, 1, 6, 137, 45, 10, 0}),
      Row("the frame hugs the height", 50, 105, 1, 10, 5, Hug::Height, 1, {true, 11, 1, 60, 103, 0, 0}),
      Row("hugged and pulled up", 50, 105, 1, 10, -5, Hug::Height, 1, {true, 11, 1, 60, 103, 0, 5}),
      Row("large card, pulled left: one column less", 300, 200, 1, -20, -30, Hug::Nothing, 1,
          {true, 1, 1, 138, 104, 20, 30}),
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    const Clip clip =
        ClipPicture({139, 105, row.image_width, row.image_height, row.outline, row.left * 15, row.top * 15},
                    row.hug, row.slack);
    EXPECT_EQ(clip.paint, row.expected.paint);
    EXPECT_EQ(clip.x, row.expected.x);
    EXPECT_EQ(clip.y, row.expected.y);
    EXPECT_EQ(clip.width, row.expected.width);
    EXPECT_EQ(clip.height, row.expected.height);
    EXPECT_EQ(clip.source_x, row.expected.source_x);
    EXPECT_EQ(clip.source_y, row.expected.source_y);
  }
}

}  // namespace
}  // namespace orv
