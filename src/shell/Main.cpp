#include "shell/Main.h"

#include <QDate>

#include "base/RuntimeError.h"
#include "base/Settings.h"
#include "database/CountStart.h"
#include "database/DatabaseInUse.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "forms/HelpKey.h"
#include "forms/OpenedFiles.h"
#include "shell/Manual.h"
#include "shell/frmMaster.h"
#include "shell/inner/BringOverOldDatabase.h"
#include "shell/inner/SetMenu.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

// Whether another window has the file, or was to have it and doesn't answer.
bool IsTakenElsewhere(const QString& file) {
  if (file.isEmpty()) return false;
  const HandedOver result = HandFileOver(modData::DatabasePath(), file);
  if (result == HandedOver::NoAnswer) {
    MsgBox(QStringLiteral(
               "The program runs already and doesn't answer, so the file was not opened, and nothing "
               "has changed.\r\n\r\nWait until its window answers again, or end it, and open the file "
               "once more:\r\n") +
               file,
           Icon::Exclamation, QStringLiteral("Open a set"));
    Application::Quit(1);
  }
  return result != HandedOver::NobodyThere;
}

}  // namespace

bool Main(const QString& file) {
  SetHelp(ShowManual);
  TellWhenDatabaseIsInUse();
  const ProgramFolder folder = SettleProgramFolder();
  if (IsTakenElsewhere(file)) return false;
  if (!folder.news.isEmpty()) MsgBox(folder.news, Icon::Information, QStringLiteral("New folder"));
  if (!BringOverOldDatabase()) return false;
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
  frmMaster->ShowWhereLeft();
  return true;
}

void OfferSetOfFile(const QString& file) {
  frmMaster->ComeToFront();
  frmMaster->ShowBroughtIn(OfferSet(file));
}

namespace {

// Whether the user was told that there is no room for a copy.
class NoRoomTold {
 public:
  bool Get() const { return !GetSetting(kSection, kKey).isEmpty(); }
  void Set(bool told) const {
    if (told == Get()) return;
    try {
      SaveSetting(kSection, kKey, told ? QStringLiteral("told") : QString());
    } catch (const RuntimeError&) {
      // It is told once more then.
    }
  }

 private:
  const QString kSection = QStringLiteral("Database");
  const QString kKey = QStringLiteral("NoRoomForCopy");
};

}  // namespace

std::unique_ptr<DailyCopy> StartDailyCopy() {
  const NoRoomTold told;
  const QString database = modData::DatabasePath();
  if (HasRoomForCopy(database, QDate::currentDate())) {
    told.Set(false);
    return std::make_unique<DailyCopy>(database);
  }
  if (!told.Get()) {
    told.Set(true);
    MsgBox(QStringLiteral(
               "There is no room on the disk for the copy of the database that is made each day.\r\n\r\n"
               "The program goes on without it."),
           Icon::Information, QStringLiteral("Copy of the database"));
  }
  return nullptr;
}

}  // namespace orv
