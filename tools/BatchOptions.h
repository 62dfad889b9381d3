#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "base/CommandLine.h"
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
  int scale = 1;      // so many times as large
  QStringList kinds;  // names of output kinds; none stands for all
};

// Tells a command line what it may hold, and makes options of what it holds; WrongUsage where that can't be.
void DeclareBatchOptions(CommandLine& line);
BatchOptions ReadBatchOptions(const CommandLine& line);

}  // namespace orv
