#pragma once

#include "composition/inner/PictureClip.h"
#include "forms/Surface.h"
#include "records/Recordset.h"

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

// A text broken into lines of the box's width, each from its left edge and one below the other.
void PrintLines(Surface& surface, const Label& box, const QString& text, Origin origin = {});

// The program's mark in its own font and colour, which stay on the surface.
void PrintWatermark(Surface& surface, const Label& mark, Origin origin = {});

// Where a picture goes: `frame` and the image on it measure in twips.
struct PictureFrame {
  Surface& frame;
  Surface& image;
  Hug hug = Hug::Nothing;
  int slack = 0;
};

// The white area of a frame, and the part of the picture that the frame shows, if there is a picture.
// `outline` is the pixel that the frame's outline takes up, 1 or 0; the offsets are those of the record.
struct StoredPicture {
  bool has_picture;
  int outline;
  double left, top;  // twips
};
void PaintFramed(Surface& target, const Picture& white, const PictureFrame& place,
                 const StoredPicture& stored, Origin origin = {});

// The picture area of a card, large card or character, with its outline, as far as the record wants them.
void PaintPictureArea(Surface& target, const Picture& white, const PictureFrame& place,
                      const Recordset& record, Origin origin = {});

}  // namespace orv
