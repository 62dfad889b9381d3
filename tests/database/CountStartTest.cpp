#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "base/RuntimeError.h"
#include "base/Settings.h"
#include "database/CountStart.h"
#include "database/frmCR.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CountStartTest : public testing::Test {
 protected:
  CountStartTest() { modData::cn = Connection(); }

  QString Loaded() {
    return GetSetting(QStringLiteral("Database"), QStringLiteral("Loaded"), QStringLiteral("-"));
  }
  void SetLoaded(const QString& text) {
    SaveSetting(QStringLiteral("Database"), QStringLiteral("Loaded"), text);
  }
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
    QString outcome;
    try {
      CountStart();
      outcome = Loaded();
    } catch (const RuntimeError& error) {
      outcome = QStringLiteral("error %1").arg(error.Number());
    }
    const bool asked = dialogs_.modals.empty();
    dialogs_.modals.clear();
    return outcome + (asked ? QStringLiteral(" asked") : QString());
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
};

TEST_F(CountStartTest, CountsAndAsksFromTheTwentyFirstStartOn) {
  for (int start = 1; start <= 20; ++start) EXPECT_EQ(Start(), QString::number(start));
  const struct {
    const char* loaded;
    int result;
    const char* outcome;
  } cases[] = {{"20", 0, "20 asked"},         {"20", 2, "21 asked"},    {"21", 2, "22 asked"},
               {"500", 3, "11 asked"},        {"19", 2, "20"},          {"-7", 0, "-6"},
               {"32767", 2, "error 6 asked"}, {"32767", 3, "11 asked"}, {"32768", 0, "error 6"},
               {"many", 0, "error 13"},       {"", 0, "error 13"},      {"20", 1, "1 asked"}};
  for (const auto& one : cases) {
    SetLoaded(QString(one.loaded));
    EXPECT_EQ(Start(one.result), one.outcome) << one.loaded;
  }
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_FALSE(frmCR.IsLoaded());
}

TEST_F(CountStartTest, YesCountsAsDoneAlsoWhereItFailed) {
  QFile::resize(modData::DatabasePath(), 3000);
  SetLoaded(QStringLiteral("20"));
  EXPECT_EQ(Start(1), "1 asked");
  EXPECT_EQ(dialogs_.boxes.size(), 2U);
}

TEST_F(CountStartTest, WhatFailsHereEndsInAMissingDatabase) {
  SetLoaded(QStringLiteral("many"));
  modData::OpenDatabase(CountStart);
  EXPECT_FALSE(modData::DatabaseFound);
  SetLoaded(QStringLiteral("3"));
  modData::OpenDatabase(CountStart);
  EXPECT_TRUE(modData::DatabaseFound);
  EXPECT_EQ(Loaded(), "4");
}

TEST_F(CountStartTest, TheDialogAsksInItsWords) {
  EXPECT_EQ(frmCR->Caption(), "Compact the database");
  EXPECT_EQ(frmCR->lblReason.Caption(),
            "You have used the ORV for a while now and it might be time to compact the database.");
  EXPECT_EQ(frmCR->lblQuestion.Caption(), "Would you like to compact the database?");
  EXPECT_EQ(frmCR->Result, 0);
}

}  // namespace
}  // namespace orv
