#include "records/DatabaseFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstring>

#include "base/Files.h"
#include "base/RuntimeError.h"

namespace orv {
namespace {

// Offsets in the header of a database file; numbers are big-endian.
constexpr qsizetype kHeaderSize = 100;
constexpr qsizetype kPageSizeAt = 16;
constexpr qsizetype kWriteVersionAt = 18;  // and that for reading behind it
constexpr char kNewestVersion = 2;
constexpr qsizetype kChangeCounterAt = 24;
constexpr qsizetype kPageCountAt = 28;
constexpr qsizetype kCountedAtChange = 92;
// What SQLite puts behind the file's name for that of a journal.
constexpr std::array<const char*, 2> kJournals{"-journal", "-wal"};

constexpr char kMagic[16] = "SQLite format 3";

[[noreturn]] void Refuse(const QString& cause) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Database error: %1").arg(cause));
}

QByteArray ReadHeader(int descriptor) {
  QByteArray header(kHeaderSize, '\0');
  const ssize_t size = ::pread(descriptor, header.data(), static_cast<size_t>(header.size()), 0);
  if (size < 0) throw RuntimeError(kErrPathFileAccess);
  header.truncate(size);
  return header;
}

std::uint32_t Number(const QByteArray& header, qsizetype at) {
  return qFromBigEndian<std::uint32_t>(header.constData() + at);
}

std::int64_t PageSize(const QByteArray& header) {
  const std::int64_t size = qFromBigEndian<std::uint16_t>(header.constData() + kPageSizeAt);
  return size == 1 ? 65536 : size;
}

void CheckMagic(const QByteArray& header) {
  if (header.isEmpty()) Refuse(QStringLiteral("the file is empty"));
  if (header.size() < kHeaderSize || std::memcmp(header.constData(), kMagic, sizeof kMagic) != 0) {
    Refuse(QStringLiteral("the file is not a database"));
  }
  if (header[kWriteVersionAt] > kNewestVersion || header[kWriteVersionAt + 1] > kNewestVersion)
    Refuse(QStringLiteral("the file was made by a newer version and can not be read by this one"));
}

}  // namespace

bool HasJournal(const QString& path) {
  return std::ranges::any_of(
      kJournals, [&](const char* end) { return QFileInfo(path + QLatin1String(end)).size() > 0; });
}

void KeepJournalOf(const QString& path, const QString& new_path) {
  for (const char* end : kJournals) {
    const QString journal = path + QLatin1String(end);
    if (FileExists(journal)) RenameFile(journal, new_path + QLatin1String(end));
  }
}

void RemoveJournalOf(const QString& path) {
  for (const char* end : kJournals) {
    const QString journal = path + QLatin1String(end);
    if (FileExists(journal)) RemoveFile(journal);
  }
}

void CheckMagic(int descriptor) {
  CheckMagic(ReadHeader(descriptor));
}

void CheckWhole(int descriptor) {
  const QByteArray header = ReadHeader(descriptor);
  CheckMagic(header);
  // Other programs may leave a page count behind that is out of date, and say so.
  if (Number(header, kChangeCounterAt) != Number(header, kCountedAtChange)) return;
  struct stat file{};
  if (::fstat(descriptor, &file) != 0) throw RuntimeError(kErrPathFileAccess);
  if (file.st_size < PageSize(header) * Number(header, kPageCountAt))
    Refuse(QStringLiteral("the file is cut short"));
}

}  // namespace orv
