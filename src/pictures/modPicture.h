#pragma once

#include <QString>
#include <optional>

#include "base/Value.h"
#include "forms/Dialogs.h"
#include "forms/Surface.h"
#include "records/Recordset.h"

// Picture files and the fields that keep their bytes. A field holds the whole file as the user chose
// it; nothing is converted.
namespace orv {

// Shows a stored picture on a surface, decoded from memory; a field without bytes empties it. Where drawings
// are kept, the picture knows of its original.
// RuntimeError 481 for bytes that are no picture.
void LoadPictureFromField(Surface& surface, const Field& field);

// Puts a file's bytes into a field of the current row; the caller updates it. The result is the file's
// length, 0 for an empty file, which leaves the field as it was, or the number of the error.
// Behind the file's bytes the field gets a zero byte for each whole block of 32768 bytes and one more,
// which no picture reader minds.
Value ReadFileToField(const QString& path, const Field& field);

// Writes a field's bytes to a file; false for a field without bytes, which leaves the file as it is, and
// after any failure.
bool WriteFieldToFile(const Field& field, const QString& path);

// The settings that all dialogs for choosing a picture share.
CommonDialog PictureDialog(const QString& title);
// Shows such a dialog; false on Cancel.
bool ChoosesFile(CommonDialog& dialog);
// The picture in a file that a user chose; none where the file can't be read or is no picture.
std::optional<Picture> PictureIn(const QString& path);

}  // namespace orv
