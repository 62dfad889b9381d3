#include "pictures/modPicture.h"

#include <QFile>

#include "base/Files.h"
#include "base/Quietly.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "pictures/FinePicture.h"
#include "pictures/PictureBudget.h"
#include "pictures/PicturesAhead.h"

namespace orv {
namespace {

constexpr std::int64_t kBlock = 32768;

}  // namespace

void LoadPictureFromField(Surface& surface, const Field& field) {
  const QByteArray bytes = field.Bytes();
  if (bytes.isEmpty()) return surface.SetPicture(LoadPicture());
  const Picture picture = PicturesAhead::Load(bytes, PictureBudget::PixelsLeft(bytes.size()));
  PictureBudget::Spend(std::int64_t{picture.Width()} * picture.Height());
  surface.SetPicture(WithOriginal(picture, bytes));
}

Value ReadFileToField(const QString& path, const Field& field) {
  try {
    const QByteArray file = ReadWhole(path);
    if (file.isEmpty()) return 0;
    const std::int16_t blocks = ToInt16(static_cast<double>(file.size() / kBlock));
    // The remainder goes first, then the blocks, each one byte longer than its count: the whole file in
    // sequence and zero bytes behind it.
    field.AppendChunk(file + QByteArray(blocks + 1, '\0'));
    return static_cast<long long>(file.size());
  } catch (const RuntimeError& error) {
    return error.Number();
  }
}

bool WriteFieldToFile(const Field& field, const QString& path) {
  const std::int64_t size = field.ActualSize();
  if (size == 0) return false;
  ClearAttributes(path);
  QFile::remove(path);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  for (QByteArray chunk = field.GetChunk(kBlock); !chunk.isEmpty(); chunk = field.GetChunk(kBlock)) {
    if (file.write(chunk) != chunk.size()) return false;
  }
  return file.flush();
}

CommonDialog PictureDialog(const QString& title) {
  CommonDialog dialog;
  dialog.DialogTitle = title;
  dialog.CancelError = true;
  dialog.Filter =
      QStringLiteral("All files(*.*)|*.*|Picture files (*.bmp;*.jpg;*.gif;*.wmf)|*.bmp;*.jpg;*.gif;*.wmf");
  dialog.FilterIndex = 2;
  dialog.DefaultExt = QStringLiteral("bmp");
  dialog.Flags = 0x281804;
  return dialog;
}

bool ChoosesFile(CommonDialog& dialog) {
  return Quietly({kErrCancel}, [&] { dialog.ShowOpen(); });
}

std::optional<Picture> PictureIn(const QString& path) {
  try {
    return LoadPicture(path);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace orv
