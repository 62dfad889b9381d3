#pragma once

namespace orv {

// How a picture lies in its frame. All in pixels but the offsets.
struct ClipInput {
  int frame_width, frame_height;
  int image_width, image_height;
  int outline;       // the pixel that the frame's outline takes up: 1 or 0
  double left, top;  // the stored offset, in twips
};

// Which side of the frame follows the picture, so that the offset on this side moves the frame and not
// the picture in it.
enum class Hug { Nothing, Width, Height };

// A one-to-one copy from the picture to the inside of the frame.
struct Clip {
  bool paint;  // false: nothing of the picture lies in the frame
  int x, y;    // of the copy's corner from the frame's, the outline counted in
  int width, height;
  int source_x, source_y;
};

// The part of a picture that its frame shows. `slack` is taken off where the picture reaches over the
// whole frame from beyond its corner: 0 on cards and characters, 1 on large cards.
Clip ClipPicture(const ClipInput& input, Hug hug, int slack);

}  // namespace orv
