#include "filling/Gallery.h"

#include <QCryptographicHash>
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

Gallery::Gallery(const QString& script_folder, const QSet<QString>& enlarged) {
  const artwork::Script script = artwork::Script::Load(script_folder);
  struct Task {
    QString name;
    int scale;
    QByteArray drawn;
  };
  std::vector<Task> tasks;
  for (const int scale : {kEnlargement, 1}) {
    for (const QString& name : script.Pictures())
      if (scale == 1 || enlarged.contains(name)) tasks.push_back({name, scale, {}});
  }
  std::atomic<size_t> next = 0;
  const auto work = [&] {
    for (size_t i = next++; i < tasks.size(); i = next++)
      tasks[i].drawn = Encoded(Draw(script, tasks[i].name, tasks[i].scale));
  };
  std::vector<std::future<void>> workers;
  for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i) {
    workers.push_back(std::async(std::launch::async, work));
  }
  for (auto& worker : workers) worker.get();
  for (const Task& task : tasks) (task.scale == 1 ? files_ : enlarged_)[task.name] = task.drawn;
}

QByteArray Gallery::Digests() const {
  QByteArray lines;
  for (auto file = files_.begin(); file != files_.end(); ++file) {
    const QByteArray digest = QCryptographicHash::hash(file.value(), QCryptographicHash::Sha256);
    lines += digest.toHex() + ' ' + file.key().toUtf8() + '\n';
  }
  return lines;
}

QByteArray Gallery::Find(const Files& files, const QString& picture) {
  if (!files.contains(picture)) throw std::runtime_error(("no picture " + picture).toStdString());
  return files[picture];
}

}  // namespace orv::delivery
