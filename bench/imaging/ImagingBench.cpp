// The codecs one by one, on a photo and on sheets. Medians; see bench/README.md.
// Usage: imaging_bench [folder of sheets in BMP]
#include <QDir>
#include <cstdio>
#include <vector>

#include "imaging/GifControl.h"
#include "imaging/Picture.h"
#include "imaging/PngFile.h"
#include "measuring/Measuring.h"
#include "measuring/Photo.h"

namespace orv {
namespace {

constexpr int kRounds = 41;
constexpr double kBandGoal = 0.75;

double MedianOf(const std::function<void()>& action) {
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) times.push_back(Milliseconds(action));
  return Median(times);
}

// A picture of which a frame shows the upper or the middle rows.
bool MeasureBands(const char* what, int width, int height) {
  const QByteArray bytes = Photo(width, height, 88);
  const double whole = MedianOf([&] { LoadPicture(bytes); });
  std::printf("%s, %d by %d: whole %.2f ms", what, width, height, whole);
  double last = whole;
  for (const RowBand band : {RowBand{0, 0}, RowBand{0, height / 4}, RowBand{height / 4, 3 * height / 4}}) {
    last = MedianOf([&] { LoadPicture(bytes, band); });
    std::printf(", rows %d to %d %.2f ms", band.first, band.end, last);
  }
  std::printf("\n");
  return PrintRatio("half of the rows / whole", last / whole, kBandGoal);
}

void MeasureWriters(const QString& folder) {
  QDir target(folder);
  target.mkpath(QStringLiteral("written"));
  double png = 0, gif = 0;
  qint64 png_bytes = 0, gif_bytes = 0;
  const QStringList names = target.entryList({QStringLiteral("*.BMP")}, QDir::Files);
  for (const QString& name : names) {
    const QString from = target.filePath(name);
    const QString to = target.filePath(QStringLiteral("written/sheet"));
    const Picture sheet = LoadPicture(from);
    png += MedianOf([&] { SavePng(sheet, to); });
    png_bytes += QFileInfo(to).size();
    gif += MedianOf([&] { GifControl().Convert(from, to, false); });
    gif_bytes += QFileInfo(to).size();
  }
  const auto count = static_cast<double>(names.size());
  std::printf("%lld sheets: PNG %.2f ms, %.0f kB; GIF %.2f ms, %.0f kB\n", names.size(), png / count,
              static_cast<double>(png_bytes) / count / 1000, gif / count,
              static_cast<double>(gif_bytes) / count / 1000);
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  bool ok = orv::MeasureBands("a card's picture", 600, 450);
  ok &= orv::MeasureBands("a camera's photo", 3000, 2000);
  if (argc > 1) orv::MeasureWriters(QString::fromLocal8Bit(argv[1]));
  return ok ? 0 : 1;
}
