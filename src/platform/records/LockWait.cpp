#include "records/inner/LockWait.h"

#include <thread>

#include "records/LockWaiting.h"

namespace orv {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kMoment{10};
constexpr milliseconds kUnseen{150};  // ends before anybody sees it

}  // namespace

LockWait::~LockWait() {
  Show(false);
}

void LockWait::Show(bool waiting) {
  if (shown_ == waiting) return;
  shown_ = waiting;
  WaitingForLock(waiting);
}

milliseconds LockWait::Sleep() {
  if (waited_ >= patience) return {};
  if (waited_ >= kUnseen) Show(true);
  std::this_thread::sleep_for(kMoment);
  waited_ += kMoment;
  return kMoment;
}

bool LockWait::GoesOn() {
  Show(false);
  waited_ = {};
  // A copy, since what is shown meanwhile may replace it.
  const auto ask = GoOnWaiting;
  return ask && ask();
}

bool WaitForLock(const std::function<bool()>& attempt) {
  LockWait wait;
  while (!attempt()) {
    if (wait.Sleep().count() == 0 && !wait.GoesOn()) return false;
  }
  return true;
}

}  // namespace orv
