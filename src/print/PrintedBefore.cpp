#include "print/inner/PrintedBefore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "forms/Playing.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

QString Folder() {
  return JoinPath(UsersFolder(), QStringLiteral("printed"));
}

// A file of its own for each set of each database.
QString PathOfSet() {
  const QString set = QStringLiteral("%1\n%2")
                          .arg(QFileInfo(modData::OpenedPath).canonicalFilePath())
                          .arg(modData::CurrentSetID);
  const QByteArray digest = QCryptographicHash::hash(set.toUtf8(), QCryptographicHash::Sha256);
  return JoinPath(Folder(), QLatin1String(digest.toHex().left(32)) + QStringLiteral(".txt"));
}

}  // namespace

PrintedBefore::PrintedBefore() : path_(PathOfSet()) {
  try {
    for (const QByteArray& line : ReadWhole(path_).split('\n')) {
      const qsizetype gap = line.lastIndexOf(' ');
      if (gap > 0) looks_[QString::fromUtf8(line.left(gap))] = line.mid(gap + 1);
    }
  } catch (const RuntimeError&) {
    // Nothing is printed yet.
  }
}

bool PrintedBefore::Knows(const PrintedCard& card) const {
  return card.failure.isEmpty() && looks_.value(card.key) == LooksOf(card);
}

void PrintedBefore::Take(const PrintedCard& card) {
  if (card.failure.isEmpty()) looks_[card.key] = LooksOf(card);
}

void PrintedBefore::Keep() const {
  QByteArray text;
  for (auto look = looks_.begin(); look != looks_.end(); ++look) {
    text += look.key().toUtf8() + ' ' + look.value() + '\n';
  }
  QDir().mkpath(Folder());
  ReplaceFile(path_, text);
}

QByteArray PrintedBefore::LooksOf(const PrintedCard& card) {
  return DigestOf(*card.sheet.HowDrawn());
}

}  // namespace orv
