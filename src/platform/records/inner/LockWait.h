#pragma once

#include <chrono>
#include <functional>

namespace orv {

// How long a wait lasts until the user is asked.
inline std::chrono::milliseconds patience = std::chrono::seconds(5);

// One wait for a lock of another program.
class LockWait {
 public:
  LockWait() = default;
  ~LockWait();
  LockWait(const LockWait&) = delete;
  LockWait& operator=(const LockWait&) = delete;

  // Sleeps for a moment; how long, 0 once the wait has lasted long enough.
  std::chrono::milliseconds Sleep();
  // Whether the user lets it begin anew.
  bool GoesOn();

 private:
  void Show(bool waiting);

  std::chrono::milliseconds waited_{0};
  bool shown_ = false;
};

// Whether `attempt` came to be true, which it does when a lock of another program is gone.
bool WaitForLock(const std::function<bool()>& attempt);

}  // namespace orv
