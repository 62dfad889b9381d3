#pragma once

#include <QString>

#include "base/CommandLine.h"
#include "print/PrintOptions.h"

namespace orv {

// What the command line of print_sheets asks for.
struct PrintCommand {
  QString database;  // absolute
  bool list = false;
  QString set;
  QString file;  // absolute, or empty: only the check
  bool test_sheet = false;
  PrintOptions options;
};

// Tells a command line what it may hold, and makes a command of what it holds; WrongUsage where that can't
// be.
void DeclarePrintCommand(CommandLine& line);
PrintCommand ReadPrintCommand(const CommandLine& line);

}  // namespace orv
