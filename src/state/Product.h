#pragma once

#include "base/App.h"

namespace orv {

// The version that the watermark of a card tells.
inline constexpr int kMajor = 1;
inline constexpr int kMinor = 2;

// What this program tells the platform of itself; whoever makes an Application hands it over.
Program TheProgram();

}  // namespace orv
