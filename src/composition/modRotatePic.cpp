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
  const int height = source.InsideHeight();
  destination.SetWidth(height);
  destination.SetHeight(width);
  for (int x = 0; x < width; ++x) {
    for (int y = 0; y < height; ++y) {
      const Colour pixel = source.GetPixel(x, y);
      if (clockwise) {
        destination.SetPixel(height - y - 1, x, pixel);
      } else {
        destination.SetPixel(y, width - x - 1, pixel);
      }
    }
  }
  destination.SetPicture(destination.Image());
}

void PrepareArtistSurface(Surface& scratch, Surface& strip, const Surface& card, Colour colour,
                          bool use_background) {
  scratch.SetPicture(LoadPicture());
  strip.SetPicture(LoadPicture());
  if (use_background) {
    const int top = static_cast<int>(strip.Top());
    for (int x = 0; x < kStripThickness; ++x) {
      for (int y = 0; y < kStripLength; ++y) {
        scratch.SetPixel(y, kStripThickness - 1 - x, card.GetPixel(x, top + y));
      }
    }
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
