#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "ToolRun.h"

namespace orv {

// What the command line of create_all_cards asks for. An option that is not given leaves what the set's
// record holds.
struct BatchOptions {
  QString database;
  bool list = false;  // only tell the names of the sets
  QString set;
  QString folder;  // absolute
  std::optional<int> pic_format_id;
  std::optional<QString> prefix;
  bool number = false;
  bool no_back = false;
  bool underline = false;
  int scale = 1;                                          // so many times as large
  bool cards = false, characters = false, large = false;  // all three when none was given
};

using ParsedOptions = Parsed<BatchOptions>;
ParsedOptions ParseBatchOptions(const QStringList& arguments);

}  // namespace orv
