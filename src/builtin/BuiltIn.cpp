#include "builtin/BuiltIn.h"

#include <QFile>

// A static library's resources are not registered by themselves, and the macro wants no namespace.
static void RegisterBitmaps() {
  Q_INIT_RESOURCE(builtin);
}

namespace orv::builtin {
namespace {

QByteArray Bitmap(const QString& name) {
  RegisterBitmaps();
  QFile file(":/builtin/" + name + ".bmp");
  file.open(QIODevice::ReadOnly);
  return file.readAll();
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

}  // namespace orv::builtin
