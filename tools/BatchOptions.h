#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "output/PictureFormats.h"

namespace orv {

// What the command line of create_all_cards asks for. An option that is not given leaves what the set's
// record holds.
struct BatchOptions {
  QString database;    // absolute; empty for the program's own
  bool list = false;   // only tell the names of the sets
  bool check = false;  // read the whole file first
  QString set;
  QString folder;                         // absolute; empty for the one that the set has stored
  const PictureFormat* format = nullptr;  // none: as the set has it
  std::optional<QString> prefix;
  std::optional<bool> number, no_back, underline;
  bool cards = false, characters = false, large = false;  // all three when none was given
};

struct ParsedOptions {
  std::optional<BatchOptions> options;
  QString message;  // why there are none, or the help that was asked for
  bool help = false;
};

ParsedOptions ParseBatchOptions(const QStringList& arguments);

}  // namespace orv
