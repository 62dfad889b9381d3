#include "PrintCommand.h"

namespace orv {
namespace {

// Named on the command line, it is Yes.
bool IsFlag(const PrintOption& option) {
  return *option.placeholder == 0;
}

}  // namespace

void DeclarePrintCommand(CommandLine& line) {
  line.AddValue("database", "The database file; the program's own without it.", "FILE");
  line.AddFlag("list", "Lists the names of the sets and ends.");
  line.AddValue("set", "The name of the set.", "NAME");
  line.AddValue("to", "The PDF file.", "FILE");
  line.AddFlag("check", "Only tells what print would show badly.");
  line.AddFlag("test-sheet", "Writes a sheet with a grid for both sides, to find the shift of the backs.");
  for (const PrintOption& option : AllPrintOptions()) {
    if (IsFlag(option)) {
      line.AddFlag(option.name, option.help);
    } else {
      line.AddValue(option.name, option.help, option.placeholder);
    }
  }
}

PrintCommand ReadPrintCommand(const CommandLine& line) {
  PrintCommand command;
  command.list = line.Has("list");
  command.test_sheet = line.Has("test-sheet");
  command.database = line.Path("database");
  command.set = line["set"];
  if (!line.Has("check")) command.file = line.Path("to");
  if (command.set.isEmpty() && !command.list && !command.test_sheet) throw WrongUsage{"--set is needed."};
  if (command.file.isEmpty() && !command.list && !line.Has("check")) throw WrongUsage{"--to is needed."};
  for (const PrintOption& option : AllPrintOptions()) {
    if (!line.Has(option.name)) continue;
    const QString text = IsFlag(option) ? QStringLiteral("Yes") : line[option.name];
    const QString wrong = SetPrintOption(command.options, QLatin1String(option.name), text);
    if (!wrong.isEmpty()) throw WrongUsage{wrong};
  }
  return command;
}

}  // namespace orv
