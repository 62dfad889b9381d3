#pragma once

#include <QByteArray>

namespace orv {

// The bytes of a JPG file of some pixels with light, shade and grain in all places, of about the size that a
// photo of the quality (0 to 100) has.
QByteArray Photo(int width, int height, int quality);

}  // namespace orv
