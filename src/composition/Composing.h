#pragma once

#include "composition/PictureClip.h"
#include "forms/Surface.h"

// What the composers of cards, large cards and characters share. All in pixels of the composing surface.
namespace orv {

// Where a line of text goes: from a label's left edge, centred in it, or up to its right edge, each at
// its top. `origin` shifts labels that lie in a panel of the card.
struct Origin {
  double x = 0;
  double y = 0;
};
void PrintLeft(Surface& surface, const Label& label, const QString& text, Origin origin = {});
void PrintCentred(Surface& surface, const Label& label, const QString& text, Origin origin = {});
void PrintRight(Surface& surface, const Label& label, const QString& text);
// Centred as if the text were `text_width` wide.
void PrintCentred(Surface& surface, const Label& label, const QString& text, double text_width,
                  Origin origin = {});

// Puts the font and colour of a label on a surface.
void TakeFontOf(Surface& surface, const Label& label);

// The white area of a picture's frame, and the part of the picture that the frame shows, if there is a
// picture. `frame` and the image on it measure in twips; the offsets are those of the record.
struct FramedPicture {
  Surface& frame;
  Surface& image;
  bool has_picture;
  int outline;
  double left, top;  // twips
  Hug hug = Hug::Nothing;
  int slack = 0;
};
void PaintFramed(Surface& target, const Picture& white, const FramedPicture& framed, Origin origin = {});

// The black outline of a frame.
void OutlineFrame(Surface& target, const Surface& frame, Origin origin = {});

}  // namespace orv
