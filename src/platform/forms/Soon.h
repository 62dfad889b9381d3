#pragma once

#include <QTimer>
#include <functional>

namespace orv {

// Does a piece of work soon after it was asked for, from the message loop and once for all that was asked
// meanwhile, so that typing never waits for it. Not while a dialog is open.
class Soon {
 public:
  explicit Soon(std::function<void()> work);
  void Ask();

 private:
  void Work();
  QTimer timer_;
  std::function<void()> work_;
};

}  // namespace orv
