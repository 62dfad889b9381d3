#pragma once

#include <QString>

#include "imaging/Picture.h"

namespace orv {

// Writes a picture as a PNG file of 8 bits a channel and 96 dots an inch, transparent parts over white, by
// ReplaceFile. RuntimeError 481 for the empty picture.
void SavePng(const Picture& picture, const QString& path);

}  // namespace orv
