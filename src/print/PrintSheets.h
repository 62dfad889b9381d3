#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <vector>

#include "output/OutputKinds.h"
#include "print/PrintOptions.h"

namespace orv {

struct PrintOutcome {
  bool stopped = false;
  int cards = 0, sheets = 0;  // cards with their copies, sheets of paper
  int unchanged = 0;          // records left out for that
  QStringList not_drawn;      // the records whose places are crossed out
  QString forgotten;          // why what is printed now can't be told from later changes; mostly empty
};

// Told how many of all records are done; false stops.
using PrintProgress = std::function<bool(int done, int all)>;

// Writes the wanted records of the current set to a PDF file, which is whole or not there; an older one of
// the name stays until then, and for good after a stop. RuntimeError if it can't be written, if a card
// doesn't fit on the paper, or if there is nothing to print. Where all is unchanged, nothing is written and
// sheets is 0. How each record looked is remembered for the user.
PrintOutcome PrintSheets(const PrintOptions& options, const QString& path, const PrintProgress& progress);

// What print would show badly: a line of record and cause, and the record.
struct BadCard {
  QString line;
  const OutputKind* kind;
  std::int32_t id;     // the record's key
  const char* column;  // of the text that doesn't fit, or null
};
std::vector<BadCard> CheckSheets(const PrintOptions& options, const PrintProgress& progress);

// A sheet with a grid for both sides, with the shift of the backs: held against the light it tells by how
// many millimetres the sides miss each other.
void PrintTestSheet(const PrintOptions& options, const QString& path);

}  // namespace orv
