#pragma once

#include "forms/Surface.h"

// Text can only be drawn horizontally: it is drawn on a flat scratch surface whose pixels are then
// turned by a quarter circle.
namespace orv {

inline constexpr Colour kArtistColour = 0x7F7F7F;  // of a set without one of its own

// Turns the bitmap of `source` onto `destination`, which takes its size and keeps the result as its
// picture. Clockwise, a text that reads from left to right comes to read from top to bottom.
void RotatePicture(Surface& source, Surface& destination, bool clockwise);

// Gives the scratch surface of an artist line its background: the plain colour, or the pixels of `card`
// on which `strip` will lie, turned so that the clockwise turn brings them back to their place.
void PrepareArtistSurface(Surface& scratch, Surface& strip, const Surface& card, Colour colour,
                          bool use_background);

// Fills `strip` with the artist's name in `text_colour`, matching the card under it. An empty name hides it.
void DrawArtistStrip(Surface& strip, const Surface& card, const QString& artist, Colour text_colour,
                     Colour colour, bool use_background);

}  // namespace orv
