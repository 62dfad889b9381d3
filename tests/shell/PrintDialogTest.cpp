// The dialog that writes a set as sheets for print.
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTimer>
#include <QToolButton>

#include "base/Settings.h"
#include "composition/CardPreview.h"
#include "editors/frmCard2nd.h"
#include "shell/MasterScene.h"
#include "shell/frmPrint.h"

namespace orv {
namespace {

class PrintDialogTest : public MasterScene, public testing::Test {
 protected:
  void SetUp() override {
    const int set = database_.AddSet("Bay: east", 2);
    for (int nr = 1; nr <= 3; ++nr) database_.AddCard(set, nr, QString("Card %1").arg(nr));
    database_.Execute("UPDATE tblCard_rows SET Copies = 1");
    Start();
  }
  // Presses the tool, and does something in the dialog.
  void Open(const std::function<void(PrintForm&)>& use) {
    dialogs_.modals.push_back([use](Form&) { use(*frmPrint); });
    frmMaster->tbar.ButtonClick("print");
  }
  static void Type(const char* option, const char* text) { Retype(*frmPrint->FieldOf(option).text, text); }
  QString Pdf() const { return database_.Path("sheets.pdf"); }
};

TEST_F(PrintDialogTest, PrintsTheSetAndLeavesTheEditorOnItsCard) {
  const auto tools = frmMaster->tbar.Handle()->findChildren<QToolButton*>();
  EXPECT_EQ(tools.at(tools.size() - 2)->toolTip(), "Print sheets") << "beside the menu, behind the eight";
  frmMaster->tbar.ButtonClick("card2nd");
  ClickOn(frmCard2nd->cmdCardNav[1 + 1]);
  const Picture before = CardPreviewOf(2).picCard.Render();
  dialogs_.files.push_back(Pdf());
  Open([](PrintForm& form) {
    Type("numbers", "1,3");
    ClickOn(form.cmdPrint);
  });
  EXPECT_EQ(dialogs_.file_dialogs.back().FileName, "Bay_ east.pdf");
  EXPECT_EQ(dialogs_.LastPrompt(), "Cards: 2, sheets: 1.");
  EXPECT_GT(QFileInfo(Pdf()).size(), 1000);
  EXPECT_EQ(frmCard2nd->lblCurrentCard.Caption(), "2 (3)");
  EXPECT_EQ(CardPreviewOf(2).picCard.Render().Image(), before.Image());
}

TEST_F(PrintDialogTest, OptionsAreTheUsersAndNonsenseIsRefused) {
  Open([this](PrintForm& form) {
    QString keys;
    for (const auto& field : form.fields) keys += field->label.Caption();
    for (const auto* button : {&form.cmdCheck, &form.cmdTestSheet, &form.cmdPrint}) keys += button->Caption();
    keys += form.lblFindings.Caption();
    keys = QStringList(keys.toLower().split('&').mid(1))
               .replaceInStrings(QRegularExpression("(?<=^.).*"), "")
               .join("");
    EXPECT_EQ(keys.size(), form.fields.size() + 4);
    EXPECT_EQ(QSet<QChar>(keys.begin(), keys.end()).size(), keys.size()) << qPrintable(keys);
    Type("gap", "-3");
    ClickOn(form.cmdCheck);
    EXPECT_TRUE(dialogs_.LastPrompt().startsWith("\"-3\" is no value for gap"))
        << qPrintable(dialogs_.LastPrompt());
    Type("gap", "2,5");
    Type("numbers", "1");
    ClickOn(form.cmdCheck);
    EXPECT_EQ(form.txtFindings.Text(), "C2 1 Card 1: the picture is empty");
  });
  Open([](PrintForm& form) {
    EXPECT_EQ(form.FieldOf("gap").Text(), "2,5");
    EXPECT_EQ(form.FieldOf("numbers").Text(), "") << "which cards is a matter of the set";
  });
  SaveSetting("Print", "paper", "nonsense");
  Open([](PrintForm& form) { EXPECT_EQ(form.FieldOf("paper").Text(), "A4"); });
  EXPECT_FALSE(QFileInfo::exists(Pdf()));
}

TEST_F(PrintDialogTest, StopWritesNothing) {
  dialogs_.files.push_back(Pdf());
  Open([](PrintForm& form) {
    // The button says Stop as soon as the work begins.
    QTimer::singleShot(0, form.cmdDone.Handle(), [&form] { ClickOn(form.cmdDone); });
    ClickOn(form.cmdPrint);
    EXPECT_EQ(form.cmdDone.Caption(), "Done");
    EXPECT_TRUE(form.cmdPrint.Enabled());
  });
  EXPECT_FALSE(QFileInfo::exists(Pdf()));
}

}  // namespace
}  // namespace orv
