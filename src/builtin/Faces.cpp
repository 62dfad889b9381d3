#include "builtin/Faces.h"

#include <QDir>

// A static library's resources are not registered by themselves, and the macro wants no namespace.
static void RegisterFaces() {
  Q_INIT_RESOURCE(faces);
}

namespace orv::builtin {

QStringList FaceFiles() {
  RegisterFaces();
  QStringList files = QDir(QStringLiteral(":/faces")).entryList(QDir::Files, QDir::Name);
  for (QString& file : files) file.prepend(QStringLiteral(":/faces/"));
  return files;
}

}  // namespace orv::builtin
