#include "base/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>

#include "base/FileName.h"
#include "base/RuntimeError.h"
#include "base/inner/TemporaryFiles.h"

namespace orv {
namespace {

void CheckName(const QString& name) {
  const bool bad =
      name.isEmpty() || name == u"." || name == u".." || std::ranges::any_of(name, IsForbiddenInFileName);
  if (bad) throw RuntimeError(kErrPathFileAccess, QStringLiteral("Bad file name"));
}

// The rights of a file that may be replaced; nothing where there is none yet.
std::optional<mode_t> CheckTarget(const QString& path) {
  struct stat target{};
  if (::stat(QFile::encodeName(path).constData(), &target) != 0) return {};
  if (!S_ISREG(target.st_mode) || (target.st_mode & S_IWUSR) == 0) throw RuntimeError(kErrPathFileAccess);
  return target.st_mode & 0777;
}

void SetRights(const QString& path, std::optional<mode_t> rights) {
  if (rights && ::chmod(QFile::encodeName(path).constData(), *rights) != 0) ThrowFileError(errno);
}

QString FolderOf(const QString& path) {
  const QString folder = FolderPart(path);
  return folder.isEmpty() ? QStringLiteral(".") : folder;
}

void WriteNew(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  errno = 0;
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) ThrowFileError(errno);
  errno = 0;
  if (file.write(bytes) != bytes.size() || !file.flush()) ThrowFileError(errno);
}

}  // namespace

void ThrowFileError(int error_code) {
  switch (error_code) {
    case ENOENT:
    case ENOTDIR:
      throw RuntimeError(kErrPathNotFound);
    case ENOSPC:
    case EDQUOT:
      throw RuntimeError(kErrDiskFull);
    default:
      throw RuntimeError(kErrPathFileAccess);
  }
}

QString JoinPath(const QString& folder, const QString& name) {
  if (folder.endsWith(QDir::separator())) return folder + name;
  return folder + QDir::separator() + name;
}

QString FolderPart(const QString& path) {
  return path.left(path.lastIndexOf(QDir::separator()) + 1);
}

QString FilePart(const QString& path) {
  return path.mid(path.lastIndexOf(QDir::separator()) + 1);
}

bool FileExists(const QString& path) {
  return QFileInfo::exists(path);
}

bool ClearAttributes(const QString& path) {
  return QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadOwner | QFile::WriteOwner);
}

QByteArray ReadWhole(const QString& path) {
  QFile file(path);
  if (!file.exists())
    throw RuntimeError(QFileInfo(path).dir().exists() ? kErrFileNotFound : kErrPathNotFound);
  if (!file.open(QIODevice::ReadOnly)) throw RuntimeError(kErrPathFileAccess);
  QByteArray bytes = file.readAll();
  if (file.error() != QFile::NoError) throw RuntimeError(kErrPathFileAccess);
  return bytes;
}

void Synchronise(const QString& path) {
  const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
  if (file < 0) ThrowFileError(errno);
  const int result = ::fsync(file);
  const int code = errno;
  ::close(file);
  if (result != 0) ThrowFileError(code);
}

void RemoveFile(const QString& path) {
  if (::unlink(QFile::encodeName(path).constData()) != 0) {
    if (errno == ENOENT) throw RuntimeError(kErrFileNotFound);
    ThrowFileError(errno);
  }
  Synchronise(FolderOf(path));
}

void RenameFile(const QString& path, const QString& new_path) {
  if (!FileExists(path)) throw RuntimeError(kErrFileNotFound);
  if (std::rename(QFile::encodeName(path).constData(), QFile::encodeName(new_path).constData()) != 0) {
    ThrowFileError(errno);
  }
  Synchronise(FolderOf(new_path));
}

void CheckTargetFile(const QString& path) {
  CheckName(FilePart(path));
  CheckTarget(path);
}

void ReplaceFile(const QString& path, const std::function<void(const QString&)>& write) {
  CheckName(FilePart(path));
  const std::optional<mode_t> rights = CheckTarget(path);
  RemoveAbandonedFiles(FolderOf(path));
  const QString temporary = TemporaryName(FolderOf(path));
  try {
    write(temporary);
    SetRights(temporary, rights);
    Synchronise(temporary);
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) != 0) {
      ThrowFileError(errno);
    }
  } catch (...) {
    QFile::remove(temporary);
    throw;
  }
}

void ReplaceFile(const QString& path, const QByteArray& bytes) {
  ReplaceFile(path, [&bytes](const QString& temporary) { WriteNew(temporary, bytes); });
}

bool MakeFileIfMissing(const QString& path, const QByteArray& bytes) {
  if (FileExists(path)) return false;
  CheckTargetFile(path);
  RemoveAbandonedFiles(FolderOf(path));
  const QString temporary = TemporaryName(FolderOf(path));
  try {
    WriteNew(temporary, bytes);
    Synchronise(temporary);
    const bool made = QFile::rename(temporary, path);  // replaces nothing
    if (!made) QFile::remove(temporary);
    if (!FileExists(path)) throw RuntimeError(kErrPathFileAccess);
    Synchronise(FolderOf(path));
    return made;
  } catch (...) {
    QFile::remove(temporary);
    throw;
  }
}

}  // namespace orv
