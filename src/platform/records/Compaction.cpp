#include "records/Compaction.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <cerrno>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "records/Connection.h"
#include "records/FileLock.h"
#include "records/inner/Reader.h"
#include "records/inner/Sqlite.h"

namespace orv {
namespace {

constexpr qsizetype kBlock = 1 << 20;

class NewFile {
 public:
  NewFile(const QString& path, mode_t mode)
      : descriptor_(
            ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode)) {
    if (descriptor_ < 0) ThrowFileError(errno);
  }
  ~NewFile() { ::close(descriptor_); }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void Write(const char* bytes, ssize_t size) {
    while (size > 0) {
      const ssize_t written = ::write(descriptor_, bytes, static_cast<size_t>(size));
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) ThrowFileError(errno);
      bytes += written;
      size -= written;
    }
  }

 private:
  int descriptor_;
};

// Keeps other programs from changing a database while it lives; a file that is none is left alone.
class ReadLock {
 public:
  explicit ReadLock(const QString& path) {
    try {
      connection_ = Connection::Open(path);
      connection_.Execute(QStringLiteral("BEGIN"));
      connection_.Execute(QStringLiteral("SELECT COUNT(*) FROM sqlite_schema"));
    } catch (const RuntimeError& error) {
      if (error.Number() != kErrDatabase) throw;
    }
  }

 private:
  Connection connection_;
};

// What two files with the same content agree in: the schema and the number of rows in each table.
QStringList ContentOf(const Reader& file) {
  QStringList content = file.FirstColumn(
      QStringLiteral("SELECT type || ' ' || name || ' ' || sql FROM sqlite_schema ORDER BY 1"));
  // What another program keeps behind a module of its own can't be counted.
  for (const QString& table : file.FirstColumn(QStringLiteral(
           "SELECT name FROM sqlite_schema WHERE type = 'table' AND rootpage > 0 ORDER BY 1"))) {
    content +=
        table + u' ' + file.FirstColumn(QStringLiteral("SELECT COUNT(*) FROM ") + QuotedName(table)).value(0);
  }
  return content;
}

[[noreturn]] void Refuse(const QString& why) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Database error: %1").arg(why));
}

// Other damage is what compacting may repair, but a page that is reached twice may be reached without end.
void CheckEnds(const Reader& file) {
  const QStringList faults = file.FaultsOfPages().filter(QStringLiteral("2nd reference to page"));
  if (!faults.isEmpty()) Refuse(faults.first());
}

void CheckCompacted(const QString& source, const QString& target) {
  const Reader compacted(target);
  const QStringList faults = compacted.Faults();
  if (!faults.isEmpty()) Refuse(faults.first());
  if (ContentOf(compacted) != ContentOf(Reader(source))) Refuse(QStringLiteral("the compacted file differs"));
}

}  // namespace

void CopyDatabase(const QString& source, const QString& target) {
  const ReadLock unchanged(source);
  const std::shared_ptr<LockedFile> file = LockShared(source);
  const int descriptor = DescriptorOf(*file);
  struct stat status{};
  if (::fstat(descriptor, &status) != 0) ThrowFileError(errno);
  NewFile copy(target, status.st_mode & 0777);
  QByteArray block(kBlock, Qt::Uninitialized);
  for (off_t at = 0;;) {
    const ssize_t size = ::pread(descriptor, block.data(), static_cast<size_t>(block.size()), at);
    if (size < 0) ThrowFileError(errno);
    if (size == 0) break;
    copy.Write(block.constData(), size);
    at += size;
  }
  Synchronise(target);
  Synchronise(QFileInfo(target).absolutePath());
}

void CompactDatabase(const QString& source, const QString& target) {
  if (FileExists(target)) throw RuntimeError(kErrPathFileAccess);
  const Connection connection = Connection::Open(source);
  CheckEnds(Reader(source));
  connection.RemoveIdleJournal();
  QString quoted = target;
  connection.Execute(QStringLiteral("VACUUM INTO '%1'").arg(quoted.replace(u'\'', QStringLiteral("''"))));
  QFile::setPermissions(target, QFile::permissions(source));
  CheckCompacted(source, target);
  Synchronise(target);
  Synchronise(QFileInfo(target).absolutePath());
}

}  // namespace orv
