#include "records/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <map>
#include <mutex>
#include <utility>

#include "base/RuntimeError.h"
#include "records/inner/LockWait.h"

namespace orv {

class LockedFile {
 public:
  explicit LockedFile(int descriptor) : descriptor_(descriptor) {}
  ~LockedFile() { ::close(descriptor_); }
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;
  int Descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

namespace {

using FileIdentity = std::pair<dev_t, ino_t>;

// What this process holds, for one thread at a time.
std::recursive_mutex held_by_one;  // what is shown during a wait may open a file
std::map<FileIdentity, std::weak_ptr<LockedFile>>& Held() {
  static std::map<FileIdentity, std::weak_ptr<LockedFile>> held;
  return held;
}

FileIdentity Identify(const QByteArray& name) {
  struct stat file{};
  if (::stat(name.constData(), &file) != 0) {
    throw RuntimeError(errno == ENOENT || errno == ENOTDIR ? kErrFileNotFound : kErrPathFileAccess);
  }
  if (!S_ISREG(file.st_mode)) throw RuntimeError(kErrPathFileAccess);
  return {file.st_dev, file.st_ino};
}

std::shared_ptr<LockedFile> Lock(const QByteArray& name, const FileIdentity& identity, int operation,
                                 const RuntimeError& refusal) {
  const int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) throw RuntimeError(kErrPathFileAccess);
  auto file = std::make_shared<LockedFile>(descriptor);
  // A file system that knows no locks is no reason to refuse the file.
  const auto attempt = [&] { return ::flock(descriptor, operation | LOCK_NB) == 0 || errno != EWOULDBLOCK; };
  const bool waits = operation == LOCK_SH;
  if (waits ? !WaitForLock(attempt) : !attempt()) throw refusal;
  Held()[identity] = file;
  return file;
}

}  // namespace

int DescriptorOf(const LockedFile& file) {
  return file.Descriptor();
}

std::shared_ptr<LockedFile> LockShared(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  const FileIdentity identity = Identify(name);
  const std::lock_guard one(held_by_one);
  if (auto held = Held()[identity].lock()) return held;
  return Lock(name, identity, LOCK_SH,
              RuntimeError(kErrPermissionDenied,
                           QStringLiteral("Permission denied: another program is compacting the database")));
}

bool IsOpenHere(const QString& path) {
  if (!QFileInfo(path).isFile()) return false;
  const FileIdentity identity = Identify(QFile::encodeName(path));
  const std::lock_guard one(held_by_one);
  return !Held()[identity].expired();
}

ExclusiveFileLock::ExclusiveFileLock(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  const FileIdentity identity = Identify(name);
  const RuntimeError refusal(kErrPermissionDenied,
                             QStringLiteral("Permission denied: another program is using the database"));
  const std::lock_guard one(held_by_one);
  if (!Held()[identity].expired()) throw refusal;
  file_ = Lock(name, identity, LOCK_EX, refusal);
}

}  // namespace orv
