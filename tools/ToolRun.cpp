#include "ToolRun.h"

#include "base/App.h"
#include "base/Files.h"
#include "database/CurrentSet.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

bool OpenOwn() {
  const ProgramFolder folder = SettleProgramFolder();
  if (!folder.news.isEmpty()) Complain(folder.news);
  if (folder.usable) modData::OpenDatabase([] {});
  if (!modData::DatabaseFound) Complain(folder.missing);
  return modData::DatabaseFound;
}

QStringList NamesOfSets() {
  Recordset sets = modData::OpenSnapshot(QStringLiteral("SELECT SetName FROM tblSet ORDER BY SetName"));
  QStringList names;
  for (; !sets.IsEOF(); sets.MoveNext()) names.append(sets["SetName"].TextOrEmpty());
  return names;
}

}  // namespace

bool OpenForTool(const QString& database) {
  if (database.isEmpty()) return OpenOwn();
  App::SetPath(FolderPart(database));
  modData::OpenDatabase([] {}, database);
  if (!modData::DatabaseFound) {
    const QString why =
        modData::OpeningError.isEmpty() ? QStringLiteral("File not found") : modData::OpeningError;
    Complain(QStringLiteral("%1 is missing or is no database of the program. %2").arg(database, why));
  }
  return modData::DatabaseFound;
}

void ListSets() {
  Tell(NamesOfSets().join(u'\n'));
}

bool OpenSetOfName(const QString& name) {
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblSet ORDER BY SetName"), modData::rsSet);
  Recordset& sets = modData::rsSet;
  for (; !sets.IsEOF(); sets.MoveNext()) {
    if (sets["SetName"].TextOrEmpty() != name) continue;
    MakeSetCurrent(sets["SetID"].Int16());
    return true;
  }
  Complain(QStringLiteral("There is no set of the name \"%1\". The sets are: %2")
               .arg(name, NamesOfSets().join(QStringLiteral(", "))));
  return false;
}

QStringList ArgumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  return arguments;
}

}  // namespace orv
