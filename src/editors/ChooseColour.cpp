#include "editors/ChooseColour.h"

#include "base/RuntimeError.h"
#include "forms/Dialogs.h"

namespace orv {

void ChooseBackgroundColour(Recordset& rows, Surface& sample, Surface& card) {
  try {
    CommonDialog dialog;
    dialog.CancelError = true;
    dialog.DialogTitle = QStringLiteral("Choose card background colour");
    dialog.Color = rows["BGColour"].Int32Or(kWhite);
    dialog.Flags = 1;
    dialog.ShowColor();
    sample.SetBackColor(dialog.Color);
    rows["BGColour"] = dialog.Color;
    rows.Update();
    card.SetBackColor(dialog.Color);
  } catch (const RuntimeError&) {
    // The user kept the colour.
  }
}

}  // namespace orv
