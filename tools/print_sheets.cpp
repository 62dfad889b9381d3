// Sheets for print without a window: the same routines as the program, on Qt's offscreen platform.
#include "PrintCommand.h"
#include "ToolRun.h"
#include "base/RuntimeError.h"
#include "database/CurrentSet.h"
#include "output/OutputKinds.h"
#include "print/PrintSheets.h"
#include "state/modData.h"

namespace orv {
namespace {

bool GoOn(int, int) {
  return true;
}

int Print(const PrintCommand& command) {
  for (const OutputKind* kind : OutputKinds()) {
    if ((kind->edition == 2) == (modData::CurrentEditionID == 2))
      OpenRecordsOfSet(kind->table, kind->records);
  }
  for (const BadCard& bad : CheckSheets(command.options, GoOn))
    command.file.isEmpty() ? Tell(bad.line) : Complain(bad.line);
  if (command.file.isEmpty()) return 0;
  const PrintOutcome outcome = PrintSheets(command.options, command.file, GoOn);
  if (outcome.sheets == 0) {
    Tell(QStringLiteral("No card has changed since its last sheet: nothing is written."));
    return 0;
  }
  Tell(QStringLiteral("%1: %2 cards on %3 sheets").arg(command.file).arg(outcome.cards).arg(outcome.sheets));
  if (outcome.unchanged > 0) Tell(QStringLiteral("%1 unchanged").arg(outcome.unchanged));
  if (!outcome.forgotten.isEmpty()) {
    Complain(QStringLiteral("What changes from now on can't be told: ") + outcome.forgotten);
  }
  return outcome.not_drawn.isEmpty() ? 0 : kFailureTold;
}

int RunPrint(const PrintCommand& command) {
  try {
    if (command.test_sheet) {
      PrintTestSheet(command.options, command.file);
      return 0;
    }
    if (!OpenForTool(command.database)) return kFailureTold;
    if (command.list) {
      ListSets();
      return 0;
    }
    return OpenSetOfName(command.set) ? Print(command) : kWrongUsage;
  } catch (const RuntimeError& error) {
    Complain(error.NumberAndDescription());
    return kFailureTold;
  }
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  CommandLine line(TheProgram(), "Writes the cards of a set as sheets for print, a PDF file.");
  DeclarePrintCommand(line);
  return RunTool(argc, argv, line, ReadPrintCommand, RunPrint);
}
