#include "builtin/BuiltIn.h"

#include <QFile>

// A static library's resources are not registered by themselves, and the macro wants no namespace.
static void RegisterFiles() {
  Q_INIT_RESOURCE(builtin);
}

namespace orv::builtin {
namespace {

QByteArray Content(const QString& name) {
  RegisterFiles();
  QFile file(":/builtin/" + name);
  file.open(QIODevice::ReadOnly);
  return file.readAll();
}

QByteArray Bitmap(const QString& name) {
  return Content(name + ".bmp");
}

}  // namespace

QByteArray CardBack2nd() {
  return Bitmap("CardBack2nd");
}
QByteArray CardBack3rd() {
  return Bitmap("CardBack3rd");
}
QByteArray CardFace3rd() {
  return Bitmap("CardFace3rd");
}
QByteArray CharacterSheet() {
  return Bitmap("CharacterSheet");
}

QByteArray Copyright() {
  return Content("copyright");
}

}  // namespace orv::builtin
