#include "pictures/PicturesAhead.h"

#include <QThreadPool>
#include <algorithm>

#include "base/RuntimeError.h"

namespace orv {
namespace {

PicturesAhead* living = nullptr;

// A larger file or picture is decoded when it is asked for: the large ones of two records would take too much
// memory together.
constexpr qsizetype kMostBytes = 2'000'000;
constexpr std::int64_t kMostPixels = 2'000'000;
constexpr std::size_t kKept = 4;
constexpr int kMostKeptPixels = 1'000'000;

// Copies of one array are told by their address.
bool Same(const QByteArray& a, const QByteArray& b) {
  return a.size() == b.size() && (a.constData() == b.constData() || a == b);
}

}  // namespace

PicturesAhead::PicturesAhead() : thread_(std::make_unique<QThreadPool>()) {
  thread_->setMaxThreadCount(1);
  living = this;
}

PicturesAhead::~PicturesAhead() {
  living = nullptr;
  thread_->clear();
  thread_->waitForDone();
}

PicturesAhead::Entry PicturesAhead::Start(const QByteArray& file) {
  auto task =
      std::make_shared<std::packaged_task<std::optional<Picture>()>>([file]() -> std::optional<Picture> {
        try {
          return LoadPicture(file, kMostPixels);
        } catch (const RuntimeError&) {
          return {};  // told where the picture is asked for
        }
      });
  const std::shared_future<std::optional<Picture>> picture = task->get_future().share();
  thread_->start([task] { (*task)(); });
  return {file, picture};
}

void PicturesAhead::Advance(const std::vector<QByteArray>& files) {
  current_ = std::move(next_);
  next_.clear();
  for (const QByteArray& file : files) {
    if (file.isEmpty() || file.size() > kMostBytes) continue;
    const auto known =
        std::ranges::find_if(current_, [&](const Entry& entry) { return Same(entry.file, file); });
    next_.push_back(known != current_.end() ? *known : Start(file));
  }
}

Picture PicturesAhead::Take(const QByteArray& file, std::int64_t most_pixels) {
  for (const Entries* entries : {&current_, &next_, &kept_}) {
    for (const Entry& entry : *entries) {
      if (!Same(entry.file, file)) continue;
      if (const std::optional<Picture>& picture = entry.picture.get()) return *picture;
    }
  }
  std::promise<std::optional<Picture>> promise;
  const Picture picture = LoadPicture(file, most_pixels);
  promise.set_value(picture);
  if (picture.Width() * picture.Height() <= kMostKeptPixels) Keep({file, promise.get_future().share()});
  return picture;
}

void PicturesAhead::Keep(const Entry& entry) {
  if (kept_.size() == kKept) kept_.erase(kept_.begin());
  kept_.push_back(entry);
}

Picture PicturesAhead::Load(const QByteArray& file, std::int64_t most_pixels) {
  return living != nullptr ? living->Take(file, most_pixels) : LoadPicture(file, most_pixels);
}

}  // namespace orv
