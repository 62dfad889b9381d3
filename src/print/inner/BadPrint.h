#pragma once

#include <vector>

#include "print/PrintedCard.h"

namespace orv {

// What print would show badly of the record that has just been composed and put on a sheet, at a scale in
// millimetres a dot: text that runs over its box or the card's edge, a picture that is missing or has too few
// dots, a missing type or back.
std::vector<Finding> FindBadPrint(const SheetKind& kind, const PrintedCard& card, double scale);

}  // namespace orv
