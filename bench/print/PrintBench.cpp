// Sheets for print of sets of 100 and 500 cards, each with a picture of its own: time and size a card, and
// the memory that the larger set takes more than the smaller one. And what drawing costs where nobody asks
// for what was drawn.
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <cstdio>

#include "forms/Application.h"
#include "forms/Playing.h"
#include "forms/Surface.h"
#include "measuring/Measuring.h"
#include "measuring/Photo.h"
#include "print/PrintSheets.h"
#include "state/Product.h"
#include "state/modData.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

constexpr double kGrowthGoal = 1.1;
constexpr double kUnaskedGoal = 1.1;

// The most that the kernel saw of this process.
double PeakMegabytes() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith("VmHWM:")) return line.mid(6).simplified().split(' ').first().toDouble() / 1000;
  }
  return 0;
}

// About what a card is made of, on a surface, and the same pixels without one.
bool MeasureUnasked() {
  constexpr int kCards = 400;
  const QString line = QStringLiteral("Whoever meets it must fight; the");
  const Picture picture = LoadPicture(Photo(142, 106, 88));
  Surface surface;
  surface.Place(0, 0, 150, 254);
  QImage image(150, 254, QImage::Format_RGB32);
  const Font font = surface.GetFont();
  const auto with_surface = [&] {
    for (int card = 0; card < kCards; ++card) {
      surface.PaintPicture(picture, 4, 40, 142, 106, 0, 0, 142, 106);
      surface.LineB(4, 40, 146, 146, kBlack);
      for (int y = 0; y < 15; ++y) {
        surface.SetCurrentX(4);
        surface.SetCurrentY(10 * y + 10);
        surface.Print(line);
      }
    }
  };
  const auto alone = [&] {
    for (int card = 0; card < kCards; ++card) {
      PlayOperation(Drawing::Paint{picture, QRectF(4, 40, 142, 106), QRectF(0, 0, 142, 106)}, image);
      PlayOperation(Drawing::Outline{QRect(4, 40, 143, 107), kBlack}, image);
      for (int y = 0; y < 15; ++y) {
        PlayOperation(Drawing::Text{font, kBlack, line, 4, 10 * y + 10, {}}, image);
      }
    }
  };
  std::vector<double> ratios;
  for (int round = 0; round < 9; ++round) ratios.push_back(Milliseconds(with_surface) / Milliseconds(alone));
  return PrintRatio("drawing on a surface unasked / the same pixels alone", Median(ratios), kUnaskedGoal);
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
  const bool unasked_is_free = MeasureUnasked();
  TestDatabase database;
  const double few = Run(database, 100);
  return PrintRatio("peak memory at 500 cards / at 100", Run(database, 500) / few, kGrowthGoal) &&
                 unasked_is_free
             ? 0
             : 1;
}
