#pragma once

namespace orv {

// Tells in a box how the cards of the current set are spread over card types and backs.
// `second_type_name` is the column shown behind UpperLeft: LowerLeft or UpperRight.
void ShowStatistics(const char* second_type_name);

}  // namespace orv
