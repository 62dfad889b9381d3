#include "pictures/DroppedPicture.h"

#include "base/Files.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"

namespace orv {

QByteArray BytesOf(const DataObject& data) {
  return data.Files.isEmpty() ? data.Image : ReadPictureFile(data.Files.first());
}

void TellUnreadable(const DataObject& data, const RuntimeError& error) {
  const QString what = data.Files.isEmpty() ? QStringLiteral("What was pasted or dropped")
                                            : u'"' + FilePart(data.Files.first()) + u'"';
  const QString why =
      error.Number() == kErrInvalidPicture
          ? QStringLiteral(" is no picture that can be read. BMP, JPG, GIF, PNG, WebP and WMF files can.")
          : QStringLiteral(" can't be read.\r\n\r\n") + error.NumberAndDescription();
  MsgBox(what + why, Icon::Exclamation, QStringLiteral("Picture"));
}

Picture PictureOf(const DataObject& data, const std::function<Picture(const QByteArray& bytes)>& make) {
  try {
    const WaitCursor hourglass;
    return make(BytesOf(data));
  } catch (const RuntimeError& error) {
    TellUnreadable(data, error);
    return {};
  }
}

std::function<void(const MenuEvent&)> PasteMenu(const std::function<void(const DataObject&)>& take) {
  return [take](const MenuEvent& event) {
    event.Items.push_back(
        {QStringLiteral("&Paste"), QString(), Clipboard::HasData(), [take] { take(Clipboard::GetData()); }});
  };
}

void TakePictures(Surface& surface, const std::function<void(const DataObject&)>& take) {
  surface.Drop = [take](const DropEvent& event) { take(event.Data); };
  surface.ContextMenu = PasteMenu(take);
}

}  // namespace orv
