#pragma once

#include <QByteArray>
#include <functional>

#include "base/RuntimeError.h"
#include "forms/DataObject.h"
#include "forms/Surface.h"

namespace orv {

// The bytes of a picture file that was dropped or pasted; the first of several. RuntimeError for a file that
// can't be read.
QByteArray BytesOf(const DataObject& data);
// Tells that something that was dropped or pasted is no picture, or why its file can't be read.
void TellUnreadable(const DataObject& data, const RuntimeError& error);
// What `make` makes of the bytes; tells of bytes that are no picture, and then it is the empty picture.
Picture PictureOf(const DataObject& data, const std::function<Picture(const QByteArray& bytes)>& make);

// A menu with Paste in it.
std::function<void(const MenuEvent&)> PasteMenu(const std::function<void(const DataObject&)>& take);
// Lets a surface take pictures that are dropped on it, or pasted by its menu.
void TakePictures(Surface& surface, const std::function<void(const DataObject&)>& take);

}  // namespace orv
