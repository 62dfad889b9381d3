#include "editors/frmCard2nd.h"

namespace orv {

Card2ndForm::Card2ndForm()
    : CardEditor({.edition = 2,
                  .form_name = "frmCard2nd",
                  .caption = "Card (2nd)",
                  .drop_text = "[UpperLeft] & [LowerLeft] & \" (\" & [Number] & \")\"",
                  .second_type_name = "LowerLeft",
                  .has_type_catalogue = true,
                  .has_card_list = true,
                  .output = kCards2nd}) {}

}  // namespace orv
