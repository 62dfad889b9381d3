#include <gtest/gtest.h>

#include <QFile>
#include <QSettings>
#include <tuple>

#include "base/Settings.h"
#include "database/CountStart.h"
#include "database/frmCR.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Errors.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CountStartTest : public testing::Test {
 protected:
  CountStartTest() { modData::cn = Connection(); }

  QString Loaded() { return GetSetting("Database", "Loaded", "-"); }
  void SetLoaded(const QString& text) { SaveSetting("Database", "Loaded", text); }
  // Answers the dialog once, with the button of a Result, or closes it for 0.
  void Answer(int result) {
    dialogs_.modals.push_back([result](Form&) {
      const CommandButton* const buttons[] = {&frmCR->cmdYes, &frmCR->cmdNo, &frmCR->cmdRemind};
      if (result > 0) ClickOn(*buttons[result - 1]);
    });
  }
  // The counter after a start, or the number of the error; whether the dialog was shown, too.
  QString Start(int result = 0) {
    Answer(result);
    const int error = ErrorOf(CountStart);
    const bool asked = dialogs_.modals.empty();
    dialogs_.modals.clear();
    return (error == 0 ? Loaded() : QString("error %1").arg(error)) + (asked ? " asked" : "");
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
};

TEST_F(CountStartTest, CountsAndAsksFromTheTwentyFirstStartOn) {
  for (int start = 1; start <= 20; ++start) EXPECT_EQ(Start(), QString::number(start));
  using Row = std::tuple<const char*, int, const char*>;
  for (const auto& [loaded, result, outcome] :
       {Row("20", 0, "20 asked"), Row("20", 2, "21 asked"), Row("21", 2, "22 asked"),
        Row("500", 3, "11 asked"), Row("19", 2, "20"), Row("-7", 0, "-6"), Row("32767", 2, "error 6 asked"),
        Row("32767", 3, "11 asked"), Row("32768", 0, "error 6"), Row("many", 0, "error 13"),
        Row("", 0, "error 13"), Row("20", 1, "1 asked")}) {
    SetLoaded(loaded);
    EXPECT_EQ(Start(result), outcome) << loaded;
  }
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_FALSE(frmCR.IsLoaded());
}

TEST_F(CountStartTest, YesCountsAsDoneAlsoWhereItFailed) {
  QFile::resize(modData::DatabasePath(), 3000);
  SetLoaded("20");
  EXPECT_EQ(Start(1), "1 asked");
  EXPECT_EQ(dialogs_.boxes.size(), 2U);
}

TEST_F(CountStartTest, WhatFailsHereEndsInAMissingDatabase) {
  SetLoaded("many");
  modData::OpenDatabase(CountStart);
  EXPECT_FALSE(modData::DatabaseFound);
  SetLoaded("3");
  modData::OpenDatabase(CountStart);
  EXPECT_TRUE(modData::DatabaseFound);
  EXPECT_EQ(Loaded(), "4");
}

TEST_F(CountStartTest, ACounterThatCannotBeWrittenIsNoMissingDatabase) {
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, "/dev/null/none");
  modData::OpenDatabase(CountStart);
  EXPECT_TRUE(modData::DatabaseFound);
}

}  // namespace
}  // namespace orv
