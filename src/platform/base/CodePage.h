#pragma once

#include <QByteArray>
#include <QString>

namespace orv {

// Text in the single-byte code page Windows-1252. A character that the page lacks becomes "?", one "?"
// for a character outside the basic plane.
QByteArray ToWindows1252(QStringView text);

}  // namespace orv
