#include "forms/inner/Icons.h"

#include <QFile>

namespace orv {

QIcon NamedIcon(const QString& name) {
  const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
  return !name.isEmpty() && QFile::exists(path) ? QIcon(path) : QIcon();
}

}  // namespace orv
