#include "editors/ChoosePicture.h"

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "pictures/modPicture.h"

namespace orv {

void ChoosePicture(const PictureChoice& choice) {
  try {
    CommonDialog dialog = PictureDialog(choice.title);
    if (choice.folder != nullptr) dialog.InitDir = *choice.folder;
    dialog.ShowOpen();
    ReadFileToField(dialog.FileName, choice.rows[choice.column]);
    choice.before_update();
    choice.rows.Update();
    choice.stored(dialog.FileName);
    choice.surface.SetPicture(LoadPicture(dialog.FileName));
    choice.shown();
  } catch (const RuntimeError&) {
    // A cancelled dialog, or a file that can't be shown: what stands on the surface stays.
  }
}

void ChooseFramedPicture(const char* title, Recordset& rows, const char* column, Surface& image,
                         QString& folder, std::function<void()> before_update) {
  ChoosePicture({.title = QString::fromLatin1(title),
                 .folder = &folder,
                 .rows = rows,
                 .column = column,
                 .surface = image,
                 .before_update = std::move(before_update),
                 .stored =
                     [&](const QString& path) {
                       RememberFolder(folder)(path);
                       image.SetTop(0);
                       image.SetLeft(0);
                     },
                 .shown = [&] { image.SetFocus(); }});
}

void RemovePicture(Recordset& rows, const char* column, Surface& surface) {
  rows[column] = Value::Null();
  rows.Update();
  surface.SetPicture(LoadPicture());
}

void RemoveFramedPicture(Recordset& rows, Surface& image) {
  rows["Picture"] = Value::Null();
  rows["PicTop"] = 0;
  rows["PicLeft"] = 0;
  rows.Update();
  EmptyFrame(image);
}

void EmptyFrame(Surface& image) {
  image.SetTop(0);
  image.SetLeft(0);
  image.SetPicture(LoadPicture());
}

std::function<void(const QString&)> RememberFolder(QString& folder) {
  return [&folder](const QString& path) { folder = FolderPart(path); };
}

}  // namespace orv
