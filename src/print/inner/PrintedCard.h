#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

#include "imaging/Picture.h"

namespace orv {

// A record of the current set as it goes to paper.
struct PrintedCard {
  QString record;  // kind, number and name, for messages
  QString key;     // kind and key in the database
  int copies = 1;
  Picture sheet;         // as it was drawn
  QRect front, back;     // on the sheet, in dots; without a back the latter is null
  QString failure;       // why it can't be drawn; the sheet is empty then
  QStringList findings;  // what print would show badly
};

}  // namespace orv
