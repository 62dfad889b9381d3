#include "output/PictureFormats.h"

#include "base/App.h"
#include "base/Files.h"
#include "forms/Dialogs.h"
#include "imaging/PngFile.h"
#include "pictures/cDIBSection.h"
#include "pictures/frmClip.h"
#include "pictures/mIntelJPEGLibrary.h"

namespace orv {
namespace {

constexpr std::int32_t kJpegQuality = 90;

bool WriteBmp(const Picture& sheet, const QString& path) {
  SavePicture(sheet, path);
  return true;
}

bool WriteJpg(const Picture& sheet, const QString& path) {
  cDIBSection section;
  section.CreateFromPicture(sheet);
  SaveJPG(section, path, kJpegQuality);
  return true;
}

// The control turns one file into another.
bool WriteGif(const Picture& sheet, const QString& path) {
  const QString bitmap = JoinPath(App::Path(), QStringLiteral("orvtemp.bmp"));
  SavePicture(sheet, bitmap);
  GifControl& control = frmClip->BMP2GIF1;
  control.Convert(bitmap, path, false);
  if (!control.Failed()) return true;
  MsgBox(QStringLiteral("Something went wrong.\r\n\r\n") + control.ErrorText(), Icon::Critical,
         QStringLiteral("Saving the card"));
  return false;
}

bool WritePng(const Picture& sheet, const QString& path) {
  SavePng(sheet, path);
  return true;
}

constexpr PictureFormat kFormats[] = {
    {1, "BMP", WriteBmp},
    {2, "JPG", WriteJpg},
    {3, "GIF", WriteGif},
    {{}, "PNG", WritePng},
};

}  // namespace

std::span<const PictureFormat> PictureFormats() {
  return kFormats;
}

const PictureFormat* FormatOfKey(std::int32_t pic_format_id) {
  for (const PictureFormat& format : kFormats) {
    if (format.pic_format_id == pic_format_id) return &format;
  }
  return nullptr;
}

}  // namespace orv
