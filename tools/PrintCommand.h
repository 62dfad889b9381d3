#pragma once

#include <QString>
#include <QStringList>

#include "ToolRun.h"
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

Parsed<PrintCommand> ParsePrintCommand(const QStringList& arguments);

}  // namespace orv
