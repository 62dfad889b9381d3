#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "print/PrintOptions.h"
#include "print/PrintedCard.h"

namespace orv {

// Millimetres a dot for the current set.
double PrintScale(const PrintOptions& options);

// How many cards ForEachPrintedCard will hand out.
int CountPrintedCards(const PrintOptions& options);

// Draws each wanted record of the current set, kind by kind, and hands it to `take` until that returns false.
// Nothing is written to the database, the shared recordsets stand where they stood, and the previews show
// what they showed. A record that can't be drawn is handed out with the cause.
void ForEachPrintedCard(const PrintOptions& options, const std::function<bool(const PrintedCard&)>& take);

// The same for one record of the current set by its key, at its true size: one for each sheet of its kind,
// none where it is gone.
std::vector<PrintedCard> PrintedCardsOf(const OutputKind& kind, std::int32_t key);

}  // namespace orv
