// The compaction of a file of 500 MB with half of it free, against a synchronised copy of the same file in
// the same run. Needs 2 GB in the folder for temporary files (TMPDIR); see bench/README.md.
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <vector>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "database/inner/CompactAndRepair.h"
#include "forms/Application.h"
#include "measuring/Measuring.h"
#include "schema/Schema.h"
#include "state/Product.h"

namespace orv {
namespace {

constexpr int kCards = 2500;
constexpr int kPictureSize = 200 * 1024;
constexpr int kRounds = 7;
constexpr double kGoal = 4;

// Cards with a picture each; every second one is deleted again.
void MakeDatabase(const QString& path) {
  sqlite3* database = nullptr;
  sqlite3_open(path.toUtf8().constData(), &database);
  const auto run = [database](const QString& sql) {
    if (sqlite3_exec(database, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw RuntimeError(kErrDatabase, QString::fromUtf8(sqlite3_errmsg(database)));
    }
  };
  run(QStringLiteral("PRAGMA synchronous = OFF"));
  run(schema::Script());
  run(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                     "INSERT INTO tblCard_rows (CardID, SetID, Nr, Title, Information) "
                     "SELECT i, 1, i, 'Card ' || i, 'What the card tells in a few lines.' FROM n")
          .arg(kCards));
  run(QStringLiteral(
          "INSERT INTO tblCard_long (CardID, Picture) SELECT CardID, randomblob(%1) FROM tblCard_rows")
          .arg(kPictureSize));
  run(QStringLiteral("DELETE FROM tblCard WHERE CardID % 2 = 0"));
  sqlite3_close(database);
}

// A plain copy that is on the disk when it returns.
void CopyFile(const QString& source, const QString& target) {
  const int from = ::open(source.toUtf8().constData(), O_RDONLY);
  const int to = ::open(target.toUtf8().constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
  std::vector<char> block(1 << 20);
  for (ssize_t size = 1; size > 0;) {
    size = ::read(from, block.data(), block.size());
    if (size > 0 && ::write(to, block.data(), static_cast<size_t>(size)) != size)
      throw RuntimeError(kErrDiskFull);
  }
  ::close(from);
  ::close(to);
  Synchronise(target);
  Synchronise(FolderPart(target));
}

int Main() {
  const QTemporaryDir folder;
  App::SetPath(folder.path());
  const QString master = folder.filePath(QStringLiteral("master"));
  const QString copy = folder.filePath(QStringLiteral("copy"));
  const QString database = folder.filePath(QStringLiteral("orv.mdb"));
  MakeDatabase(master);
  std::vector<double> copying;
  std::vector<double> compacting;
  qint64 after = 0;
  for (int round = 0; round < kRounds; ++round) {
    CopyFile(master, database);
    const auto copy_once = [&] {
      copying.push_back(Milliseconds([&] { CopyFile(database, copy); }));
      RemoveFile(copy);
    };
    // Before in one round and behind in the next, so that a disk that grows slow hits both alike.
    if (round % 2 == 0) copy_once();
    compacting.push_back(Milliseconds([] { CompactAndRepair(); }));
    after = QFileInfo(database).size();
    RemoveFile(database);
    if (round % 2 == 1) {
      CopyFile(master, database);
      copy_once();
      RemoveFile(database);
    }
  }
  const double ratio = Median(compacting) / Median(copying);
  std::printf("file: %.0f MB, compacted: %.0f MB\n", static_cast<double>(QFileInfo(master).size()) / 1e6,
              static_cast<double>(after) / 1e6);
  std::printf("copy: %.0f ms, compaction: %.0f ms (medians of %d)\n", Median(copying), Median(compacting),
              kRounds);
  return PrintRatio("compaction / synchronised copy", ratio, kGoal) ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  return application.RunOnce(orv::Main);
}
