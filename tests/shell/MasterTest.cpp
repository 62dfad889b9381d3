#include <gtest/gtest.h>

#include <QWidget>

#include "base/Files.h"
#include "base/Settings.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "forms/Application.h"
#include "output/frmCreate.h"
#include "shell/Main.h"
#include "shell/frmMaster.h"
#include "shell/frmSetName.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class MasterTest : public testing::Test {
 protected:
  void Start() {
    modData::cn = Connection();
    ASSERT_TRUE(Main());
  }
  // What the user does in the dialog for a set.
  void FillSet(const QString& name, bool third) {
    dialogs_.modals.push_back([=](Form&) {
      Retype(frmSetName->txtName, name);
      if (third) ClickOn(frmSetName->opt3rd);
      ClickOn(frmSetName->cmdOK);
    });
  }
  QString Scalar(const char* query) { return database_.Scalar(QString::fromLatin1(query)); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
};

TEST_F(MasterTest, WithoutASetThePanelIsHidden) {
  Start();
  EXPECT_FALSE(frmMaster->ptSet.Visible());
  EXPECT_FALSE(frmMaster->cboSet.Enabled());
  EXPECT_TRUE(frmCard2nd.IsLoaded());
  EXPECT_FALSE(frmCard3rd.IsLoaded());
  frmMaster->tbar.ButtonClick(QStringLiteral("createall"));
  EXPECT_EQ(dialogs_.LastPrompt(), QStringLiteral("Select a set first."));
  frmMaster->tbar.ButtonClick(QStringLiteral("exporttotext"));
  EXPECT_EQ(dialogs_.boxes.size(), 1u) << "without a set it ends silently";
}

TEST_F(MasterTest, ANewSetBecomesCurrentWithItsFonts) {
  database_.AddSet(QStringLiteral("Zebra"), 2);
  Start();
  FillSet(QStringLiteral("Ärger"), true);
  ClickOn(frmMaster->cmdNew);
  EXPECT_EQ(frmMaster->cboSet.Text(), QStringLiteral("Ärger"));
  EXPECT_EQ(frmMaster->cboSet.ListIndex(), 0);
  EXPECT_EQ(modData::CurrentEditionID, 3);
  EXPECT_EQ(Scalar("SELECT count(*) FROM tblFont"), QStringLiteral("26"));
  EXPECT_EQ(Scalar("SELECT Font || Size FROM tblFont f JOIN tblSet s ON f.FontID = s.CardTitleFontID WHERE "
                   "EditionID = 3"),
            QStringLiteral("CasablancaAntique14"));
  FillSet(QStringLiteral("Other"), false);
  ClickOn(frmMaster->cmdEdit);
  EXPECT_EQ(Scalar("SELECT SetName FROM tblSet WHERE EditionID = 3"), QStringLiteral("Other"));
  dialogs_.answers = {Answer::No, Answer::Yes, Answer::Yes};
  ClickOn(frmMaster->cmdDelete);
  EXPECT_EQ(frmMaster->cboSet.ListCount(), 2);
  ClickOn(frmMaster->cmdDelete);
  EXPECT_EQ(frmMaster->cboSet.Text(), QStringLiteral("Zebra"));
  EXPECT_EQ(Scalar("SELECT count(*) FROM tblFont"), QStringLiteral("13"));
  ClickOn(frmMaster->cmdDelete);
  EXPECT_FALSE(frmMaster->ptSet.Visible());
  EXPECT_FALSE(frmMaster->cmdDelete.Enabled());
}

TEST_F(MasterTest, ASetWithoutANameIsWarnedOfAndMade) {
  Start();
  FillSet(QString(), false);
  ClickOn(frmMaster->cmdNew);
  EXPECT_EQ(dialogs_.LastPrompt(), QStringLiteral("You must name the set."));
  EXPECT_EQ(frmMaster->cboSet.ListCount(), 1);
}

TEST_F(MasterTest, TheSymbolAndTheNumberGoToTheSet) {
  const int set = database_.AddSet(QStringLiteral("Set"), 2);
  database_.AddCard(set, 1, QStringLiteral("Card"));
  Start();
  ClickOn(frmMaster->chkAutonumber);
  EXPECT_EQ(Scalar("SELECT Autonumber FROM tblSet"), QStringLiteral("-1"));
  EXPECT_TRUE(frmCard2nd->Preview().lblAutonumber.Visible());
  dialogs_.files = {
      database_.WriteFile(QStringLiteral("no.gif"), "nothing"),
      database_.WriteFile(QStringLiteral("s.bmp"), TestDatabase::PlainPicture(9, 9, Rgb(1, 1, 1)))};
  ClickOn(frmMaster->cmdSymbolAdd);
  EXPECT_EQ(Scalar("SELECT UseSymbol FROM tblSet"), QStringLiteral("0"));
  ClickOn(frmMaster->cmdSymbolAdd);
  EXPECT_EQ(Scalar("SELECT UseSymbol FROM tblSet"), QStringLiteral("-1"));
  EXPECT_EQ(frmCard2nd->Preview().picSymbol.Width(), 9);
  ClickOn(frmMaster->cmdSymbolDel);
  EXPECT_EQ(Scalar("SELECT UseSymbol || ',' || (length(Symbol) > 9) FROM tblSet"), QStringLiteral("0,1"))
      << "the bytes stay";
}

