#include "composition/modRotatePic.h"

#include "base/Rounding.h"

namespace orv {
namespace {

constexpr int kStripLength = 180;  // pixels
constexpr int kStripThickness = 5;

}  // namespace

void RotatePicture(Surface& source, Surface& destination, bool clockwise) {
  destination.SetPicture(LoadPicture());
  const int width = source.InsideWidth();
  destination.SetWidth(source.InsideHeight());
  destination.SetHeight(width);
  destination.PaintTurned(source.Image(), clockwise);
  destination.SetPicture(destination.Image());
}

void PrepareArtistSurface(Surface& scratch, Surface& strip, const Surface& card, Colour colour,
                          bool use_background) {
  scratch.SetPicture(LoadPicture());
  strip.SetPicture(LoadPicture());
  if (use_background) {
    Surface under;
    under.Place(0, 0, kStripThickness, kStripLength);
    under.PaintPicture(card.Image(), 0, -static_cast<int>(strip.Top()));
    scratch.PaintTurned(under.Image(), false);
  } else {
    scratch.SetBackColor(colour);
  }
  scratch.SetPicture(scratch.Image());
}

void DrawArtistStrip(Surface& strip, const Surface& card, const QString& artist, Colour text_colour,
                     Colour colour, bool use_background) {
  if (artist.isEmpty()) {
    strip.SetVisible(false);
    return;
  }
  Surface scratch;
  scratch.Place(0, 0, kStripLength, kStripThickness);
  scratch.SetScaleMode(ScaleMode::Twips);
  scratch.SetFont({QStringLiteral("Small Fonts"), 5.25, false, false});
  PrepareArtistSurface(scratch, strip, card, colour, use_background);
  // Only the lower part of the line's cell lies on the strip; its top is empty.
  scratch.SetCurrentX(0);
  scratch.SetCurrentY(-2 * kTwipsPerPixel);
  scratch.SetForeColor(text_colour);
  scratch.Print(artist);
  scratch.SetPicture(scratch.Image());
  RotatePicture(scratch, strip, true);
  strip.SetPicture(strip.Image());
  strip.SetVisible(true);
}

}  // namespace orv
