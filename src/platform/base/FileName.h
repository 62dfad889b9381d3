#pragma once

#include <QString>

namespace orv {

// Whether no file's name may have it, on any system on which its folder may be opened.
bool IsForbiddenInFileName(QChar c);
// A text as a file's name: an underline in place of each of these.
QString AsFileName(QString text);

}  // namespace orv
