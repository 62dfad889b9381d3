#pragma once

#include <QString>
#include <optional>

namespace orv {

// What the program was started with.
struct StartOptions {
  std::optional<int> status;  // all is said already, without a window: the exit status
  QString file;               // a set to bring in; empty for none
};

StartOptions ReadStartOptions(int argc, char** argv);

}  // namespace orv
