// The batch run without a window: the same routines as the program, on Qt's offscreen platform.
#include <QTextStream>
#include <cstdio>
#include <exception>

#include "BatchOptions.h"
#include "BatchReport.h"
#include "base/App.h"
#include "base/Files.h"
#include "composition/CardPreview.h"
#include "database/CurrentSet.h"
#include "forms/Application.h"
#include "output/WriteRecords.h"
#include "records/Integrity.h"
#include "schema/Schema.h"
#include "state/Product.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kFailureTold = 1;
constexpr int kWrongUsage = 2;

void Complain(const QString& text) {
  QTextStream(stderr) << QString(text).remove(u'\r') << Qt::endl;
}

QStringList NamesOfSets() {
  Recordset sets = modData::OpenSnapshot(QStringLiteral("SELECT SetName FROM tblSet ORDER BY SetName"));
  QStringList names;
  for (; !sets.IsEOF(); sets.MoveNext()) names.append(sets["SetName"].TextOrEmpty());
  return names;
}

// The key of the set, 0 if there is none of this name.
std::int16_t FindSetByName(const QString& name) {
  Recordset& sets = modData::rsSet;
  for (; !sets.IsEOF(); sets.MoveNext()) {
    if (sets["SetName"].TextOrEmpty() == name) return sets["SetID"].Int16();
  }
  Complain(QStringLiteral("There is no set of the name \"%1\". The sets are: %2")
               .arg(name, NamesOfSets().join(QStringLiteral(", "))));
  return 0;
}

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
  if (&kind.records == &modData::rsCard) return options.cards;
  return &kind.records == &modData::rsCharacter ? options.characters : options.large;
}

void WriteSet(const BatchOptions& options) {
  const SheetFormat format = options.format != nullptr ? FormatOf(*options.format) : FormatOfSet();
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

void OpenGiven(const QString& database) {
  App::SetPath(FolderPart(database));
  modData::OpenDatabase([] {}, database);
  if (modData::DatabaseFound) return;
  const QString why =
      modData::OpeningError.isEmpty() ? QStringLiteral("File not found") : modData::OpeningError;
  Complain(QStringLiteral("%1 is missing or is no database of the program. %2").arg(database, why));
}

// The path of the program's own.
QString OpenOwn() {
  const ProgramFolder folder = SettleProgramFolder();
  if (!folder.news.isEmpty()) Complain(folder.news);
  if (folder.usable) modData::OpenDatabase([] {});
  if (!modData::DatabaseFound) Complain(folder.missing);
  return modData::DatabasePath();
}

int RunBatch(const BatchOptions& options) {
  QString database = options.database;
  if (database.isEmpty()) {
    database = OpenOwn();
  } else {
    OpenGiven(database);
  }
  if (!modData::DatabaseFound) return kFailureTold;
  if (options.check && !IsSound(database)) return kFailureTold;
  if (options.list) {
    QTextStream(stdout) << NamesOfSets().join(u'\n') << Qt::endl;
    return 0;
  }
  BatchReport report;
  const DialogResponderScope answers(report);
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblSet ORDER BY SetName"), modData::rsSet);
  const std::int16_t set_id = FindSetByName(options.set);
  if (set_id == 0) return kWrongUsage;
  MakeSetCurrent(set_id);
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
  Application application(argc, argv, Application::Offscreen, TheProgram());
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  const ParsedOptions parsed = ParseBatchOptions(arguments);
  if (!parsed.options) {
    if (!parsed.help) {
      Complain(parsed.message);
      return kWrongUsage;
    }
    QTextStream(stdout) << parsed.message << Qt::endl;
    return 0;
  }
  return application.RunOnce([&] { return RunBatch(*parsed.options); });
}
