#include "pictures/FinePicture.h"

#include "base/RuntimeError.h"
#include "forms/Playing.h"
#include "forms/Surface.h"
#include "pictures/FittedPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

Picture ReadOriginal(std::int32_t key) {
  try {
    const Recordset rows =
        modData::OpenSnapshot(QStringLiteral("SELECT * FROM tblOriginal WHERE OriginalID = %1").arg(key));
    if (rows.IsEmpty()) return {};
    const QByteArray file = rows["File"].Bytes();
    return rows["Upright"].BoolOrFalse() ? LoadUpright(file) : LoadPicture(file);
  } catch (const RuntimeError&) {
    return {};  // the picture that is stored will do
  }
}

std::optional<Drawing::Fine> OriginalIn(const QByteArray& digest, const Picture& picture) {
  try {
    const Recordset rows =
        modData::OpenSnapshot(QStringLiteral("SELECT OriginalID, Scale FROM tblOriginal WHERE Digest = '%1'")
                                  .arg(QLatin1String(digest)));
    if (rows.IsEmpty() || !(rows["Scale"].NumberOr(0) > 0)) return {};
    const std::int32_t key = rows["OriginalID"].Int32();
    return Drawing::Fine{picture, 1 / rows["Scale"].Number(), [key](double) { return ReadOriginal(key); }};
  } catch (const RuntimeError&) {
    return {};  // a database without originals
  }
}

}  // namespace

Picture WithOriginal(const Picture& picture, const QByteArray& bytes) {
  if (picture.IsEmpty() || !KeepDrawings::Asked()) return picture;
  const QByteArray digest = DigestOf(bytes);
  std::optional<Drawing::Fine> fine = OriginalIn(digest, picture);
  if (!fine && FinerPictures) fine = FinerPictures(digest, picture);
  return fine ? WithFiner(*std::move(fine)) : picture;
}

}  // namespace orv
