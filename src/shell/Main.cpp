#include "shell/Main.h"

#include "database/CountStart.h"
#include "database/DatabaseInUse.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Dialogs.h"
#include "shell/frmMaster.h"
#include "state/modData.h"

namespace orv {
bool Main() {
  TellWhenDatabaseIsInUse();
  modData::OpenDatabase(CountStart);
  if (!modData::DatabaseFound) {
    MsgBox(QStringLiteral("The database is missing.\r\n\r\n"
                          "Make sure the file ORV.MDB is in the same folder as the program."),
           Icon::Critical, QStringLiteral("Missing database"));
    return false;
  }
  modData::CurrentSetID = 0;
  frmMaster->Show();
  frmMaster->InitialiseSet();
  frmMaster->FocusSets();
  frmCard2nd.Load();
  frmCharacter2nd.Load();
  frmLarge2nd.Load();
  return true;
}

}  // namespace orv
