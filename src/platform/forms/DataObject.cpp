#include "forms/DataObject.h"

#include <QImage>
#include <QMimeData>
#include <QUrl>

#include "imaging/Picture.h"

namespace orv {
namespace {

// In the order in which they are wanted: a file as it was before one that was made of it.
constexpr const char* kFormats[] = {"image/jpeg", "image/webp",  "image/png",
                                    "image/gif",  "image/x-wmf", "image/bmp"};

QStringList FilesOf(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files += url.toLocalFile();
  }
  return files;
}

}  // namespace

DataObject DataObjectFrom(const QMimeData& data) {
  DataObject object;
  object.Files = FilesOf(data);
  if (!object.Files.isEmpty()) return object;
  for (const char* format : kFormats) {
    object.Image = data.data(QLatin1String(format));
    if (!object.Image.isEmpty()) return object;
  }
  const auto image = qvariant_cast<QImage>(data.imageData());
  if (!image.isNull()) object.Image = BitmapFile(Picture(image));
  return object;
}

bool HasDataObject(const QMimeData& data) {
  if (data.hasImage() || !FilesOf(data).isEmpty()) return true;
  for (const char* format : kFormats) {
    if (data.hasFormat(QLatin1String(format))) return true;
  }
  return false;
}

}  // namespace orv
