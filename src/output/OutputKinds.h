#pragma once

#include <span>

#include "forms/Surface.h"
#include "records/Recordset.h"

namespace orv {

// The outline of a half of a sheet, by two opposite corners, both inclusive. Pixels.
struct Corners {
  int left, top, right, bottom;
};

// A sheet: a front and a back side by side, each in an outline. How the sheets of the kinds differ.
struct SheetKind {
  const char* kind_code;  // in the file's name
  const char* box_title;  // of the box that tells a failure
  Recordset& record;
  const char* name_column;
  Surface& (*front)();
  const Surface& (*back)();
  Corners first_outline;
  Corners second_outline;
  bool fills_name_from_title = false;  // an empty FileName takes the title of the moment, for good
  bool may_leave_out_back = true;
  bool tells_cause = false;
};

extern const SheetKind kSheetOfCard2nd, kSheetOfCard3rd, kSheetOfCharacter, kSheetOfPiece, kSheetOfLargeCard;

// A kind of records that a run writes out: draw, compose and save each on the record on which the shared
// recordset stands.
struct OutputKind {
  const char* name;   // of the option that asks for it; the two editions of a kind share it
  const char* words;  // what its records are called: "large cards"
  int edition;
  const char* table;
  Recordset& records;
  void (*draw)();     // on the preview
  void (*compose)();  // from the preview, on the surfaces of frmCard
  std::span<const SheetKind* const> sheets;
  std::span<const char* const> pictures;  // the columns with pictures that it draws
};

extern const OutputKind kCards2nd, kCards3rd, kCharacters2nd, kLargeCards2nd;

// All kinds, in the order in which a run goes through them.
std::span<const OutputKind* const> OutputKinds();

}  // namespace orv
