// The batch run without a window: the same routines as the program, on Qt's offscreen platform.
#include <exception>
#include <optional>

#include "BatchOptions.h"
#include "BatchReport.h"
#include "ToolRun.h"
#include "composition/CardPreview.h"
#include "database/CurrentSet.h"
#include "output/WriteRecords.h"
#include "print/Artwork.h"
#include "records/Integrity.h"
#include "schema/Schema.h"
#include "state/modData.h"

namespace orv {
namespace {

void StoreOptions(const BatchOptions& options) {
  Recordset& set = modData::rsSet;
  if (!options.folder.isEmpty()) set["SaveTo"] = options.folder;
  if (options.format != nullptr && options.format->pic_format_id) {
    set["PicFormatID"] = *options.format->pic_format_id;
  }
  if (options.prefix) set["FilenamePrefix"] = *options.prefix;
  if (options.number) set["FileCardNr"] = *options.number;
  if (options.no_back) set["NoBack"] = *options.no_back;
  if (options.underline) set["ReplaceSpace"] = *options.underline;
  set.Update();
}

bool IsWanted(const OutputKind& kind, const BatchOptions& options) {
  if ((kind.edition == 2) != (modData::CurrentEditionID == 2)) return false;
  return options.kinds.isEmpty() || options.kinds.contains(QLatin1String(kind.name));
}

void WriteSet(const BatchOptions& options) {
  std::optional<KeepDrawings> keep;
  if (options.scale > 1) {
    DrawArtworkAnew();
    keep.emplace();
  }
  SheetFormat format = options.format != nullptr ? FormatOf(*options.format) : FormatOfSet();
  format.times = options.scale;
  for (const OutputKind* kind : OutputKinds()) {
    if (IsWanted(*kind, options)) OpenRecordsOfSet(kind->table, kind->records);
  }
  // The main window has the preview of the 2nd edition draw the first card of each set that is chosen, and a
  // sheet of the 3rd edition takes its back from there.
  const bool cards = modData::rsCard.IsOpen() && !modData::rsCard.IsEmpty();
  if (cards && modData::CurrentEditionID != 2) CardPreviewOf(2).DrawCard();
  for (const OutputKind* kind : OutputKinds()) {
    if (IsWanted(*kind, options)) WriteRecords(*kind, format, [](int) {});
  }
}

// What was written before a failure that ends the run is told all the same.
void WriteAndConclude(const BatchOptions& options, BatchReport& report) {
  try {
    WriteSet(options);
  } catch (const std::exception& error) {
    report.Tell(QStringLiteral("The run ends here. ") + QString::fromUtf8(error.what()));
    report.Conclude();
    throw;
  }
  report.Conclude();
}

bool IsSound(const QString& path) {
  const QStringList faults = FaultsOf(path, schema::StrayRows());
  for (const QString& fault : faults) Complain(QStringLiteral("Damaged: ") + fault);
  return faults.isEmpty();
}

int RunBatch(const BatchOptions& options) {
  if (!OpenForTool(options.database)) return kFailureTold;
  const QString database = options.database.isEmpty() ? modData::DatabasePath() : options.database;
  if (options.check && !IsSound(database)) return kFailureTold;
  if (options.list) {
    ListSets();
    return 0;
  }
  BatchReport report;
  const DialogResponderScope answers(report);
  if (!OpenSetOfName(options.set)) return kWrongUsage;
  StoreOptions(options);
  if (modData::rsSet["SaveTo"].TextOrEmpty().isEmpty()) {
    Complain(QStringLiteral("--to is needed: the set has no folder stored."));
    return kWrongUsage;
  }
  WriteAndConclude(options, report);
  return report.ToldFailure() ? kFailureTold : 0;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  CommandLine line(
      TheProgram(),
      "Writes out all cards of a set, without a window. Needed are --set, and --to where the set has no "
      "folder "
      "stored. Options marked * are stored in the set; one that is not given keeps what the set holds.");
  DeclareBatchOptions(line);
  return RunTool(argc, argv, line, ReadBatchOptions, RunBatch);
}
