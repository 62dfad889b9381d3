#include "imaging/GifControl.h"

#include <gif_lib.h>
#include <libimagequant.h>

#include <QImage>
#include <memory>
#include <vector>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "imaging/Picture.h"
#include "imaging/inner/GifRows.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

// 1 is the slowest. Beyond 5 flat areas are speckled too; below it only the time grows.
constexpr int kSpeed = 5;
constexpr float kDithering = 1.0F;
constexpr int kMaxSide = 65535;

template <auto free>
struct Freer {
  template <typename T>
  void operator()(T* object) const {
    free(object);
  }
};
using LiqAttr = std::unique_ptr<liq_attr, Freer<liq_attr_destroy>>;
using LiqImage = std::unique_ptr<liq_image, Freer<liq_image_destroy>>;
using LiqResult = std::unique_ptr<liq_result, Freer<liq_result_destroy>>;
using ColourMap = std::unique_ptr<ColorMapObject, Freer<GifFreeMapObject>>;

[[noreturn]] void Fail(const char* what) {
  throw RuntimeError(kErrInternal, QString::fromLatin1(what));
}

void CheckGif(int result) {
  if (result != GIF_OK) Fail("The GIF picture could not be encoded");
}

void CheckLiq(liq_error result) {
  if (result != LIQ_OK) Fail("The colours could not be reduced");
}

struct Indexed {
  int width = 0;
  int height = 0;
  liq_palette palette = {};
  std::vector<GifPixelType> pixels;
};

void GiveRow(liq_color* row, int y, int width, void* image) {
  const auto* from = reinterpret_cast<const QRgb*>(static_cast<const QImage*>(image)->constScanLine(y));
  for (int x = 0; x < width; ++x) {
    row[x] = {uchar(qRed(from[x])), uchar(qGreen(from[x])), uchar(qBlue(from[x])), 255};
  }
}

Indexed Quantize(QImage image) {
  Indexed result{image.width(), image.height(), {}, {}};
  const LiqAttr attr(liq_attr_create());
  if (attr == nullptr) Fail("The colours could not be reduced");
  CheckLiq(liq_set_speed(attr.get(), kSpeed));
  const LiqImage source(
      liq_image_create_custom(attr.get(), GiveRow, &image, image.width(), image.height(), 0));
  if (source == nullptr) Fail("The colours could not be reduced");
  liq_result* raw = nullptr;
  CheckLiq(liq_image_quantize(source.get(), attr.get(), &raw));
  const LiqResult reduced(raw);
  CheckLiq(liq_set_dithering_level(reduced.get(), kDithering));
  result.pixels.resize(static_cast<std::size_t>(image.width()) * image.height());
  CheckLiq(liq_write_remapped_image(reduced.get(), source.get(), result.pixels.data(), result.pixels.size()));
  result.palette = *liq_get_palette(reduced.get());  // complete only after the remapping
  return result;
}

// A map of a power of two of colours, as the format wants it.
ColourMap MakeMap(const liq_palette& palette) {
  ColourMap map(GifMakeMapObject(1 << GifBitSize(static_cast<int>(palette.count)), nullptr));
  if (map == nullptr) Fail("The GIF picture could not be encoded");
  for (unsigned i = 0; i < palette.count; ++i) {
    map->Colors[i] = {palette.entries[i].r, palette.entries[i].g, palette.entries[i].b};
  }
  return map;
}

int AppendBytes(GifFileType* gif, const GifByteType* bytes, int count) {
  static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), count);
  return count;
}

void Encode(GifFileType* gif, Indexed* image, bool interlaced) {
  const ColourMap map = MakeMap(image->palette);
  CheckGif(EGifPutScreenDesc(gif, image->width, image->height, 8, 0, map.get()));
  CheckGif(EGifPutImageDesc(gif, 0, 0, image->width, image->height, interlaced, nullptr));
  for (const int y : GifRowOrder(image->height, interlaced)) {
    CheckGif(EGifPutLine(gif, image->pixels.data() + std::size_t(y) * image->width, image->width));
  }
}

QByteArray MakeGif(Indexed image, bool interlaced) {
  QByteArray bytes;
  GifFileType* gif = EGifOpen(&bytes, AppendBytes, nullptr);
  if (gif == nullptr) Fail("The GIF picture could not be encoded");
  try {
    Encode(gif, &image, interlaced);
  } catch (...) {
    EGifCloseFile(gif, nullptr);
    throw;
  }
  CheckGif(EGifCloseFile(gif, nullptr));  // writes the end mark
  return bytes;
}

}  // namespace

void GifControl::Convert(const QString& bitmap_path, const QString& gif_path, bool interlaced) {
  failed_ = false;
  error_.clear();
  try {
    const Picture picture = LoadPicture(bitmap_path);
    if (picture.Width() > kMaxSide || picture.Height() > kMaxSide) BadPicture();
    ReplaceFile(gif_path, MakeGif(Quantize(OverWhite(picture.Image())), interlaced));
  } catch (const RuntimeError& error) {
    failed_ = true;
    error_ = error.Description();
  } catch (const std::exception& error) {
    failed_ = true;
    error_ = QString::fromLocal8Bit(error.what());
  }
}

}  // namespace orv
