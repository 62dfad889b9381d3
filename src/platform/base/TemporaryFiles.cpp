#include "base/inner/TemporaryFiles.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <ctime>

namespace orv {
namespace {

constexpr std::time_t kDay = 24 * 60 * 60;

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Where numbers of processes have one meaning: this boot of this machine, and this container.
const QString& Place() {
  static const QString place = [] {
    const QByteArray boot = Contents(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    const QByteArray processes = QFile::symLinkTarget(QStringLiteral("/proc/self/ns/pid")).toUtf8();
    const QByteArray hash = QCryptographicHash::hash(boot + processes, QCryptographicHash::Sha1);
    return QString::fromLatin1(hash.left(4).toHex());
  }();
  return place;
}

// Number and start of a process; its number alone may be given out again. Empty if it lives no more.
QString Process(const QString& number) {
  const QByteArray status = Contents(QStringLiteral("/proc/%1/stat").arg(number));
  // Its second field is a name in brackets, which may hold blanks and brackets itself.
  const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
  constexpr int kState = 0, kStart = 19;
  if (fields.size() <= kStart || fields[kState] == "Z") return {};
  return number + u'-' + QString::fromLatin1(fields[kStart]);
}

bool IsAbandoned(const QString& name, const struct stat& file) {
  static const QRegularExpression kOurs(QStringLiteral("^\\.orv(\\w+)-((\\d+)-\\d+)-\\d+\\.tmp$"));
  const QRegularExpressionMatch match = kOurs.match(name);
  if (match.hasMatch() && match.captured(1) == Place())
    return match.captured(2) != Process(match.captured(3));
  return file.st_mtime < std::time(nullptr) - kDay;
}

}  // namespace

QString TemporaryName(const QString& folder) {
  const QString process = Process(QString::number(::getpid()));
  for (int n = 0;; ++n) {
    const QString name = QStringLiteral(".orv%1-%2-%3.tmp").arg(Place(), process, QString::number(n));
    const QString path = QDir(folder).filePath(name);
    if (!QFile::exists(path)) return path;
  }
}

void RemoveAbandonedFiles(const QString& folder) {
  static QSet<QString> seen;
  const QString path = QDir(folder).absolutePath();
  if (seen.contains(path)) return;
  seen.insert(path);
  static const QRegularExpression kPattern(QStringLiteral("^\\.orv[0-9a-f]+(-\\d+){1,3}\\.tmp$"));
  for (const QString& name :
       QDir(folder).entryList({QStringLiteral(".orv*.tmp")}, QDir::Files | QDir::Hidden)) {
    const QByteArray file = QFile::encodeName(QDir(folder).filePath(name));
    struct stat status{};
    const bool own = kPattern.match(name).hasMatch() && ::lstat(file.constData(), &status) == 0 &&
                     S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
    if (own && IsAbandoned(name, status)) ::unlink(file.constData());
  }
}

}  // namespace orv
