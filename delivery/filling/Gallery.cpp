#include "filling/Gallery.h"

#include <atomic>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

#include "artwork/Draw.h"
#include "artwork/Encode.h"

namespace orv::delivery {
namespace {

QByteArray Encoded(const QImage& image) {
  constexpr int kTiny = 32;
  return image.width() < kTiny ? artwork::ToBmp(image) : artwork::ToJpg(image);
}

}  // namespace

Gallery::Gallery(const QString& script_folder) {
  const artwork::Script script = artwork::Script::Load(script_folder);
  const QStringList names = script.Pictures();
  std::vector<QByteArray> drawn(static_cast<size_t>(names.size()));
  std::atomic<qsizetype> next = 0;
  const auto work = [&] {
    for (qsizetype i = next++; i < names.size(); i = next++) drawn[i] = Encoded(Draw(script, names[i]));
  };
  std::vector<std::future<void>> workers;
  for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i) {
    workers.push_back(std::async(std::launch::async, work));
  }
  for (auto& worker : workers) worker.get();
  for (qsizetype i = 0; i < names.size(); ++i) files_[names[i]] = drawn[i];
}

QByteArray Gallery::Bytes(const QString& picture) const {
  if (!files_.contains(picture)) throw std::runtime_error(("no picture " + picture).toStdString());
  return files_[picture];
}

}  // namespace orv::delivery
