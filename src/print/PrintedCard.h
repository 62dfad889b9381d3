#pragma once

#include <QRect>
#include <QString>
#include <cstdint>
#include <vector>

#include "imaging/Picture.h"
#include "output/OutputKinds.h"

namespace orv {

// Something that print would show badly.
struct Finding {
  QString text;
  const char* column = nullptr;  // of the text that doesn't fit, "" where it is not known; null for no text
};

// A record of the current set as it goes to paper.
struct PrintedCard {
  QString record;                    // kind, number and name, for messages
  QString key;                       // kind and key in the database
  const OutputKind* kind = nullptr;  // with its key there
  std::int32_t id = 0;
  int copies = 1;
  Picture sheet;                  // as it was drawn
  QRect front, back;              // on the sheet, in dots; without a back the latter is null
  QString failure;                // why it can't be drawn; the sheet is empty then
  std::vector<Finding> findings;  // what print would show badly
};

}  // namespace orv
