#pragma once

#include <QStringList>
#include <functional>

#include "editors/ShownRecord.h"
#include "forms/Surface.h"

namespace orv {

// Placing a picture in its frame by mouse and keyboard: a press notes the grip, each move with the left
// button alone adds how far the pointer stands from it, a key nudges or aligns. The offset lies in two
// fields of the record, in twips, without limits. There is no drag mode: each event stands alone.
class PictureMover {
 public:
  // All must outlive the mover. `place` applies the record to the frame and the picture.
  PictureMover(ShownRecord& record, const char* left_column, const char* top_column, Surface& frame,
               Surface& image, std::function<void()> place);

  // Subscribes to the image's mouse events.
  void Attach();
  void MouseDown(const MouseEvent& event);
  void MouseMove(const MouseEvent& event);
  // The keys that move the picture while it has the focus.
  static QStringList Commands();
  // The keys without a shift state: arrows by one pixel, Home and Page Up to the left and upper edges, End
  // and Page Down to the right and lower ones. Changes the fields and does not update the record.
  void Nudge(int key_code);
  // A key on a picture whose frame has no keys of its own: nudges and updates without a shift state, and
  // places the picture in any.
  void KeyDown(const KeyEvent& key);

 private:
  struct Key;
  static const Key kKeys[];
  void Move(const char* column, double twips);
  void SetOffset(const char* column, double twips);

  ShownRecord& record_;
  const char* left_column_;
  const char* top_column_;
  Surface& frame_;
  Surface& image_;
  std::function<void()> place_;
  bool held_ = true;  // no drag goes on with another record than it began with
  int grip_x_ = 0;    // twips
  int grip_y_ = 0;
};

// Resizing a frame by its handle, a bar that moves in one direction between two limits, in pixels.
class HandleDrag {
 public:
  enum Direction { Down, Across };
  // `moved` runs after each move of the handle, which moves only while the record is there to be changed.
  HandleDrag(ShownRecord& record, Label& handle, Direction direction, int lowest, int highest,
             std::function<void()> moved);
  void Attach();
  void MouseDown(const MouseEvent& event);
  void MouseMove(const MouseEvent& event);

 private:
  double Along(const MouseEvent& event) const;
  ShownRecord& record_;
  Label& handle_;
  Direction direction_;
  int lowest_, highest_;
  std::function<void()> moved_;
  bool held_ = true;
  int grip_ = 0;  // pixels
};

// The size of a frame as the editors show it: width, "W * ", height, "H".
QString FrameDimension(const Surface& frame);

}  // namespace orv
