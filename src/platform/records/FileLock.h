#pragma once

#include <QString>
#include <memory>

namespace orv {

// Advisory locks on a database file among the instances of this program. Each instance holds a shared
// one while it has the file open; compaction needs the file alone. What a process has locked its own
// later connections join.

// An open database file under a lock. It stays open until the last owner in the process is gone: closing any
// descriptor of a file drops all record locks that the process has on it, SQLite's among them.
class LockedFile;

// RuntimeError 53 for no file, 75 for none that can be read, 70 for one that another program holds alone for
// long.
std::shared_ptr<LockedFile> LockShared(const QString& path);
int DescriptorOf(const LockedFile& file);

// Whether this process has the file open, under whatever name; false without such a file.
bool IsOpenHere(const QString& path);

// Holds a file alone for its lifetime; connections that this process opens meanwhile are let in.
class ExclusiveFileLock {
 public:
  // RuntimeError 53 for no file, 75 where it can't be read, 70 if this process or another has it open.
  explicit ExclusiveFileLock(const QString& path);

 private:
  std::shared_ptr<LockedFile> file_;
};

}  // namespace orv
