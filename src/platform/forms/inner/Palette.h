#pragma once

#include <QColor>

#include "forms/Types.h"

namespace orv {

inline QColor ToQColor(Colour colour) {
  return QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}
inline Colour FromQColor(const QColor& colour) {
  return Rgb(colour.red(), colour.green(), colour.blue());
}

}  // namespace orv
