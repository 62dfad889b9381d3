#include "records/inner/Guards.h"

#include <utility>

#include "records/inner/LockWait.h"

namespace orv {
namespace {

using Clock = std::chrono::steady_clock;

constexpr sqlite3_int64 kMaxMemory = sqlite3_int64{2} << 30;
constexpr int kStepsBetweenLooks = 100'000;

// Far above what the program's own statements and a file of its own need.
constexpr std::pair<int, int>
    kLimits[] = {{SQLITE_LIMIT_LENGTH, 600'000'000},  // of a row, which may hold three pictures
                 {SQLITE_LIMIT_SQL_LENGTH, 1'000'000}, {SQLITE_LIMIT_EXPR_DEPTH, 200},
                 {SQLITE_LIMIT_COMPOUND_SELECT, 50},   {SQLITE_LIMIT_VDBE_OP, 50'000},
                 {SQLITE_LIMIT_ATTACHED, 1},  // compaction writes to an attached file
                 {SQLITE_LIMIT_TRIGGER_DEPTH, 8}};

Clock::time_point deadline = Clock::time_point::max();
LockWait* current_wait = nullptr;

int IsOver(void*) {
  return Clock::now() > deadline ? 1 : 0;
}

int OnBusy(void*, int) {
  const std::chrono::milliseconds slept =
      current_wait != nullptr ? current_wait->Sleep() : std::chrono::milliseconds(0);
  if (deadline != Clock::time_point::max()) deadline += slept;
  return slept.count() > 0 ? 1 : 0;
}

}  // namespace

void Guard(sqlite3* database) {
  sqlite3_hard_heap_limit64(kMaxMemory);
  for (const auto& [limit, value] : kLimits) sqlite3_limit(database, limit, value);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  // A misspelt column must be an error and not a text.
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_progress_handler(database, kStepsBetweenLooks, IsOver, nullptr);
  sqlite3_busy_handler(database, OnBusy, nullptr);
}

ReadDeadline::ReadDeadline(Clock::time_point begun) : former_(std::exchange(deadline, begun + read_limit)) {}

ReadDeadline::~ReadDeadline() {
  deadline = former_;
}

int AgainstLocks(const std::function<int()>& attempt) {
  LockWait wait;
  for (;;) {
    LockWait* const former = std::exchange(current_wait, &wait);
    const int code = attempt();
    current_wait = former;
    if ((code & 0xFF) != SQLITE_BUSY || !wait.GoesOn()) return code;
  }
}

}  // namespace orv
