#pragma once

#include <QImage>

#include "artwork/Script.h"

namespace orv::artwork {

// A picture of a script, `scale` times as large as it says, 24-bit RGB. std::runtime_error if there is no
// such picture or a line of it fails.
QImage Draw(const Script& script, const QString& picture, int scale = 1);

}  // namespace orv::artwork
