#pragma once

#include <functional>

#include "print/PrintOptions.h"
#include "print/inner/PrintedCard.h"

namespace orv {

// Millimetres a dot for the current set.
double PrintScale(const PrintOptions& options);

// How many cards ForEachPrintedCard will hand out.
int CountPrintedCards(const PrintOptions& options);

// Draws each wanted record of the current set, kind by kind, and hands it to `take` until that returns false.
// Nothing is written to the database, and the shared recordsets stand where they stood; what is drawn stays
// on the previews. A record that can't be drawn is handed out with the cause.
void ForEachPrintedCard(const PrintOptions& options, const std::function<bool(const PrintedCard&)>& take);

}  // namespace orv
