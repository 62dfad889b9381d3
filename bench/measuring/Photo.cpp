#include "measuring/Photo.h"

#include <QTemporaryDir>
#include <algorithm>

#include "base/Files.h"
#include "forms/Surface.h"
#include "pictures/cDIBSection.h"
#include "pictures/mIntelJPEGLibrary.h"

namespace orv {

QByteArray Photo(int width, int height, int quality) {
  Surface surface;
  surface.Place(0, 0, width, height);
  unsigned seed = 7;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      seed = seed * 1664525u + 1013904223u;
      const int grain = static_cast<int>(seed >> 27);
      surface.SetPixel(x, y,
                       Rgb(std::min(255, x * 255 / width + grain), std::min(255, y * 255 / height + grain),
                           (x * y / 97 + grain) & 0xFF));
    }
  }
  cDIBSection section;
  section.CreateFromPicture(surface.Image());
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("photo.jpg"));
  SaveJPG(section, path, quality);
  return ReadWhole(path);
}

}  // namespace orv
