#include "exchange/SetFile.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <optional>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "exchange/inner/RowCopier.h"
#include "records/DatabaseFile.h"
#include "records/FileLock.h"
#include "records/NewDatabase.h"
#include "records/Recordset.h"
#include "schema/Schema.h"
#include "state/modData.h"

namespace orv {
namespace {

Recordset Sets(const Connection& connection) {
  return Recordset::OpenSnapshot(connection,
                                 QStringLiteral("SELECT SetID, SetName FROM tblSet ORDER BY SetName"));
}

// Names for sets that come in, each other than all before.
class FreeNames {
 public:
  explicit FreeNames(const QStringList& taken) {
    for (const QString& name : taken) taken_.insert(name.toCaseFolded());
  }
  QString For(const QString& name) {
    int& n = next_[name.toCaseFolded()];
    QString free = n == 0 ? name : Numbered(name, n);
    for (n = std::max(n, 2); taken_.contains(free.toCaseFolded()); ++n) free = Numbered(name, n);
    taken_.insert(free.toCaseFolded());
    return free;
  }

 private:
  static QString Numbered(const QString& name, int n) { return QStringLiteral("%1 (%2)").arg(name).arg(n); }
  QSet<QString> taken_;
  QHash<QString, int> next_;  // the number to try first
};

Connection OpenSetFile(const QString& path) {
  Connection connection = Connection::OpenToRead(path);
  modData::CheckSchema(connection);
  return connection;
}

// Its value for a set that comes from elsewhere: whose folder it was is nobody's matter.
const QString kSaveTo = QStringLiteral("SaveTo");

}  // namespace

std::int32_t FindSet(const Connection& connection, const QString& name) {
  for (Recordset sets = Sets(connection); !sets.IsEOF(); sets.MoveNext()) {
    if (sets["SetName"].TextOrEmpty() == name) return sets["SetID"].Int32();
  }
  return 0;
}

QStringList SetNames(const Connection& connection) {
  QStringList names;
  for (Recordset sets = Sets(connection); !sets.IsEOF(); sets.MoveNext())
    names.append(sets["SetName"].TextOrEmpty());
  return names;
}

void SaveSet(const Connection& from, std::int32_t set_id, const QString& path) {
  if (IsOpenHere(path))
    throw RuntimeError(kErrPermissionDenied,
                       QStringLiteral("Permission denied: the file is the open database"));
  std::optional<ExclusiveFileLock> alone;
  if (FileExists(path)) alone.emplace(path);
  ReplaceFile(path, [&](const QString& temporary) {
    MakeDatabase(temporary, schema::Script());
    const Connection to = Connection::Open(temporary);
    Transaction transaction(to);
    const ReadScope one_state(from);
    RowCopier copier(from, to, RowCopier::Keys::kKept);
    for (const char* catalogue : {"tblLanguage", "tblPicFormat"}) copier.CopyCatalogue(TableOf(catalogue));
    copier.CopySet(set_id, {{kSaveTo, Value()}});
    transaction.Commit();
    if (alone) RemoveJournalOf(path);
  });
}

QStringList SetsInFile(const QString& path) {
  return SetNames(OpenSetFile(path));
}

std::vector<std::int32_t> BringInSets(const Connection& to, const QString& path) {
  if (IsOpenHere(path))
    throw RuntimeError(kErrDatabase, QStringLiteral("The file is the open database itself."));
  const Connection from = OpenSetFile(path);
  const ReadScope one_state(from);
  Transaction transaction(to);
  std::vector<std::int32_t> keys;
  FreeNames names(SetNames(to));
  for (Recordset sets = Sets(from); !sets.IsEOF(); sets.MoveNext()) {
    RowCopier copier(from, to, RowCopier::Keys::kNew);
    const QString name = names.For(sets["SetName"].TextOrEmpty());
    keys.push_back(
        copier.CopySet(sets["SetID"].Int32(), {{kSaveTo, Value()}, {QStringLiteral("SetName"), name}}));
  }
  if (keys.empty()) throw RuntimeError(kErrDatabase, QStringLiteral("There is no set in the file."));
  transaction.Commit();
  return keys;
}

}  // namespace orv
