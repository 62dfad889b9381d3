#include "forms/inner/CarriedFaces.h"

#include <fontconfig/fontconfig.h>

#include <QFontDatabase>

#include "base/RuntimeError.h"

namespace orv {
namespace {

// What a user or a system wishes for all text, such as no smoothing, is not for these families. The rules
// come last and so win. FreeType's own switches would have to be read before it starts.
void DrawAsTheyAre(const QString& family) {
  QString rules = QStringLiteral("<fontconfig>");
  for (const char* const target : {"pattern", "font"}) {
    rules += QStringLiteral(
                 "<match target=\"%1\"><test name=\"family\"><string>%2</string></test>"
                 "<edit name=\"antialias\" mode=\"assign\"><bool>true</bool></edit>"
                 "<edit name=\"hinting\" mode=\"assign\"><bool>true</bool></edit>"
                 "<edit name=\"autohint\" mode=\"assign\"><bool>false</bool></edit>"
                 "<edit name=\"embolden\" mode=\"assign\"><bool>false</bool></edit>"
                 "<edit name=\"rgba\" mode=\"assign\"><const>none</const></edit></match>")
                 .arg(QLatin1String(target), family);
  }
  rules += QStringLiteral("</fontconfig>");
  const QByteArray utf8 = rules.toUtf8();
  FcConfigParseAndLoadFromMemory(FcConfigGetCurrent(), reinterpret_cast<const FcChar8*>(utf8.constData()),
                                 FcTrue);
}

}  // namespace

void CarryFaces(const QStringList& files) {
  QStringList families;
  for (const QString& file : files) {
    const int face = QFontDatabase::addApplicationFont(file);
    if (face < 0) throw RuntimeError(kErrInternal, QStringLiteral("The face %1 can't be used.").arg(file));
    families += QFontDatabase::applicationFontFamilies(face);
  }
  families.removeDuplicates();
  for (const QString& family : families) DrawAsTheyAre(family);
}

}  // namespace orv
