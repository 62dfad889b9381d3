#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include "imaging/inner/Decoders.h"
#include "imaging/inner/GifRows.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

struct GifCloser {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};
using GifHandle = std::unique_ptr<GifFileType, GifCloser>;

int ReadSome(GifFileType* gif, GifByteType* to, int count) {
  auto* left = static_cast<QByteArrayView*>(gif->UserData);
  const int given = static_cast<int>(std::min<qsizetype>(count, left->size()));
  std::memcpy(to, left->data(), given);
  *left = left->sliced(given);
  return given;
}

void Check(int result) {
  if (result != GIF_OK) BadPicture();
}

// Goes on to the first picture; the index of the transparent colour, or NO_TRANSPARENT_COLOR.
int SeekFirstFrame(GifFileType* gif) {
  int transparent = NO_TRANSPARENT_COLOR;
  for (;;) {
    GifRecordType type = UNDEFINED_RECORD_TYPE;
    Check(DGifGetRecordType(gif, &type));
    if (type == IMAGE_DESC_RECORD_TYPE) break;
    if (type != EXTENSION_RECORD_TYPE) BadPicture();
    int code = 0;
    GifByteType* block = nullptr;
    Check(DGifGetExtension(gif, &code, &block));
    GraphicsControlBlock control;
    if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr &&
        DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
      transparent = control.TransparentColor;
    }
    while (block != nullptr) Check(DGifGetExtensionNext(gif, &block));
  }
  Check(DGifGetImageDesc(gif));
  return transparent;
}

// All 256 indices, so that one beyond the file's palette is black and the transparent one is clear.
std::array<QRgb, 256> Colours(const GifFileType* gif, int transparent) {
  const ColorMapObject* map = gif->Image.ColorMap != nullptr ? gif->Image.ColorMap : gif->SColorMap;
  if (map == nullptr) BadPicture();
  std::array<QRgb, 256> colours;
  colours.fill(qRgb(0, 0, 0));
  for (int i = 0; i < std::min(map->ColorCount, 256); ++i) {
    colours[i] = qRgb(map->Colors[i].Red, map->Colors[i].Green, map->Colors[i].Blue);
  }
  if (transparent >= 0 && transparent < 256) colours[transparent] = 0;
  return colours;
}

// Puts the frame at its place on the screen; true if every pixel of it is opaque.
bool ReadFrame(GifFileType* gif, int transparent, QImage* screen) {
  const GifImageDesc& frame = gif->Image;
  const std::array<QRgb, 256> colours = Colours(gif, transparent);
  std::vector<GifPixelType> line(frame.Width);
  bool opaque = true;
  for (const int y : GifRowOrder(frame.Height, frame.Interlace)) {
    Check(DGifGetLine(gif, line.data(), frame.Width));
    auto* row = reinterpret_cast<QRgb*>(screen->scanLine(frame.Top + y)) + frame.Left;
    for (int x = 0; x < frame.Width; ++x) {
      row[x] = colours[line[x]];
      opaque = opaque && line[x] != transparent;
    }
  }
  return opaque;
}

}  // namespace

QImage DecodeGif(QByteArrayView bytes) {
  QByteArrayView left = bytes;
  const GifHandle gif(DGifOpen(&left, ReadSome, nullptr));
  if (gif == nullptr) BadPicture();
  const int transparent = SeekFirstFrame(gif.get());
  const GifImageDesc& frame = gif->Image;
  CheckSize(frame.Width, frame.Height);
  // A frame that reaches over the edge of its screen widens it.
  QImage screen =
      NewImage(std::max(gif->SWidth, frame.Left + frame.Width),
               std::max(gif->SHeight, frame.Top + frame.Height), QImage::Format_ARGB32_Premultiplied);
  const bool covered = screen.width() == frame.Width && screen.height() == frame.Height;
  if (!covered) screen.fill(0);
  const bool opaque = ReadFrame(gif.get(), transparent, &screen);
  if (covered && opaque) screen.reinterpretAsFormat(QImage::Format_RGB32);
  return screen;
}

}  // namespace orv
