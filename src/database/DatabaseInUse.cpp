#include "database/DatabaseInUse.h"

#include <memory>
#include <optional>

#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "records/LockWaiting.h"

namespace orv {

void TellWhenDatabaseIsInUse() {
  WaitingForLock = [hourglass = std::make_shared<std::optional<WaitCursor>>()](bool waiting) {
    waiting ? void(hourglass->emplace()) : hourglass->reset();
  };
  GoOnWaiting = [] {
    return MsgBox(
               QStringLiteral("Another program is using the database.\r\n\r\nWould you like to try again?"),
               Icon::Exclamation, QStringLiteral("Database in use"), Buttons::YesNo) == Answer::Yes;
  };
}

}  // namespace orv
