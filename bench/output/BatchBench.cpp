// The batch run against its floor: decoding every picture that the batch decodes, and encoding and writing
// a sheet of the same size, with the same libraries and nothing else. Ratios of one run; see bench/README.md.
// Usage: batch_bench [cards] [cards of the long run]
#include <sys/resource.h>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "base/Files.h"
#include "editors/frmCard2nd.h"
#include "forms/Application.h"
#include "output/frmCreate.h"
#include "pictures/cDIBSection.h"
#include "pictures/mIntelJPEGLibrary.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

double Seconds(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

long PeakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// The bytes of a JPG with light and shade in all places, of about the size that a photo has.
QByteArray Photo(TestDatabase& database, int width, int height, int quality) {
  Surface surface;
  surface.Place(0, 0, width, height);
  unsigned seed = 7;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      seed = seed * 1664525u + 1013904223u;
      const int grain = static_cast<int>(seed >> 27);
      surface.SetPixel(x, y,
                       Rgb(std::min(255, x * 255 / width + grain), std::min(255, y * 255 / height + grain),
                           (x * y / 97 + grain) & 0xFF));
    }
  }
  cDIBSection section;
  section.CreateFromPicture(surface.Image());
  const QString path = database.Path(QStringLiteral("photo.jpg"));
  SaveJPG(section, path, quality);
  return ReadWhole(path);
}

struct Pictures {
  QByteArray picture, background, back;
};

int MakeSet(TestDatabase& database, int cards, const Pictures& pictures) {
  Transaction transaction(modData::cn);
  const int set = database.AddSet(QStringLiteral("Set of %1").arg(cards), 2);
  for (int nr = 1; nr <= cards; ++nr) {
    const int card = database.AddCard(set, nr, QStringLiteral("Card %1").arg(nr));
    database.Store(QStringLiteral("tblCard"), card, QStringLiteral("Picture"), pictures.picture);
    database.Store(QStringLiteral("tblCard"), card, QStringLiteral("Background"), pictures.background);
  }
  database.Execute(
      QStringLiteral("UPDATE tblCard_rows SET Artist = 'A. Painter', BoldText = 'STRENGTH 4', Information = "
                     "'Whoever meets it must fight; the winner takes one object from the loser and moves on. "
                     "On a draw both miss one turn (unless they own a lantern).' WHERE SetID = %1")
          .arg(set));
  database.Execute(
      QStringLiteral("UPDATE tblSet_rows SET PicFormatID = 2, FileCardNr = -1 WHERE SetID = %1").arg(set));
  transaction.Commit();
  return set;
}

double RunBatch(TestDatabase& database, int set) {
  database.SelectSet(set);
  modData::rsSet["SaveTo"] = database.Path(QStringLiteral("out"));
  modData::rsSet.Update();
  frmCard2nd->InitCard2nd();
  return Seconds([] { frmCreate->CreateAllCards(true, false, false, false, false, false); });
}

double RunFloor(TestDatabase& database, int cards, const Pictures& pictures) {
  const QString folder = database.Path(QStringLiteral("floor"));
  QDir().mkpath(folder);
  Surface sheet;
  sheet.Place(0, 0, 304, 256);
  sheet.SetPicture(LoadPicture(pictures.picture));
  const Picture image = sheet.Image();
  return Seconds([&] {
    for (int i = 0; i < cards; ++i) {
      LoadPicture(pictures.picture);
      LoadPicture(pictures.background);
      LoadPicture(pictures.back);
      cDIBSection section;
      section.CreateFromPicture(image);
      SaveJPG(section, JoinPath(folder, QStringLiteral("%1.JPG").arg(i)), 90);
    }
  });
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

int Measure(int cards, int many) {
  TestDatabase database;
  DialogScript script;
  const DialogResponderScope answers(script);
  QDir().mkpath(database.Path(QStringLiteral("out")));
  const Pictures pictures{Photo(database, 600, 450, 88), Photo(database, 150, 254, 85),
                          Photo(database, 150, 254, 90)};
  std::printf("pictures: %lld, %lld and %lld bytes\n", static_cast<long long>(pictures.picture.size()),
              static_cast<long long>(pictures.background.size()),
              static_cast<long long>(pictures.back.size()));
  database.Store(QStringLiteral("tblCardBack"), 1, QStringLiteral("Picture"), pictures.back);
  const int set = MakeSet(database, cards, pictures);
  RunFloor(database, cards, pictures);
  const double first = RunBatch(database, set);
  std::vector<double> ratios, seconds, floors;
  for (int round = 0; round < 5; ++round) {
    floors.push_back(RunFloor(database, cards, pictures));
    seconds.push_back(RunBatch(database, set));
    ratios.push_back(seconds.back() / floors.back());
  }
  std::printf("batch of %d cards: %.2f ms a card, floor %.2f ms a card, ratio %.2f (first run %.2f)\n", cards,
              Median(seconds) * 1000 / cards, Median(floors) * 1000 / cards, Median(ratios),
              first / Median(floors));
  const int few_set = MakeSet(database, 100, pictures);
  const int many_set = MakeSet(database, many, pictures);
  RunBatch(database, few_set);
  std::vector<double> few;
  for (int round = 0; round < 5; ++round) few.push_back(RunBatch(database, few_set));
  const long few_memory = PeakKilobytes();
  RunBatch(database, many_set);
  const double many_seconds = RunBatch(database, many_set);
  std::printf("milliseconds a card at 100 and %d cards: %.2f and %.2f, ratio %.2f\n", many, Median(few) * 10,
              many_seconds * 1000 / many, many_seconds * 1000 / many / (Median(few) * 10));
  std::printf("peak memory at 100 and %d cards: %ld and %ld kB, ratio %.2f\n", many, few_memory,
              PeakKilobytes(), static_cast<double>(PeakKilobytes()) / few_memory);
  return 0;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen);
  const int cards = argc > 1 ? std::atoi(argv[1]) : 500;
  const int many = argc > 2 ? std::atoi(argv[2]) : 5000;
  return application.RunOnce([&] { return orv::Measure(cards, many); });
}
