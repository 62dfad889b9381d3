#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <functional>

#include "imaging/Picture.h"
#include "print/PrintOptions.h"

namespace orv {

// A record of the current set as it goes to paper.
struct PrintedCard {
  QString record;  // kind, number and name, for messages
  int copies = 1;
  Picture sheet;         // as it was drawn
  QRect front, back;     // on the sheet, in dots; without a back the latter is null
  QString failure;       // why it can't be drawn; the sheet is empty then
  QStringList findings;  // what print would show badly
};

// Millimetres a dot for the current set.
double PrintScale(const PrintOptions& options);

// How many cards ForEachPrintedCard will hand out.
int CountPrintedCards(const PrintOptions& options);

// Draws each wanted record of the current set, kind by kind, and hands it to `take` until that returns false.
// Nothing is written to the database, and the shared recordsets stand where they stood; what is drawn stays
// on the previews. A record that can't be drawn is handed out with the cause.
void ForEachPrintedCard(const PrintOptions& options, const std::function<bool(const PrintedCard&)>& take);

}  // namespace orv
