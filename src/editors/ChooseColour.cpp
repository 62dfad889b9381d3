#include "editors/inner/ChooseColour.h"

#include "base/Quietly.h"
#include "forms/Dialogs.h"

namespace orv {

void ChooseBackgroundColour(ShownRecord& record, Surface& sample, Surface& card) {
  if (!record.Hold()) return;
  CommonDialog dialog;
  dialog.CancelError = true;
  dialog.DialogTitle = QStringLiteral("Choose card background colour");
  dialog.Color = record["BGColour"].Int32Or(kWhite);
  dialog.Flags = 1;
  if (!Quietly({kErrCancel}, [&] { dialog.ShowColor(); })) return;
  sample.SetBackColor(dialog.Color);
  record["BGColour"] = dialog.Color;
  record.Update();
  card.SetBackColor(dialog.Color);
}

}  // namespace orv
