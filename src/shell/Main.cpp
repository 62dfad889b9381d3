#include "shell/Main.h"

#include "database/CountStart.h"
#include "database/DatabaseInUse.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Dialogs.h"
#include "shell/frmMaster.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
bool Main() {
  TellWhenDatabaseIsInUse();
  const ProgramFolder folder = SettleProgramFolder();
  if (!folder.news.isEmpty()) MsgBox(folder.news, Icon::Information, QStringLiteral("New folder"));
  if (folder.usable) modData::OpenDatabase(CountStart);
  if (!modData::DatabaseFound) {
    MsgBox(folder.missing, Icon::Critical, QStringLiteral("Missing database"));
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
