#pragma once

#include <optional>

namespace orv {

// What the program was started with.
struct StartOptions {
  std::optional<int> status;  // all is said already, without a window: the exit status
};

StartOptions ReadStartOptions(int argc, char** argv);

}  // namespace orv
