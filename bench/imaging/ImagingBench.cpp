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

double MedianOf(const std::function<void()>& action) {
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) times.push_back(Milliseconds(action));
  return Median(times);
}

void MeasureReader(const char* what, int width, int height) {
  const QByteArray bytes = Photo(width, height, 88);
  std::printf("%s, %d by %d: %.2f ms\n", what, width, height, MedianOf([&] { LoadPicture(bytes); }));
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
  orv::MeasureReader("a card's picture", 600, 450);
  orv::MeasureReader("a camera's photo", 3000, 2000);
  if (argc > 1) orv::MeasureWriters(QString::fromLocal8Bit(argv[1]));
  return 0;
}
