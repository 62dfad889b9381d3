#pragma once

#include <initializer_list>

#include "forms/Controls.h"
#include "forms/Layout.h"
#include "forms/Surface.h"

// What the input sides of the editors, grids of labels and fields, have in common.
namespace orv {

// A row of a label and the field that its key goes to.
void AddField(GridLayout& grid, int row, FormLabel& label, Control& field);
// A row of a label and some controls side by side.
void AddRow(GridLayout& grid, int row, FormLabel& label, std::initializer_list<Control*> controls);
// The first row, of check boxes from its beginning.
void AddChecks(GridLayout& grid, std::initializer_list<Control*> boxes);
// The sample of a background colour and the button that chooses it.
void ArrangeColour(Surface& sample, CommandButton& button);

}  // namespace orv