TEST_F(MasterTest, TheCardButtonOpensTheEditorOfTheEdition) {
  database_.AddSet(QStringLiteral("A"), 2);
  database_.AddSet(QStringLiteral("B"), 3);
  Start();
  const auto press = [&] { frmMaster->tbar.ButtonClick(QStringLiteral("card2nd")); };
  press();
  EXPECT_TRUE(frmCard2nd.IsVisible());
  press();
  EXPECT_FALSE(frmCard2nd.IsVisible());
  Choose(frmMaster->cboSet, 1);
  press();
  EXPECT_TRUE(frmCard3rd.IsVisible());
  frmMaster->tbar.SetValue(3, 1);
  frmCard3rd.Unload();
  EXPECT_EQ(frmMaster->tbar.Value(3), 0) << "a closed editor releases its button";
}

TEST_F(MasterTest, AnOpenEditorFollowsTheSet) {
  const int a = database_.AddSet(QStringLiteral("A"), 2);
  const int b = database_.AddSet(QStringLiteral("B"), 2);
  database_.AddCard(a, 1, QStringLiteral("of A"));
  database_.AddCard(b, 1, QStringLiteral("of B"));
  Start();
  frmCard2nd->Show();
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), QStringLiteral("of A"));
  Choose(frmMaster->cboSet, 1);
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), QStringLiteral("of B"));
}

TEST_F(MasterTest, ThePlacementIsKeptAndBroughtOntoTheScreen) {
  SaveSetting(QStringLiteral("MainWindow"), QStringLiteral("WidthPos"), QStringLiteral("6000"));
  SaveSetting(QStringLiteral("MainWindow"), QStringLiteral("HeightPos"), QStringLiteral("4500"));
  SaveSetting(QStringLiteral("MainWindow"), QStringLiteral("LeftPos"), QStringLiteral("-900"));
  SaveSetting(QStringLiteral("MainWindow"), QStringLiteral("TopPos"), QString::number(Screen::Height()));
  Start();
  EXPECT_EQ(frmMaster->Width(), 6000);
  EXPECT_EQ(frmMaster->Left(), 0);
  EXPECT_EQ(frmMaster->Top() + frmMaster->Height(), Screen::Height());
  frmMaster->SetWidth(7500);
  frmMaster.Unload();
  EXPECT_EQ(GetSetting(QStringLiteral("MainWindow"), QStringLiteral("WidthPos")), QStringLiteral("7500"));
}

TEST(StartTest, AFileThatIsNoDatabaseIsMissingAndLeftAsItWas) {
  const struct {
    const char* what;
    QByteArray bytes;
  } rows[] = {{"empty", ""},
              {"text", "This is a text and no database at all.\n"},
              {"header", QByteArray("SQLite format 3\0", 16)}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    TestDatabase database;
    DialogScript dialogs;
    const DialogResponderScope scope(dialogs);
    modData::cn = Connection();
    database.WriteFile(QStringLiteral("orv.mdb"), row.bytes);
    EXPECT_FALSE(Main());
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].prompt,
              QStringLiteral("The database is missing.\r\n\r\nMake sure the file ORV.MDB is in "
                             "the same folder as the program."));
    EXPECT_EQ(dialogs.boxes[0].title, QStringLiteral("Missing database"));
    EXPECT_EQ(ReadWhole(database.Path(QStringLiteral("orv.mdb"))), row.bytes);
  }
}

TEST(StartTest, ADatabaseWithoutATableOrCutShortIsMissingToo) {
  for (const bool cut : {false, true}) {
    TestDatabase database;
    DialogScript dialogs;
    const DialogResponderScope scope(dialogs);
    if (!cut) database.Execute(QStringLiteral("DROP TABLE tblArea"));
    modData::cn = Connection();
    const QString path = database.Path(QStringLiteral("orv.mdb"));
    QByteArray bytes = ReadWhole(path);
    if (cut) bytes.truncate(bytes.size() - 5000);
    ReplaceFile(path, bytes);
    EXPECT_FALSE(Main());
    EXPECT_EQ(ReadWhole(path), bytes);
  }
}

}  // namespace
}  // namespace orv
