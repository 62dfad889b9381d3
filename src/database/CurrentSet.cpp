#include "database/CurrentSet.h"

#include "base/RuntimeError.h"
#include "database/ReferenceLists.h"
#include "state/modData.h"

namespace orv {
namespace {

Picture SymbolOfSet() {
  const Recordset& set = modData::rsSet;
  if (!set["UseSymbol"].BoolOrFalse() || set["Symbol"].IsNull()) return {};
  const QByteArray bytes = set["Symbol"].Bytes();
  try {
    return LoadPicture(bytes);
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace

void MakeSetCurrent(std::int16_t set_id) {
  modData::CurrentSetID = set_id;
  modData::FindSet(set_id);
  modData::CurrentEditionID = modData::rsSet["EditionID"].Int16Or(0);
  modData::CurrentLanguageID = modData::rsSet["LanguageID"].Int16Or(0);
  LoadReferenceLists(modData::CurrentEditionID, modData::CurrentLanguageID);
  modData::SetSymbol = SymbolOfSet();
}

void OpenRecordsOfSet(const char* table, Recordset& rows) {
  modData::strSQL = QStringLiteral("SELECT * FROM %1 WHERE SetID = %2 ORDER BY Nr")
                        .arg(QLatin1String(table))
                        .arg(modData::CurrentSetID);
  modData::OpenEditable(modData::strSQL, rows);
}

}  // namespace orv
