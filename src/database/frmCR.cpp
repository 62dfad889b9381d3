#include "database/frmCR.h"

namespace orv {

CompactForm::CompactForm()
    : Form(FormKind::Dialog),
      lblReason(*this, QStringLiteral("You have used the ORV for a while now and it might be time to compact "
                                      "the database.")),
      lblQuestion(*this, QStringLiteral("Would you like to compact the database?")),
      cmdYes(*this, QStringLiteral("Yes")),
      cmdNo(*this, QStringLiteral("No")),
      cmdRemind(*this, QStringLiteral("Remind me later")) {
  SetCaption(QStringLiteral("Compact the database"));
  SetClientSize(5700, 1980);
  lblReason.Place(240, 180, 5220, 600);
  lblReason.SetWordWrap(true);
  lblQuestion.Place(240, 840, 5220, 300);
  cmdYes.Place(240, 1380, 1560, 405);
  cmdNo.Place(1980, 1380, 1560, 405);
  cmdRemind.Place(3720, 1380, 1740, 405);
  cmdYes.Click = [this] { End(Yes); };
  cmdNo.Click = [this] { End(No); };
  cmdRemind.Click = [this] { End(RemindLater); };
}

void CompactForm::End(Answers answer) {
  Result = answer;
  Hide();
}

}  // namespace orv
