#include "records/Integrity.h"

#include "records/inner/Reader.h"

namespace orv {

QStringList FaultsOf(const QString& path, const QStringList& strays) {
  const Reader file(path);
  QStringList faults = file.Faults();
  if (!faults.isEmpty()) return faults;
  for (const QString& query : strays) faults += file.FirstColumn(query);
  return faults;
}

}  // namespace orv
