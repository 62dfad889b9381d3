#pragma once

#include "forms/Types.h"

namespace orv {

struct PixelRect {
  int left, top, width, height;
};

// The design of a card of one edition: where its elements stand on the inside of the card, in pixels,
// and how the editions differ.
struct CardLayout {
  int edition;
  PixelRect card;  // outer size
  PixelRect frame;
  PixelRect symbol;
  PixelRect artist;
  PixelRect title;
  int type_count;  // the labels of the type's words: 4 corners, or 2 in the upper row alone
  PixelRect type[4];
  PixelRect number;
  PixelRect bold;
  PixelRect information;
  PixelRect autonumber;
  PixelRect watermark;
  PixelRect handle;  // under the picture, to resize its frame

  int bold_height;               // of the bold line, with text in it
  int information_bottom;        // the line at which the rule text's box ends
  int information_fallback_top;  // its top when the picture is switched off and no room is left
  int handle_lowest, handle_highest;

  Font title_font;  // of the preview
  Font bold_font;

  bool has_one_line;               // the type's words may stand in one centred line
  int one_line_width;              // of that line
  int one_line_number_top;         // the number then stands under it
  bool title_measured_on_preview;  // the title is centred by its width in the preview's own font
  bool bold_in_label_colour;       // the bold line is coloured by its words and not by its font slot
};

// The layout of edition 2 or 3; any other number counts as 3.
const CardLayout& CardLayoutOf(int edition);

}  // namespace orv
