#include "base/FileName.h"

namespace orv {

bool IsForbiddenInFileName(QChar c) {
  return c < u' ' || QStringView(u"\\/:*?\"<>|").contains(c);
}

QString AsFileName(QString text) {
  for (QChar& c : text) {
    if (IsForbiddenInFileName(c)) c = u'_';
  }
  return text;
}

}  // namespace orv
