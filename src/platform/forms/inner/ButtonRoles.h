#pragma once

namespace orv {

// The property of a push button that Escape presses.
inline constexpr char kCancelRole[] = "orvCancel";

}  // namespace orv
