#include <libexif/exif-data.h>

#include <QTransform>
#include <memory>

#include "imaging/Picture.h"
#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

// How the first row and column lie, as the tag numbers it; 1 is upright.
int OrientationOf(const QByteArray& bytes) {
  if (!bytes.startsWith("\xff\xd8\xff")) return 1;
  const std::unique_ptr<ExifData, decltype(&exif_data_unref)> data(
      exif_data_new_from_data(reinterpret_cast<const unsigned char*>(bytes.constData()),
                              static_cast<unsigned>(bytes.size())),
      exif_data_unref);
  if (data == nullptr) return 1;
  const ExifEntry* const entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
  if (entry == nullptr || entry->format != EXIF_FORMAT_SHORT || entry->size < 2) return 1;
  return exif_get_short(entry->data, exif_data_get_byte_order(data.get()));
}

QTransform TurnOf(int orientation) {
  switch (orientation) {
    case 2:
      return {-1, 0, 0, 1, 0, 0};
    case 3:
      return {-1, 0, 0, -1, 0, 0};
    case 4:
      return {1, 0, 0, -1, 0, 0};
    case 5:
      return {0, 1, 1, 0, 0, 0};
    case 6:
      return {0, 1, -1, 0, 0, 0};
    case 7:
      return {0, -1, -1, 0, 0, 0};
    case 8:
      return {0, -1, 1, 0, 0, 0};
    default:
      return {};
  }
}

}  // namespace

bool IsUpright(const QByteArray& bytes) {
  return TurnOf(OrientationOf(bytes)).isIdentity();
}

Picture LoadUpright(const QByteArray& bytes) {
  const Picture picture = LoadPicture(bytes);
  const QTransform turn = TurnOf(OrientationOf(bytes));
  if (turn.isIdentity()) return picture;
  const QImage turned = picture.Image().transformed(turn);
  if (turned.isNull()) BadPicture();
  return Picture(turned);
}

}  // namespace orv
