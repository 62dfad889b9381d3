// What a set costs to open, to walk and to edit, with and without pictures in it, and how that compares
// with what it may cost. Needs about 2.2 GB in the folder for temporary files.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <map>
#include <memory>

#include "base/RuntimeError.h"
#include "measuring/Measuring.h"
#include "records/Recordset.h"
#include "schema/Schema.h"

namespace orv {
namespace {

constexpr int kManyCards = 10'000;
constexpr int kFewCards = 100;
constexpr int kPictureSize = 200 * 1024;
constexpr int kLargePictureSize = 5 * 1024 * 1024;
constexpr qint64 kRoom = 3LL * 1024 * 1024 * 1024;

enum SetID { kMany = 1, kFew = 2, kEdited = 3 };
// Cards of the edited set.
enum Nr { kWithoutPicture = 1, kWithPicture = 2 };

void Run(sqlite3* database, const QString& sql) {
  if (sqlite3_exec(database, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw RuntimeError(kErrDatabase, QString::fromUtf8(sqlite3_errmsg(database)));
  }
}

void AddCards(sqlite3* database, int set, int count, int picture_size) {
  const QString picture =
      picture_size > 0 ? QStringLiteral("randomblob(%1)").arg(picture_size) : QStringLiteral("NULL");
  for (int nr = 1; nr <= count; ++nr) {
    Run(database,
        QStringLiteral(
            "INSERT INTO tblCard (SetID, Nr, Title, CardTypeID, CardBackID, BoldText, Information, Picture) "
            "VALUES (%1, %2, 'A card of this set', 1, 1, 'The bold text of a card', "
            "'The text of a card tells in a few lines what happens to whoever draws it.', %3)")
            .arg(set)
            .arg(nr)
            .arg(picture));
  }
}

class Databases {
 public:
  Databases() {
    Make(With(), kPictureSize);
    Make(Without(), 0);
    sqlite3* bare = nullptr;
    sqlite3_open(Bare().toUtf8().constData(), &bare);
    Run(bare,
        QStringLiteral("CREATE TABLE t (id INTEGER PRIMARY KEY, title TEXT); INSERT INTO t VALUES (1, 'x')"));
    sqlite3_close(bare);
  }

  QString With() const { return folder_.filePath("with.mdb"); }
  QString Without() const { return folder_.filePath("without.mdb"); }
  QString Bare() const { return folder_.filePath("bare.mdb"); }

 private:
  static void Make(const QString& path, int picture_size) {
    sqlite3* database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    Run(database, QStringLiteral("PRAGMA synchronous = OFF"));
    Run(database, schema::Script());
    Run(database, QStringLiteral("BEGIN"));
    AddCards(database, kFew, kFewCards, picture_size);
    AddCards(database, kMany, kManyCards, picture_size);
    AddCards(database, kEdited, 1, 0);
    Run(database,
        QStringLiteral("INSERT INTO tblCard (SetID, Nr, Title, Picture) VALUES (%1, %2, 'x', randomblob(%3))")
            .arg(kEdited)
            .arg(kWithPicture)
            .arg(kLargePictureSize));
    Run(database, QStringLiteral("COMMIT"));
    sqlite3_close(database);
    Synchronise(path);
  }

  // Otherwise the first durable update would wait for all of it.
  static void Synchronise(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    ::fsync(file);
    ::close(file);
  }

  QTemporaryDir folder_;
};

std::unique_ptr<Databases> databases;

Recordset OpenCards(const Connection& connection, int set) {
  return Recordset::OpenEditable(
      connection, QStringLiteral("SELECT * FROM tblCard WHERE SetID = %1 ORDER BY Nr").arg(set));
}

void OpenSet(benchmark::State& state, bool pictures) {
  const QString path = pictures ? databases->With() : databases->Without();
  for (auto _ : state) {
    const Connection connection = Connection::Open(path);
    Recordset cards = OpenCards(connection, kMany);
    cards.MoveLast();
    cards.MoveFirst();
    benchmark::DoNotOptimize(cards["Title"].Text());
  }
}

void FindCard(benchmark::State& state, int set) {
  const Connection connection = Connection::Open(databases->With());
  Recordset cards = OpenCards(connection, set);
  const int count = cards.RecordCount();
  int nr = 0;
  for (auto _ : state) {
    nr = (nr + 7919) % count;
    cards.MoveFirst();
    cards.Find(QStringLiteral("Nr = %1").arg(nr + 1));
    benchmark::DoNotOptimize(cards["Title"].Text());
  }
}

void Move(benchmark::State& state, int set) {
  const Connection connection = Connection::Open(databases->With());
  Recordset cards = OpenCards(connection, set);
  for (auto _ : state) {
    cards.MoveNext();
    if (cards.IsEOF()) cards.MoveFirst();
    benchmark::DoNotOptimize(cards["Title"].Text());
  }
}

// A title that no run has written yet.
QString NextTitle() {
  static int count = 0;
  return QStringLiteral("Title %1").arg(++count);
}

void UpdateTitle(benchmark::State& state, int nr) {
  const Connection connection = Connection::Open(databases->With());
  Recordset cards = OpenCards(connection, kEdited);
  cards.Find(QStringLiteral("Nr = %1").arg(nr));
  for (auto _ : state) {
    cards["Title"] = NextTitle();
    cards.Update();
  }
}

// One short row in a file with nothing else, with SQLite's own settings.
void BareUpdate(benchmark::State& state) {
  sqlite3* database = nullptr;
  sqlite3_open(databases->Bare().toUtf8().constData(), &database);
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database, "UPDATE t SET title = ?1 WHERE id = 1", -1, &statement, nullptr);
  for (auto _ : state) {
    const QByteArray title = NextTitle().toUtf8();
    sqlite3_bind_text(statement, 1, title.constData(), -1, SQLITE_TRANSIENT);
    if (sqlite3_step(statement) != SQLITE_DONE) state.SkipWithError("update failed");
    sqlite3_reset(statement);
  }
  sqlite3_finalize(statement);
  sqlite3_close(database);
}

// Keeps the medians over the repetitions.
class Reporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.aggregate_name == "median") medians_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
  }

  // False if the ratio is above its limit. A figure that was filtered out has none.
  bool PrintRatio(const char* what, const std::string& of, const std::string& to, double limit) const {
    if (!medians_.contains(of) || !medians_.contains(to)) return true;
    return orv::PrintRatio(what, medians_.at(of) / medians_.at(to), limit);
  }

 private:
  std::map<std::string, double> medians_;
};

