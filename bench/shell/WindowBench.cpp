// The program's window over a set of 2,000 cards with pictures of 200 kB: a key in a text box up to the
// stored edit, the step to the next card, the start up to a shown window, and the deletion of the first of
// 10,000 cards. Ratios of one run; see bench/README.md. Needs 1 GB in the folder for temporary files
// (TMPDIR).
#include <sqlite3.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <cstdio>
#include <cstring>
#include <vector>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "database/CurrentSet.h"
#include "editors/frmCard2nd.h"
#include "forms/Application.h"
#include "icons/Icons.h"
#include "measuring/Measuring.h"
#include "measuring/Photo.h"
#include "shell/Main.h"
#include "shell/frmMaster.h"
#include "state/Product.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

constexpr int kCards = 2000;
constexpr int kKeys = 300;
constexpr int kSteps = 200;
constexpr int kRounds = 9;
constexpr char kStartOnly[] = "--start";

struct Pictures {
  QByteArray picture = Photo(700, 525, 90);
  QByteArray upright = Photo(150, 254, 88);
};

// Numbered cards without pictures.
void AddCards(TestDatabase& database, int set, int count) {
  database.Execute(
      QStringLiteral(
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
          "INSERT INTO tblCard_rows (SetID, Nr, Title, Copies, CardTypeID, CardBackID, Number, OneLine, "
          "UsePicture, PicTop, PicLeft, PicHeight, Resize, UseFrame, Artist, BoldText, Information, "
          "BGColour, "
          "FileName) SELECT %2, i, 'Card ' || i, 1, 2, 1, '3', 0, -1, 0, 0, 105, 0, -1, 'A. Painter', "
          "'STRENGTH 4', 'A few lines of text for every card.', 16777215, '' FROM n")
          .arg(count)
          .arg(set));
}

int MakePictureSet(TestDatabase& database, const Pictures& pictures) {
  Transaction transaction(modData::cn);
  const int set = database.AddSet(QStringLiteral("Pictures"), 2);
  AddCards(database, set, kCards);
  Recordset cards;
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblCard WHERE SetID = %1 ORDER BY Nr").arg(set), cards);
  for (; !cards.IsEOF(); cards.MoveNext()) {
    cards["Picture"].AppendChunk(pictures.picture);
    cards["Background"].AppendChunk(pictures.upright);
    cards.Update();
  }
  transaction.Commit();
  return set;
}

void OpenEditor(TestDatabase& database, int set) {
  database.SelectSet(set);
  MakeSetCurrent(static_cast<std::int16_t>(set));
  frmCard2nd->InitCard2nd();
  frmCard2nd->Show();
}

// One short row in a file with nothing else, with SQLite's own settings.
class BareDatabase {
 public:
  explicit BareDatabase(const QString& path) {
    sqlite3_open(path.toUtf8().constData(), &database_);
    sqlite3_exec(database_,
                 "CREATE TABLE t (id INTEGER PRIMARY KEY, title TEXT); INSERT INTO t VALUES (1, '')", nullptr,
                 nullptr, nullptr);
    sqlite3_prepare_v2(database_, "UPDATE t SET title = title || 'x' WHERE id = 1", -1, &statement_, nullptr);
  }
  ~BareDatabase() {
    sqlite3_finalize(statement_);
    sqlite3_close(database_);
  }
  BareDatabase(const BareDatabase&) = delete;
  BareDatabase& operator=(const BareDatabase&) = delete;

  void Update() {
    if (sqlite3_step(statement_) != SQLITE_DONE) throw RuntimeError(kErrDatabase);
    sqlite3_reset(statement_);
  }

 private:
  sqlite3* database_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
};

bool MeasureKeys(const TestDatabase& database) {
  BareDatabase bare(database.Path(QStringLiteral("bare.db")));
  std::vector<double> keys, updates;
  for (int i = 0; i < kKeys; ++i) {
    const QChar key(u'a' + i % 26);
    keys.push_back(Milliseconds([key] { TypeInto(frmCard2nd->txtInfo, QString(key)); }));
    updates.push_back(Milliseconds([&] { bare.Update(); }));
  }
  const double update = Median(updates);
  std::printf("a key: median %.1f ms, 99th percentile %.1f ms; a bare durable update: %.1f ms, %.1f ms\n",
              Median(keys), Percentile(keys, 0.99), update, Percentile(updates, 0.99));
  const bool median = PrintRatio("a key / a bare durable update, median", Median(keys) / update, 4);
  return PrintRatio("a key, 99th percentile / a bare durable update, median", Percentile(keys, 0.99) / update,
                    10) &&
         median;
}

