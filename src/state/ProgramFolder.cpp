#include "state/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "state/Product.h"
#include "state/modData.h"

namespace orv {
namespace {

const QString kGap = QStringLiteral("\r\n\r\n");
const QString kLine = QStringLiteral("\r\n");

// Where an installation puts the database: apart from the data folder of a user who installs under the
// own home.
QString InstalledDatabase() {
  return QDir::cleanPath(
      QStringLiteral("%1/../share/%2/delivered/orv.mdb").arg(App::Path(), TheProgram().package_name));
}

ProgramFolder Unusable(const QString& why) {
  return {false, why, {}};
}

bool MakeFolder(const QString& folder) {
  constexpr auto kForOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
  const QFileInfo info(folder);
  if (!info.isDir()) {
    QDir().mkpath(info.path());
    QDir().mkdir(folder, kForOwner);
  }
  return QFileInfo(folder).isDir() && QFileInfo(folder).isWritable();
}

ProgramFolder SettleUsersFolder(const QString& beside, const QString& installed) {
  const QString folder = UsersFolder();
  if (!MakeFolder(folder))
    return Unusable(QStringLiteral("The folder for your sets can't be made or written to.") + kGap + folder);
  App::SetPath(folder);
  ProgramFolder found;
  found.missing = QStringLiteral("The database is missing.") + kGap +
                  QStringLiteral("Make sure the file orv.mdb is in the folder") + kLine + folder;
  if (FileExists(modData::DatabasePath())) return found;
  const bool has_beside = FileExists(beside);
  const QString& delivered = has_beside ? beside : installed;
  if (!FileExists(delivered)) {
    return Unusable(QStringLiteral("The delivered database is missing.") + kGap + installed + kGap +
                    QStringLiteral("Install the program again."));
  }
  try {
    const bool made = MakeFileIfMissing(modData::DatabasePath(), ReadWhole(delivered));
    if (made && has_beside) {
      found.news =
          QStringLiteral(
              "The program may not write to its folder, so a copy of its database was made for you in") +
          kGap + folder + kGap + QStringLiteral("Your sets are kept there from now on.");
    }
  } catch (const RuntimeError& error) {
    return Unusable(QStringLiteral("The delivered database can't be copied to the folder for your sets.") +
                    kGap + folder + kLine + error.NumberAndDescription());
  }
  return found;
}

}  // namespace

QString UsersFolder() {
  return JoinPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                  TheProgram().package_name);
}

ProgramFolder SettleProgramFolder() {
  const QString beside = modData::DatabasePath();
  const QString installed = InstalledDatabase();
  const bool portable = QFileInfo(App::Path()).isWritable() && (FileExists(beside) || !FileExists(installed));
  if (!portable) return SettleUsersFolder(beside, installed);
  return {true,
          QStringLiteral("The database is missing.") + kGap +
              QStringLiteral("Make sure the file ORV.MDB is in the same folder as the program."),
          {}};
}

}  // namespace orv
