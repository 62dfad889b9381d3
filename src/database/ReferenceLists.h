#pragma once

#include <QString>
#include <cstdint>

namespace orv {

// Reopens the five reference recordsets of modData for an edition and a language.
void LoadReferenceLists(std::int16_t edition, std::int16_t language);

// The name of a starting area in the loaded list, empty for an unknown key. BoardInBrackets gives
// "Area (Board)", else Separated gives "Board : Area".
QString AreaText(std::int32_t area_id, bool separated, bool board_in_brackets);

// The name of an alignment in the loaded list, empty for an unknown key.
QString AlignmentText(std::int32_t alignment_id);

// The queries of the lists over both editions and all languages, for lookups by key alone.
inline constexpr const char* kAllCardTypes =
    "SELECT * FROM tblCardType ORDER BY LanguageID, UpperLeft, LowerLeft, Number";
inline constexpr const char* kAllCardBacks =
    "SELECT * FROM tblCardBack ORDER BY LanguageID, Original, BackText";

}  // namespace orv
