#include "composition/CardLayout.h"

namespace orv {
namespace {

CardLayout SecondEdition() {
  CardLayout layout{};
  layout.edition = 2;
  layout.card = {0, 0, 152, 256};
  layout.frame = {5, 40, 139, 105};
  layout.symbol = {0, 245, 5, 5};
  layout.artist = {0, 40, 5, 180};
  layout.title = {5, 28, 139, 13};
  layout.type_count = 4;
  layout.type[0] = {5, 3, 57, 12};
  layout.type[1] = {88, 3, 56, 12};
  layout.type[2] = {5, 15, 57, 12};
  layout.type[3] = {88, 15, 57, 12};
  layout.number = {66, 8, 17, 17};
  layout.bold = {5, 148, 139, 1};
  layout.information = {5, 151, 139, 90};
  layout.autonumber = {134, 245, 13, 9};
  layout.watermark = {55, 245, 40, 9};
  layout.handle = {5, 144, 138, 3};
  layout.bold_height = 12;
  layout.information_bottom = 241;
  layout.information_fallback_top = 242;
  layout.handle_lowest = 60;
  layout.handle_highest = 208;
  layout.title_font = {QStringLiteral("Small Fonts"), 7, true, false};
  layout.bold_font = layout.title_font;
  layout.has_one_line = true;
  layout.one_line_width = 139;
  layout.one_line_number_top = 16;
  layout.title_measured_on_preview = true;
  layout.bold_in_label_colour = false;
  return layout;
}

CardLayout ThirdEdition() {
  CardLayout layout{};
  layout.edition = 3;
  layout.card = {0, 0, 163, 247};
  layout.frame = {15, 32, 131, 105};
  layout.symbol = {0, 235, 5, 5};
  layout.artist = {0, 40, 5, 180};
  layout.title = {12, 11, 137, 22};
  layout.type_count = 2;
  layout.type[0] = {14, 220, 57, 12};
  layout.type[1] = {90, 220, 56, 12};
  layout.number = {72, 220, 17, 17};
  layout.bold = {12, 142, 137, 20};
  layout.information = {14, 162, 133, 57};
  layout.autonumber = {146, 236, 13, 9};
  layout.watermark = {60, 237, 41, 9};
  layout.handle = {12, 137, 137, 5};
  layout.bold_height = 20;
  layout.information_bottom = 219;
  layout.information_fallback_top = 219;
  layout.handle_lowest = 60;
  layout.handle_highest = 178;
  layout.title_font = {QStringLiteral("Arial"), 14.25, false, false};
  layout.bold_font = layout.title_font;
  layout.has_one_line = false;
  layout.title_measured_on_preview = false;
  layout.bold_in_label_colour = true;
  return layout;
}

}  // namespace

const CardLayout& CardLayoutOf(int edition) {
  static const CardLayout second = SecondEdition();
  static const CardLayout third = ThirdEdition();
  return edition == 2 ? second : third;
}

}  // namespace orv
