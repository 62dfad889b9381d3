#pragma once

#include <functional>
#include <initializer_list>

#include "composition/CardLayout.h"
#include "forms/Surface.h"

// What the previews of cards, large cards and characters share.
namespace orv {

// "ORV " and the program's version: the mark on every card.
QString Watermark();

void PlaceAt(SurfaceItem& item, const PixelRect& rect);

// The design of a label: its place, the font of the preview and the alignment.
void DesignLabel(Label& label, const PixelRect& rect, const Font& font, Alignment alignment);

// A mark's design: small, grey and centred.
void DesignWatermark(Label& label, const PixelRect& rect);

// Runs the steps of a draw operation in turn. A missing file or path (errors 53 and 76) leaves its box as
// it was, and the next step follows; any other error is told in a box and ends the drawing half done.
void DrawInSteps(std::initializer_list<std::function<void()>> steps);

// Takes large pictures of the former record from its surfaces before another is drawn: those of two records
// would take too much memory together.
void LetGoOfLargePictures(std::initializer_list<Surface*> surfaces);

// The symbol of the current set, which knows of its original where drawings are kept.
Picture SymbolOfSet();

// Shows the symbol of the current set, if it uses one, in a corner of the card: `right` and `bottom` are
// the distances to the outer edges in pixels; a negative `right` stands for the left edge.
void PlaceSymbol(Surface& symbol, const Surface& card, int right, int bottom);

}  // namespace orv
