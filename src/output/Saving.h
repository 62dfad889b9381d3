#pragma once

#include <QString>
#include <cstdint>

#include "base/Event.h"

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

// Writes the sheet to a path in the format of the current set: 1 BMP, 2 JPG, 3 GIF; for any other number
// nothing is written. RuntimeError of the writer; a failed GIF is told in a box here.
void SaveThePicture(const QString& path);

// The name and extension of a format, "BMP" for an unknown number.
QString GetPicFormat(std::int32_t pic_format_id);

// A save operation has named its file, and then ended: for whoever lists what a run wrote. `record` tells
// the kind and the record's name. `saved` is false after a failure that was told in a box.
inline Event<const QString& /*path*/, const QString& /*record*/, bool /*saved*/> SheetSaved;

}  // namespace orv
