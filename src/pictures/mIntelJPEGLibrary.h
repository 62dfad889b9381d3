#pragma once

#include <QString>
#include <cstdint>

#include "pictures/cDIBSection.h"

namespace orv {

// Writes a section as a JPEG file of a quality from 0 to 100; true on success. A file that was there
// keeps its times and its attributes. RuntimeError 26001 where the library fails, 75 for a target that
// is read-only; the old file stays until the new one is whole.
bool SaveJPG(const cDIBSection& section, const QString& path, std::int32_t quality);

}  // namespace orv
