#pragma once

#include <QString>
#include <cstdint>

#include "base/Event.h"
#include "output/OutputKinds.h"
#include "output/PictureFormats.h"

// From a composed card to a file: the front and the back side by side on one sheet, each in an outline,
// written in the set's format into the set's folder. The operations work on the current records, which
// the editor's draw operation and the composer have just brought to the surfaces. A failure is told in a
// box and swallowed, so that a run goes on with the next record.
namespace orv {

inline constexpr std::int32_t kBmp = 1;  // the format of a set that names none

void SaveTheCard2nd();
void SaveTheCard3rd();
void SaveTheCharacter2nd();
void SaveThePlayingPiece2nd();
void SaveTheLargeCard();

// The file's name without folder: prefix, kind code, number (its last three digits), name and extension,
// as far as the options of the current set ask for them.
QString BuildFileName(const QString& name, std::int16_t number, const QString& kind);

// Writes the sheet on picDone to a path in the format of the current set; where that is none, nothing is
// written. False after a failure that the writer has told in a box, RuntimeError after any other.
bool SaveThePicture(const QString& path);

// The name and extension of a format, "BMP" for an unknown number.
QString GetPicFormat(std::int32_t pic_format_id);

// How a sheet's file is written, and its extension.
struct SheetFormat {
  const PictureFormat* format = nullptr;  // none: nothing is written, and nothing said
  QString extension;
};
// By what the current set has stored.
SheetFormat FormatOfSet();
// One of the formats itself, whatever the set has stored.
SheetFormat FormatOf(const PictureFormat& format);

// Where a record has no file name yet, it takes the title of the moment, for good; the caller updates the
// record. A Null name stays. RuntimeError 94 for a Null title.
void FillFileName(Recordset& record);

// What the save operations do, for a kind of sheet and in a format.
void SaveSheet(const SheetKind& kind, const SheetFormat& format);

// A save operation has named its file, and then ended: for whoever lists what a run wrote. `record` tells
// the kind and the record's name. `saved` is false after a failure that was told in a box, and
// where the format writes nothing.
inline Event<const QString& /*path*/, const QString& /*record*/, bool /*saved*/> SheetSaved;

}  // namespace orv
