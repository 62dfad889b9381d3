#pragma once

#include "forms/Surface.h"
#include "records/Recordset.h"

namespace orv {

// The work of the button for a card's background colour: the colour dialog, the colour on the sample
// beside the button, into BGColour of the current row, and on the card. Cancel leaves all as it was.
void ChooseBackgroundColour(Recordset& rows, Surface& sample, Surface& card);

}  // namespace orv
