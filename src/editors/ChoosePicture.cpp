#include "editors/inner/ChoosePicture.h"

#include "base/Files.h"
#include "pictures/modPicture.h"

namespace orv {

void ChoosePicture(const PictureChoice& choice) {
  if (!choice.record.Hold()) return;
  CommonDialog dialog = PictureDialog(choice.title);
  if (choice.folder != nullptr) dialog.InitDir = *choice.folder;
  if (!ChoosesFile(dialog)) return;
  ReadFileToField(dialog.FileName, choice.record[choice.column]);
  choice.before_update();
  choice.record.Update();
  choice.stored(dialog.FileName);
  const std::optional<Picture> picture = PictureIn(dialog.FileName);
  if (!picture) return;
  choice.surface.SetPicture(*picture);
  choice.shown(dialog.FileName);
}

void ChooseFramedPicture(const char* title, ShownRecord& record, const char* column, Surface& image,
                         QString& folder, std::function<void()> before_update) {
  ChoosePicture({.title = QString::fromLatin1(title),
                 .folder = &folder,
                 .record = record,
                 .column = column,
                 .surface = image,
                 .before_update = std::move(before_update),
                 .stored =
                     [&](const QString& path) {
                       RememberFolder(folder)(path);
                       image.SetTop(0);
                       image.SetLeft(0);
                     },
                 .shown = [&](const QString&) { image.SetFocus(); }});
}

void RemovePicture(ShownRecord& record, const char* column, Surface& surface) {
  if (!record.Write({{column, Value::Null()}})) return;
  surface.SetPicture(LoadPicture());
}

void RemoveFramedPicture(ShownRecord& record, Surface& image) {
  if (record.Write({{"Picture", Value::Null()}, {"PicTop", 0}, {"PicLeft", 0}})) EmptyFrame(image);
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