bool MeasureSteps(const Pictures& pictures) {
  std::vector<double> steps, decodings;
  for (int i = 0; i < kSteps; ++i) {
    steps.push_back(Milliseconds([] { ClickOn(frmCard2nd->cmdCardNav[2]); }));
    decodings.push_back(Milliseconds([&] {
      for (const QByteArray& picture : {pictures.picture, pictures.upright, pictures.upright})
        LoadPicture(picture);
    }));
  }
  std::printf("\">\": %.1f ms; its three pictures decoded: %.1f ms\n", Median(steps), Median(decodings));
  return PrintRatio("\">\" / decoding its three pictures", Median(steps) / Median(decodings), 2);
}

bool MeasureDeleting(TestDatabase& database, int many_set, int few_set) {
  std::vector<double> many, few;
  for (int round = 0; round < kRounds; ++round) {
    for (const auto& [set, times] : {std::pair(few_set, &few), std::pair(many_set, &many)}) {
      OpenEditor(database, set);
      times->push_back(Milliseconds([] { ClickOn(frmCard2nd->cmdCardDelete); }));
    }
  }
  std::printf("deleting card 1 of 10,000: %.0f ms, of 100: %.0f ms\n", Median(many), Median(few));
  return PrintRatio("deleting card 1 of 10,000 / of 100", Median(many) / Median(few), 20);
}

// The whole of another process of this program, which ends as soon as its window is shown.
double Start(const QString& folder) {
  return Milliseconds([&] {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QLatin1String(kStartOnly), folder});
    if (!process.waitForFinished(60000) || process.exitCode() != 0) throw RuntimeError(kErrDatabase);
  });
}

int StartOnly(const QString& folder) {
  App::SetPath(folder);
  InitIcons();
  DialogScript script;  // answers what a start may ask
  const DialogResponderScope answers(script);
  if (!Main()) return 1;
  QCoreApplication::processEvents();
  const bool shown = frmMaster.IsVisible();
  Application::Quit();
  return shown ? 0 : 1;
}

bool MeasureStart(const TestDatabase& full) {
  const QString empty = full.Path(QStringLiteral("empty"));
  QDir().mkpath(empty);
  TestDatabase::MakeFile(JoinPath(empty, QStringLiteral("orv.mdb")));
  std::vector<double> with_set, without;
  for (int round = 0; round < kRounds; ++round) {
    without.push_back(Start(empty));
    with_set.push_back(Start(full.Folder()));
  }
  std::printf("start: %.0f ms with the set, %.0f ms with an empty database\n", Median(with_set),
              Median(without));
  return PrintRatio("start with the set / with an empty database", Median(with_set) / Median(without), 1.3);
}

int Measure() {
  const Pictures pictures;
  std::printf("%d cards with pictures of %lld and %lld kB\n", kCards, pictures.picture.size() / 1000,
              pictures.upright.size() / 1000);
  TestDatabase database;
  DialogScript script;
  const DialogResponderScope answers(script);
  database.Store(QStringLiteral("tblCardBack"), 1, QStringLiteral("Picture"), pictures.upright);
  const int set = MakePictureSet(database, pictures);
  bool ok = MeasureStart(database);
  OpenEditor(database, set);
  ok &= MeasureKeys(database);
  ok &= MeasureSteps(pictures);
  const int many_set = database.AddSet(QStringLiteral("Many"), 2);
  AddCards(database, many_set, 10000);
  const int few_set = database.AddSet(QStringLiteral("Few"), 2);
  AddCards(database, few_set, 100);
  ok &= MeasureDeleting(database, many_set, few_set);
  if (!script.boxes.empty()) std::printf("a box said: %s\n", qPrintable(script.boxes.front().prompt));
  return ok && script.boxes.empty() ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  if (argc == 3 && std::strcmp(argv[1], orv::kStartOnly) == 0) {
    const QString folder = QString::fromLocal8Bit(argv[2]);
    return application.RunOnce([&] { return orv::StartOnly(folder); });
  }
  return application.RunOnce(orv::Measure);
}