void Register() {
  const auto add = [](const char* name, auto function, auto... arguments) {
    return benchmark::RegisterBenchmark(name, function, arguments...)->UseRealTime();
  };
  add("OpenSet/with", OpenSet, true)->Unit(benchmark::kMillisecond);
  add("OpenSet/without", OpenSet, false)->Unit(benchmark::kMillisecond);
  add("Find/10000", FindCard, kMany)->Unit(benchmark::kMicrosecond);
  add("Find/100", FindCard, kFew)->Unit(benchmark::kMicrosecond);
  add("Move/10000", Move, kMany)->Unit(benchmark::kMicrosecond);
  add("Move/100", Move, kFew)->Unit(benchmark::kMicrosecond);
  add("UpdateTitle/picture", UpdateTitle, kWithPicture)->Unit(benchmark::kMillisecond);
  add("UpdateTitle/none", UpdateTitle, kWithoutPicture)->Unit(benchmark::kMillisecond);
  add("UpdateTitle/bare", BareUpdate)->Unit(benchmark::kMillisecond);
}

int Main(int argc, char** argv) {
  // Repeated in random order, so that a disk that grows slow or fast in between hits all alike.
  std::vector<char*> arguments(argv, argv + argc);
  static char interleaving[] = "--benchmark_enable_random_interleaving=true";
  static char repetitions[] = "--benchmark_repetitions=7";
  static char aggregates[] = "--benchmark_display_aggregates_only=true";
  arguments.insert(arguments.begin() + 1, {interleaving, repetitions, aggregates});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  const QTemporaryDir probe;
  if (QStorageInfo(probe.path()).bytesAvailable() < kRoom) {
    std::printf("skipped: no room for 3 GB in the folder for temporary files (TMPDIR)\n");
    return 0;
  }
  std::printf("making databases of %d cards ...\n", kManyCards);
  databases = std::make_unique<Databases>();
  Register();
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  databases.reset();
  std::printf("\n");
  bool ok = true;
  const auto print = [&](const char* what, const char* of, const char* to, double limit) {
    ok &= reporter.PrintRatio(what, of, to, limit);
  };
  print("opening 10,000 cards with pictures of 200 KB / without", "OpenSet/with", "OpenSet/without", 1.2);
  print("Find among 10,000 cards / among 100", "Find/10000", "Find/100", 2);
  print("a move among 10,000 cards / among 100", "Move/10000", "Move/100", 2);
  print("Update of Title beside a picture of 5 MB / without a picture", "UpdateTitle/picture",
        "UpdateTitle/none", 1.5);
  print("Update of Title beside a picture of 5 MB / a bare durable update", "UpdateTitle/picture",
        "UpdateTitle/bare", 3);
  return ok ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  try {
    return orv::Main(argc, argv);
  } catch (const orv::RuntimeError& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
