#pragma once

#include <cstdint>

namespace orv {

// Makes a set of rsSet the current one: the shared variables, the reference lists and the symbol take its
// values. A stored symbol that can't be shown counts as none. RuntimeError 3021 for an unknown key.
void MakeSetCurrent(std::int16_t set_id);

// Makes the editors that follow the current set show its records. The editor of 3rd-edition cards does
// not follow by itself.
void EditorsFollowSet();

}  // namespace orv
