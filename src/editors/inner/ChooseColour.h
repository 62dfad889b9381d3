#pragma once

#include "editors/ShownRecord.h"
#include "forms/Surface.h"

namespace orv {

// The work of the button for a card's background colour: the colour dialog, the colour on the sample
// beside the button, into BGColour of the record, and on the card. Cancel leaves all as it was.
void ChooseBackgroundColour(ShownRecord& record, Surface& sample, Surface& card);

}  // namespace orv
