#pragma once

#include <gtest/gtest.h>

#include "base/Settings.h"
#include "forms/Application.h"
#include "shell/Main.h"
#include "shell/frmMaster.h"
#include "shell/frmSetName.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {

// The program as it starts, with its main window.
class MasterScene {
 protected:
  // For the first time, whatever an earlier start has left.
  void Start() {
    SaveSetting("LeftOff", "Databases", {});
    StartAgain();
  }
  void StartAgain() {
    modData::cn = Connection();
    ASSERT_TRUE(Main());
  }
  // What the user does in the dialog for a set.
  void FillSet(const QString& name, bool third, int language = 0) {
    dialogs_.modals.push_back([=](Form&) {
      Retype(frmSetName->txtName, name);
      Choose(frmSetName->cboLanguage, language);
      if (third) ClickOn(frmSetName->opt3rd);
      ClickOn(frmSetName->cmdOK);
    });
  }
  QString Scalar(const char* query) { return database_.Scalar(query); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
};

}  // namespace orv
