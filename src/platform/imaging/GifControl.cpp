#include "imaging/GifControl.h"

#include <gif_lib.h>

#include <QImage>
#include <algorithm>
#include <memory>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "imaging/Picture.h"
#include "imaging/inner/GifRows.h"
#include "imaging/inner/IndexedColours.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

constexpr int kMaxSide = 65535;

struct MapFreer {
  void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};
using ColourMap = std::unique_ptr<ColorMapObject, MapFreer>;

void Check(bool done) {
  if (!done) throw RuntimeError(kErrInternal, QStringLiteral("The GIF picture could not be encoded"));
}

// A map of a power of two of colours, as the format wants it.
ColourMap MakeMap(const std::vector<QRgb>& palette) {
  ColourMap map(GifMakeMapObject(1 << GifBitSize(static_cast<int>(palette.size())), nullptr));
  Check(map != nullptr);
  std::transform(palette.begin(), palette.end(), map->Colors, [](QRgb colour) {
    return GifColorType{uchar(qRed(colour)), uchar(qGreen(colour)), uchar(qBlue(colour))};
  });
  return map;
}

int AppendBytes(GifFileType* gif, const GifByteType* bytes, int count) {
  static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), count);
  return count;
}

void Encode(GifFileType* gif, IndexedImage* image, bool interlaced) {
  const ColourMap map = MakeMap(image->palette);
  Check(EGifPutScreenDesc(gif, image->width, image->height, 8, 0, map.get()) == GIF_OK);
  Check(EGifPutImageDesc(gif, 0, 0, image->width, image->height, interlaced, nullptr) == GIF_OK);
  for (const int y : GifRowOrder(image->height, interlaced)) {
    Check(EGifPutLine(gif, image->pixels.data() + std::size_t(y) * image->width, image->width) == GIF_OK);
  }
}

QByteArray MakeGif(IndexedImage image, bool interlaced) {
  QByteArray bytes;
  GifFileType* gif = EGifOpen(&bytes, AppendBytes, nullptr);
  Check(gif != nullptr);
  try {
    Encode(gif, &image, interlaced);
  } catch (...) {
    EGifCloseFile(gif, nullptr);
    throw;
  }
  Check(EGifCloseFile(gif, nullptr) == GIF_OK);  // writes the end mark
  return bytes;
}

}  // namespace

void GifControl::Convert(const QString& bitmap_path, const QString& gif_path, bool interlaced) {
  failed_ = false;
  error_.clear();
  try {
    const Picture picture = LoadPicture(bitmap_path);
    if (picture.Width() > kMaxSide || picture.Height() > kMaxSide) BadPicture();
    ReplaceFile(gif_path, MakeGif(ReduceColours(OverWhite(picture.Image())), interlaced));
  } catch (const RuntimeError& error) {
    failed_ = true;
    error_ = error.Description();
  } catch (const std::exception& error) {
    failed_ = true;
    error_ = QString::fromLocal8Bit(error.what());
  }
}

}  // namespace orv
