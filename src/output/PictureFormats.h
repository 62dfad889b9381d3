#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <span>

#include "imaging/Picture.h"

namespace orv {

// A format in which sheets are written.
struct PictureFormat {
  std::optional<std::int32_t> pic_format_id;  // the key that stands for it in tblPicFormat, if one does
  const char* extension;
  // Writes the whole file or nothing, over one of the same name. RuntimeError after a failure; false after
  // one that the writer has told in a box of its own.
  bool (*write)(const Picture& sheet, const QString& path);
};

// All formats there are.
std::span<const PictureFormat> PictureFormats();

// The format that a key of tblPicFormat stands for; none for a key that writes nothing.
const PictureFormat* FormatOfKey(std::int32_t pic_format_id);

}  // namespace orv
