// A step of the wheel on a photo of 12 megapixels that fills its frame: the first one, which reads and
// decodes the file, against the decoding alone, and the later ones with their durable write, there and where
// the picture is larger; and the memory before the photo, with it and after it; see bench/README.md.
#include <QFile>
#include <cmath>
#include <cstdio>
#include <vector>

#include "editors/frmCard2nd.h"
#include "forms/Application.h"
#include "measuring/Measuring.h"
#include "measuring/Photo.h"
#include "state/Product.h"
#include "support/Gestures.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

constexpr int kRounds = 5;
constexpr double kMostOfDecoding = 2;
constexpr double kMostMilliseconds = 25;
constexpr double kMostMegabytes = 32;  // half of it is what the database may keep of its file

// Megabytes of the process that lie in memory.
double Resident() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  const QByteArray text = status.readAll();
  return text.mid(text.indexOf("VmRSS:") + 6).trimmed().split(' ').first().toDouble() / 1024;
}

void Turn(int steps) {
  TurnWheel(frmCard2nd->viewCard, 60, 80, steps);
}

// Steps about a scale of the photo, which fills its frame at `fill`; the median in milliseconds.
double StepsAt(double scale, double fill) {
  const int steps = static_cast<int>(std::lround(8 * std::log2(scale / fill)));
  Turn(steps);
  std::vector<double> times;
  for (const int step : {-1, 1, -1, 1, -1, 1}) times.push_back(Milliseconds([&] { Turn(step); }));
  std::printf("a step at a scale of %.1f     %7.1f ms, %.1f MB in memory\n", scale, Median(times),
              Resident());
  Turn(-steps);
  return Median(times);
}

int Main() {
  TestDatabase database;
  const int set = database.AddSet(QStringLiteral("Set"), 2);
  for (const int nr : {1, 2}) database.AddCard(set, nr, QStringLiteral("Card"));
  database.SelectSet(set);
  const QByteArray photo = Photo(4000, 3000, 90);
  const QString file = database.WriteFile(QStringLiteral("photo.jpg"), photo);
  frmCard2nd->Show();
  const double before = Resident();
  DropFiles(frmCard2nd->viewCard, 60, 80, {file});
  std::vector<double> decoding, first, later;
  for (int round = 0; round < kRounds; ++round) {
    decoding.push_back(Milliseconds([&] { (void)LoadPicture(photo); }));
    // The card that is left gives its photo back.
    frmCard2nd->cmdCardNav_Click(3);
    frmCard2nd->cmdCardNav_Click(0);
    first.push_back(Milliseconds([&] { Turn(1); }));
    for (const int steps : {1, 1, 1, 1, -1, -1, -1, -1, -1})
      later.push_back(Milliseconds([&] { Turn(steps); }));
  }
  std::printf("%lld bytes, medians of %d\n", static_cast<long long>(photo.size()), kRounds);
  std::printf("%-28s %7.1f ms\n%-28s %7.1f ms\n%-28s %7.1f ms, at most %.1f ms\n", "decoding",
              Median(decoding), "first step", Median(first), "later step", Median(later),
              Percentile(later, 1));
  double zoomed = 0;
  for (const double scale : {0.1, 0.2, 0.3, 0.6, 0.9}) {
    const double time = StepsAt(scale, 105.0 / 3000);
    if (scale < 0.25) zoomed = time;
  }
  const double with = Resident();
  frmCard2nd->cmdCardNav_Click(3);
  const double after = Resident();
  std::printf("%-28s %7.1f MB, with the photo %.1f MB, after it %.1f MB\n", "memory before", before, with,
              after);
  const bool ok = PrintRatio("first step to decoding", Median(first) / Median(decoding), kMostOfDecoding) &
                  PrintRatio("later step to 25 ms", Median(later) / kMostMilliseconds, 1) &
                  PrintRatio("a step at a scale of 0.2 to 25 ms", zoomed / kMostMilliseconds, 1) &
                  PrintRatio("memory that stays, to 32 MB", (after - before) / kMostMegabytes, 1);
  return ok ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  return application.RunOnce(orv::Main);
}
