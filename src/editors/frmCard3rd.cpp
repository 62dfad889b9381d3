#include "editors/frmCard3rd.h"

namespace orv {

Card3rdForm::Card3rdForm()
    : CardEditor({.edition = 3,
                  .form_name = "frmCard3rd",
                  .caption = "Card (3rd)",
                  .drop_text = "[UpperLeft] & \" \" & [UpperRight] & \" (\" & [Number] & \")\"",
                  .second_type_name = "UpperRight",
                  .has_type_catalogue = false,
                  .has_card_list = false,
                  .output = kCards3rd}) {}

}  // namespace orv
