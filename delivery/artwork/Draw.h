#pragma once

#include <QImage>

#include "artwork/Script.h"

namespace orv::artwork {

// A picture of a script, 24-bit RGB. std::runtime_error if there is no such picture or a line of it fails.
QImage Draw(const Script& script, const QString& picture);

}  // namespace orv::artwork
