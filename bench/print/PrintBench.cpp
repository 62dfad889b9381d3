// Sheets for print of sets of 100 and 500 cards, each with a picture of its own: time and size a card, and
// the memory that the larger set takes more than the smaller one.
#include <sys/resource.h>

#include <QFileInfo>
#include <cstdio>

#include "forms/Application.h"
#include "measuring/Measuring.h"
#include "measuring/Photo.h"
#include "print/PrintSheets.h"
#include "state/Product.h"
#include "state/modData.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

constexpr double kGrowthGoal = 1.1;

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1000.0;
}

int MakeSet(TestDatabase& database, int cards) {
  Transaction transaction(modData::cn);
  const int set = database.AddSet(QStringLiteral("Set of %1").arg(cards), 2);
  const QByteArray picture = Photo(150, 120, 88);
  for (int nr = 1; nr <= cards; ++nr) {
    const int card = database.AddCard(set, nr, QStringLiteral("Card %1").arg(nr));
    database.Store(QStringLiteral("tblCard"), card, QStringLiteral("Picture"),
                   picture + QByteArray::number(nr));
  }
  database.Execute(QStringLiteral(
      "UPDATE tblCard_rows SET UsePicture = -1, PicHeight = 110, Copies = 1, Artist = 'A. Painter', "
      "BoldText = 'STRENGTH 4', Information = 'Whoever meets it must fight; the winner takes one "
      "object from the loser and moves on.'"));
  transaction.Commit();
  return set;
}

// Peak memory after it, in megabytes.
double Run(TestDatabase& database, int cards) {
  database.SelectSet(MakeSet(database, cards));
  const QString file = database.Path(QStringLiteral("sheets.pdf"));
  const double time = Milliseconds([&] { PrintSheets({}, file, [](int, int) { return true; }); });
  const double peak = PeakMegabytes();
  std::printf("%4d cards: %.2f ms a card, %.1f kB a card, peak memory %.1f MB\n", cards, time / cards,
              QFileInfo(file).size() / 1000.0 / cards, peak);
  return peak;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  Application application(argc, argv, Application::Offscreen, TheProgram());
  TestDatabase database;
  const double few = Run(database, 100);
  return PrintRatio("peak memory at 500 cards / at 100", Run(database, 500) / few, kGrowthGoal) ? 0 : 1;
}
