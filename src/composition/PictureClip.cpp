#include "composition/inner/PictureClip.h"

#include "base/Rounding.h"

namespace orv {
namespace {

struct Side {
  int source, size, destination;
};

// One direction of the copy. The comparison is strict: a picture that just fills the frame is not cut.
Side ClipSide(int offset, int image, int frame, int outline, bool hug, int slack) {
  Side side{offset < 0 ? -offset : 0, image + offset, offset < 0 || hug ? 0 : offset};
  if (hug) {
    side.size = frame - 2;
  } else if (offset + image + outline > frame) {
    side.size = frame - offset - outline;
    if (side.size > frame) side.size = frame - slack;
  }
  return side;
}

}  // namespace

Clip ClipPicture(const ClipInput& in, Hug hug, int slack) {
  const int left = ToInt16(in.left / kTwipsPerPixel);
  const int top = ToInt16(in.top / kTwipsPerPixel);
  const Side across = ClipSide(left, in.image_width, in.frame_width, in.outline, hug == Hug::Width, slack);
  const Side down = ClipSide(top, in.image_height, in.frame_height, in.outline, hug == Hug::Height, slack);
  const bool paint = in.outline + across.destination < in.frame_width &&
                     in.outline + down.destination < in.frame_height && across.size > 0 && down.size > 0;
  return {paint,
          across.destination + in.outline,
          down.destination + in.outline,
          across.size,
          down.size,
          across.source,
          down.source};
}

}  // namespace orv
