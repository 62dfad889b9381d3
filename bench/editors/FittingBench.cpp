// A step of the wheel on a photo of 12 megapixels that fills its frame: the first one, which reads and
// decodes the file, against the decoding alone, and the later ones with their durable write; see
// bench/README.md.
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

int Main() {
  TestDatabase database;
  const int set = database.AddSet(QStringLiteral("Set"), 2);
  for (const int nr : {1, 2}) database.AddCard(set, nr, QStringLiteral("Card"));
  database.SelectSet(set);
  const QByteArray photo = Photo(4000, 3000, 90);
  const QString file = database.WriteFile(QStringLiteral("photo.jpg"), photo);
  frmCard2nd->Show();
  DropFiles(frmCard2nd->viewCard, 60, 80, {file});
  std::vector<double> decoding, first, later;
  for (int round = 0; round < kRounds; ++round) {
    decoding.push_back(Milliseconds([&] { (void)LoadPicture(photo); }));
    // The card that is left gives its photo back.
    frmCard2nd->cmdCardNav_Click(3);
    frmCard2nd->cmdCardNav_Click(0);
    const auto step = [](int steps) { TurnWheel(frmCard2nd->viewCard, 60, 80, steps); };
    first.push_back(Milliseconds([&] { step(1); }));
    for (const int steps : {1, 1, 1, 1, -1, -1, -1, -1, -1})
      later.push_back(Milliseconds([&] { step(steps); }));
  }
  std::printf("%lld bytes, medians of %d\n", static_cast<long long>(photo.size()), kRounds);
  std::printf("%-28s %7.1f ms\n%-28s %7.1f ms\n%-28s %7.1f ms, at most %.1f ms\n", "decoding",
              Median(decoding), "first step", Median(first), "later step", Median(later),
              Percentile(later, 1));
  const bool ok = PrintRatio("first step to decoding", Median(first) / Median(decoding), kMostOfDecoding) &
                  PrintRatio("later step to 25 ms", Median(later) / kMostMilliseconds, 1);
  return ok ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  return application.RunOnce(orv::Main);
}
