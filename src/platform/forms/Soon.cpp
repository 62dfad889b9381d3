#include "forms/Soon.h"

#include "forms/Application.h"

namespace orv {
namespace {

constexpr int kSoon = 30;    // milliseconds
constexpr int kLater = 200;  // while a dialog is open

}  // namespace

Soon::Soon(std::function<void()> work) : work_(std::move(work)) {
  timer_.setSingleShot(true);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Work(); });
}

void Soon::Ask() {
  if (!timer_.isActive()) timer_.start(kSoon);
}

void Soon::Work() {
  if (Application::IsModal()) return timer_.start(kLater);
  work_();
}

}  // namespace orv
