#include "database/CountStart.h"

#include "base/Quietly.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "base/Settings.h"
#include "base/Value.h"
#include "database/frmCR.h"
#include "database/inner/CompactAndRepair.h"
#include "forms/Application.h"

namespace orv {
namespace {

constexpr int kQuietStarts = 19;    // up to this count nothing is asked
constexpr int kAfterReminder = 11;  // leaves nine quiet starts
constexpr int kAfterCompaction = 1;

const QString kSection = QStringLiteral("Database");
const QString kKey = QStringLiteral("Loaded");

// A start that can't be counted, for the user's folder is full or can't be written to, is a start all the
// same.
void SaveCount(int count) {
  Quietly({kErrPathFileAccess}, [count] { SaveSetting(kSection, kKey, QString::number(count)); });
}

int Ask() {
  frmCR->ShowModal();
  const int result = frmCR->Result;
  frmCR.Unload();
  return result;
}

void CompactWithHourglass() {
  const WaitCursor hourglass;
  CompactAndRepair();
}

}  // namespace

void CountStart() {
  const std::int16_t loaded = Value(GetSetting(kSection, kKey, QStringLiteral("0"))).Int16();
  if (loaded <= kQuietStarts) return SaveCount(loaded + 1);
  switch (Ask()) {
    case CompactForm::Yes:
      CompactWithHourglass();
      return SaveCount(kAfterCompaction);
    case CompactForm::No:
      // Asks again at the very next start.
      return SaveCount(ToInt16(loaded + 1));
    case CompactForm::RemindLater:
      return SaveCount(kAfterReminder);
    default:
      return;
  }
}

}  // namespace orv
