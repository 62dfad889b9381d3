#pragma once

#include <QSize>
#include <vector>

#include "print/PrintOptions.h"

namespace orv {

// Where the cards of one size stand on a sheet of paper. Millimetres from the page's upper left corner.
struct SheetLayout {
  struct Point {
    double x, y;
  };
  struct Line {
    Point from, to;
  };

  double page_width, page_height;
  double scale;                    // millimetres a dot
  double card_width, card_height;  // as they are cut
  double step_x, step_y;           // from a card to the next
  double left, top;                // of the first card
  int columns, rows;
  bool mirrored_across;  // backs stand mirrored left to right, else top to bottom and turned by half a circle
  double back_right, back_down;

  int Count() const { return columns * rows; }
  // The upper left corner of a card, row by row.
  Point Front(int index) const;
  // The same of its back on a sheet of its own.
  Point Back(int index) const;
  // Lines in the margins, in line with all edges of the cards. `foot` millimetres at the lower edge are left
  // free.
  std::vector<Line> CutMarks(double bleed, double foot) const;
};

// As many cards as fit, on the paper upright or across; `dots` is what one place takes, at `scale`
// millimetres a dot. RuntimeError where not one fits.
SheetLayout LayOut(const PrintOptions& options, QSize dots, double scale);

}  // namespace orv
