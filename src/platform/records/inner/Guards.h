#pragma once

#include <sqlite3.h>

#include <chrono>
#include <functional>

namespace orv {

// A database file may come from anybody: what it can make a statement do has bounds.

// How long a statement that only reads may take, waiting for locks apart.
inline std::chrono::milliseconds read_limit = std::chrono::seconds(30);

// Sets bounds on what statements of an open database may hold and do, and lets them wait for locks.
void Guard(sqlite3* database);

// While one lives, a statement that runs ends with SQLITE_INTERRUPT once its time is over.
class ReadDeadline {
 public:
  explicit ReadDeadline(std::chrono::steady_clock::time_point begun);
  ~ReadDeadline();
  ReadDeadline(const ReadDeadline&) = delete;
  ReadDeadline& operator=(const ReadDeadline&) = delete;

 private:
  std::chrono::steady_clock::time_point former_;
};

// The code of `attempt`, which waits while another program holds a lock; SQLITE_BUSY if that lasts and the
// user doesn't go on waiting (see LockWaiting.h).
int AgainstLocks(const std::function<int()>& attempt);

}  // namespace orv
