#include "base/Shortened.h"

namespace orv {

QString Clipped(const QString& text, qsizetype letters) {
  if (text.size() <= letters) return text;
  const bool halves = text[letters - 1].isHighSurrogate();
  return text.left(halves ? letters - 1 : letters) + QChar(0x2026);
}

QString Shortened(const QString& text, qsizetype letters) {
  // Blanks that are dropped may leave room for more; a text of any length isn't looked through for it.
  return Clipped(Clipped(text, 8 * letters).simplified(), letters);
}

}  // namespace orv
