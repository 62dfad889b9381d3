#include "MasterScene.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

#include "base/App.h"
#include "base/Files.h"
#include "base/Settings.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Lifetime.h"
#include "shell/frmCreate.h"
#include "shell/inner/About.h"
#include "shell/inner/LeftOff.h"
#include "support/Errors.h"
#include "support/Gestures.h"

namespace orv {
namespace {

class MasterTest : public testing::Test, protected MasterScene {};

TEST_F(MasterTest, WithoutASetThePanelIsHidden) {
  Start();
  EXPECT_FALSE(frmMaster->ptSet.Visible());
  EXPECT_FALSE(frmMaster->cboSet.Enabled());
  EXPECT_FALSE(frmMaster->cmdDelete.Enabled());
  EXPECT_TRUE(frmCard2nd.IsLoaded());
  EXPECT_FALSE(frmCard3rd.IsLoaded());
  frmMaster->tbar.ButtonClick("createall");
  EXPECT_EQ(dialogs_.LastPrompt(), "Select a set first.");
  frmMaster->tbar.ButtonClick("exporttotext");
  EXPECT_EQ(dialogs_.boxes.size(), 1u) << "without a set it ends silently";
}

TEST_F(MasterTest, TheKeyboardIsNeverOnTheExitButtonByItself) {
  const int set = database_.AddSet("A", 2);
  database_.AddCard(set, 1, "Card");
  Start();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmMaster->Handle()));
  EXPECT_TRUE(frmMaster->cboSet.HasFocus());
  for (const bool by_frame : {false, true}) {
    frmMaster->tbar.ButtonClick("card2nd");
    frmCard2nd->txtTitle.SetFocus();
    if (by_frame) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4, Qt::ControlModifier);
    } else {
      frmMaster->tbar.ButtonClick("card2nd");
    }
    EXPECT_FALSE(frmCard2nd.IsVisible());
    EXPECT_TRUE(frmMaster->cboSet.HasFocus()) << by_frame;
  }
  dialogs_.answers = {Answer::Yes};
  frmMaster->cmdDelete.SetFocus();
  PressKey(frmMaster->cmdDelete, Qt::Key_Space);
  EXPECT_EQ(dialogs_.boxes.back().buttons, Buttons::NoYes);
  EXPECT_TRUE(frmMaster->cmdNew.HasFocus()) << "the last set is gone";
  frmMaster.Unload();
  Start();
  EXPECT_TRUE(frmMaster->cmdNew.HasFocus());
}

TEST_F(MasterTest, ANewSetBecomesCurrentWithItsFonts) {
  database_.AddSet("Zebra", 2);
  Start();
  FillSet("Ärger", true);
  ClickOn(frmMaster->cmdNew);
  EXPECT_EQ(frmMaster->cboSet.Text(), "Ärger");
  EXPECT_EQ(frmMaster->cboSet.ListIndex(), 0);
  EXPECT_EQ(modData::CurrentEditionID, 3);
  EXPECT_EQ(Scalar("SELECT count(*) FROM tblFont"), "26");
  EXPECT_EQ(Scalar("SELECT Font || Size FROM tblFont f JOIN tblSet s ON f.FontID = s.CardTitleFontID WHERE "
                   "EditionID = 3"),
            "CasablancaAntique14");
  FillSet("Other", false);
  ClickOn(frmMaster->cmdEdit);
  EXPECT_EQ(Scalar("SELECT SetName FROM tblSet WHERE EditionID = 3"), "Other");
  dialogs_.answers = {Answer::No, Answer::Yes, Answer::Yes};
  ClickOn(frmMaster->cmdDelete);
  EXPECT_EQ(frmMaster->cboSet.ListCount(), 2);
  ClickOn(frmMaster->cmdDelete);
  EXPECT_EQ(frmMaster->cboSet.Text(), "Zebra");
  EXPECT_EQ(Scalar("SELECT count(*) FROM tblFont"), "13");
  ClickOn(frmMaster->cmdDelete);
  EXPECT_FALSE(frmMaster->ptSet.Visible());
  EXPECT_FALSE(frmMaster->cmdDelete.Enabled());
}

TEST_F(MasterTest, ASetWithoutANameIsWarnedOfAndMade) {
  Start();
  FillSet(QString(), false);
  ClickOn(frmMaster->cmdNew);
  EXPECT_EQ(dialogs_.LastPrompt(), "You must name the set.");
  EXPECT_EQ(frmMaster->cboSet.ListCount(), 1);
}

TEST_F(MasterTest, TheSymbolAndTheNumberGoToTheSet) {
  const int set = database_.AddSet("Set", 2);
  database_.AddCard(set, 1, "Card");
  Start();
  ClickOn(frmMaster->chkAutonumber);
  EXPECT_EQ(Scalar("SELECT Autonumber FROM tblSet"), "-1");
  EXPECT_TRUE(frmCard2nd->Preview().lblAutonumber.Visible());
  dialogs_.files = {database_.WriteFile("no.gif", "nothing"),
                    database_.WriteFile("s.bmp", TestDatabase::PlainPicture(9, 9, Rgb(1, 1, 1)))};
  ClickOn(frmMaster->cmdSymbolAdd);
  EXPECT_EQ(Scalar("SELECT UseSymbol FROM tblSet"), "0");
  ClickOn(frmMaster->cmdSymbolAdd);
  EXPECT_EQ(Scalar("SELECT UseSymbol FROM tblSet"), "-1");
  EXPECT_EQ(frmCard2nd->Preview().picSymbol.Width(), 9);
  ClickOn(frmMaster->cmdSymbolDel);
  EXPECT_EQ(Scalar("SELECT UseSymbol || ',' || (length(Symbol) > 9) FROM tblSet"), "0,1") << "the bytes stay";
  database_.Execute(
      "CREATE TRIGGER refuse BEFORE UPDATE ON tblSet_rows BEGIN SELECT RAISE(ABORT, 'refused'); END");
  dialogs_.files = {database_.Path("s.bmp")};
  EXPECT_EQ(ErrorOf([] { frmMaster->cmdSymbolAdd.Click(); }), kErrDatabase);
}

// The first one by the panel, since a set without a symbol shows no place for it.
TEST_F(MasterTest, ASymbolIsDroppedOrPasted) {
  const int set = database_.AddSet("Set", 2);
  database_.AddCard(set, 1, "Card");
  Start();
  const QImage tall = QImage(60, 120, QImage::Format_RGB32);
  const QString file = database_.WriteFile("small.bmp", TestDatabase::PlainPicture(7, 9, Rgb(1, 1, 1)));
  const auto sides = [&] {
    const QImage stored =
        LoadPicture(modData::OpenSnapshot("SELECT * FROM tblSet")["Symbol"].Bytes()).Image();
    EXPECT_EQ(stored, frmMaster->picSetSymbol.Picture().Image());
    EXPECT_EQ(stored.size(), frmCard2nd->Preview().picSymbol.Picture().Image().size());
    return QStringLiteral("%1x%2 %3")
        .arg(stored.width())
        .arg(stored.height())
        .arg(Scalar("SELECT UseSymbol FROM tblSet"));
  };
  QGuiApplication::clipboard()->setImage(tall);
  EXPECT_TRUE(ChooseFromMenu(frmMaster->ptSet, 3, 3, "Paste"));
  EXPECT_EQ(sides(), "13x25 -1");
  EXPECT_TRUE(DropFiles(frmMaster->viewSetSymbol, 4, 4, {file}));
  EXPECT_EQ(sides(), "7x9 -1") << "none is enlarged";
  EXPECT_TRUE(ChooseFromMenu(frmMaster->viewSetSymbol, 4, 4, "Paste"));
  EXPECT_EQ(sides(), "13x25 -1");
  ClickOn(frmMaster->cmdSymbolDel);
  EXPECT_TRUE(ChooseFromMenuByKey(frmMaster->cmdSymbolAdd, "Paste"));
  EXPECT_EQ(sides(), "13x25 -1");
  ClickOn(frmMaster->cmdSymbolDel);
  dialogs_.answers = {Answer::No, Answer::Yes};
  EXPECT_TRUE(DropFiles(*frmMaster, 4, 300, {file}));
  EXPECT_EQ(Scalar("SELECT UseSymbol FROM tblSet"), "0");
  EXPECT_TRUE(DropFiles(*frmMaster, 4, 300, {file}));
  EXPECT_EQ(sides(), "7x9 -1");
  EXPECT_TRUE(DropFiles(frmMaster->viewSetSymbol, 4, 4, {database_.WriteFile("no.png", "nothing")}));
  EXPECT_EQ(dialogs_.LastPrompt(),
            "\"no.png\" is no picture that can be read. BMP, JPG, GIF, PNG, WebP and WMF files can.");
  EXPECT_EQ(sides(), "7x9 -1");
  QGuiApplication::clipboard()->clear();
}

TEST_F(MasterTest, TheCardButtonOpensTheEditorOfTheEditionWhichFollowsTheSet) {
  for (const auto& [name, edition] : {std::pair("A", 2), std::pair("B", 2), std::pair("C", 3)}) {
    database_.AddCard(database_.AddSet(name, edition), 1, QString("of %1").arg(name));
  }
  Start();
  const auto press = [&] { frmMaster->tbar.ButtonClick("card2nd"); };
  press();
  EXPECT_TRUE(frmCard2nd.IsVisible());
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), "of A");
  Choose(frmMaster->cboSet, 1);
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), "of B");
  press();
  EXPECT_FALSE(frmCard2nd.IsVisible());
  Choose(frmMaster->cboSet, 2);
  press();
  EXPECT_TRUE(frmCard3rd.IsVisible());
  frmMaster->tbar.SetValue(3, 1);
  frmCard3rd.Unload();
  EXPECT_EQ(frmMaster->tbar.Value(3), 0) << "a closed editor releases its button";
}

TEST_F(MasterTest, WithoutItsRecordAnEditorOnlyShowsWhatItHad) {
  database_.AddCard(database_.AddSet("A", 3), 1, "of A");
  database_.AddSet("B", 3);
  Start();
  frmCard3rd->Show();
  const auto title = [] {
    Retype(frmCard3rd->txtTitle, "typed");
    return frmCard3rd->txtTitle.Text();
  };
  // The other set has no cards, and this editor does not follow by itself.
  Choose(frmMaster->cboSet, 1);
  EXPECT_EQ(title(), "of A");
  ClickOn(frmCard3rd->cmdCardAdd);
  EXPECT_EQ(title(), "typed");
  dialogs_.answers = {Answer::Yes, Answer::Yes};
  ClickOn(frmMaster->cmdDelete);
  EXPECT_EQ(Scalar("SELECT Title FROM tblCard"), "of A");
  ClickOn(frmMaster->cmdDelete);
  EXPECT_EQ(title(), "typed");
  for (const CommandButton* button : {&frmCard3rd->cmdCardNav[2], &frmCard3rd->cmdCardDelete})
    ClickOn(*button);
  EXPECT_EQ(frmCard3rd->txtTitle.Text(), "typed");
  FillSet("New", true);
  ClickOn(frmMaster->cmdNew);
  ClickOn(frmCard3rd->cmdCardAdd);
  EXPECT_EQ(title(), "typed");
  EXPECT_EQ(Scalar("SELECT Title FROM tblCard"), "typed");
}

TEST_F(MasterTest, ThePlacementIsKeptAndBroughtOntoTheScreen) {
  SaveSetting("MainWindow", "WidthPos", "6000");
  SaveSetting("MainWindow", "HeightPos", "4500");
  SaveSetting("MainWindow", "LeftPos", "-900");
  SaveSetting("MainWindow", "TopPos", QString::number(Screen::Height()));
  Start();
  EXPECT_EQ(frmMaster->Width(), 6000);
  EXPECT_EQ(frmMaster->Left(), 0);
  EXPECT_EQ(frmMaster->Top() + frmMaster->Height(), Screen::Height());
  frmMaster->SetWidth(7500);
  frmMaster.Unload();
  EXPECT_EQ(GetSetting("MainWindow", "WidthPos"), "7500");
}

TEST_F(MasterTest, TheProgramOpensWhereItWasLeft) {
  int sets[3];
  for (int i = 0; i < 3; ++i) {
    sets[i] = database_.AddSet(QString(QChar('A' + i)), i == 2 ? 3 : 2);
    for (int nr = 1; nr <= 3; ++nr)
      database_.AddCard(sets[i], nr, QString("%1%2").arg(QChar('A' + i)).arg(nr));
    database_.AddLargeCard(sets[i], 1, "Large");
  }
  const auto expect = [](int set, const QString& card, bool large_is_open) {
    EXPECT_EQ(modData::CurrentSetID, set);
    EXPECT_EQ(frmMaster->cboSet.ListIndex(), set - 1);
    EXPECT_EQ(frmCard2nd.IsVisible(), !card.isEmpty());
    if (!card.isEmpty()) {
      EXPECT_EQ(frmCard2nd->txtTitle.Text(), card);
    }
    EXPECT_EQ(frmMaster->tbar.Value(3), frmCard2nd.IsVisible() || frmCard3rd.IsVisible() ? 1 : 0);
    EXPECT_EQ(frmLarge2nd.IsVisible(), large_is_open);
    EXPECT_EQ(frmMaster->tbar.Value(5), large_is_open ? 1 : 0);
  };
  const auto leave = [] {
    frmMaster.Unload();
    UnloadAll();
  };
  Start();
  expect(sets[0], "", false);
  Choose(frmMaster->cboSet, 1);
  frmMaster->tbar.ButtonClick("large2nd");
  frmMaster->tbar.ButtonClick("card2nd");
  ClickOn(frmCard2nd->cmdCardNav[3]);
  leave();
  StartAgain();
  expect(sets[1], "B3", true);
  EXPECT_EQ(RecordEditor::InFront(), &*frmCard2nd);
  Retype(frmCard2nd->txtTitle, "typed");
  EXPECT_EQ(Scalar("SELECT Title FROM tblCard WHERE CardID = 6"), "typed");
  leave();
  database_.Execute("DELETE FROM tblCard WHERE CardID = 6");
  StartAgain();
  expect(sets[1], "B1", true);
  Choose(frmMaster->cboSet, 2);
  frmCard2nd->Hide();
  frmMaster->tbar.ButtonClick("card2nd");
  leave();
  StartAgain();
  expect(sets[2], "", true);
  EXPECT_TRUE(frmCard3rd.IsVisible());
  leave();
  database_.Execute("DELETE FROM tblSet WHERE SetName = 'C'");
  StartAgain();
  expect(sets[0], "", false);
  EXPECT_FALSE(frmCard3rd.IsVisible());
  leave();
  for (const char* nonsense : {"{", "[1,null,{}]", R"([{"database":7,"set":{}}])"}) {
    SaveSetting("LeftOff", "Databases", nonsense);
    StartAgain();
    expect(sets[0], "", false);
    leave();
  }
}

TEST_F(MasterTest, TheDatabasesThatWereLeftLongestAgoAreForgotten) {
  const auto path = [this](int i) { return database_.WriteFile(QString("%1.mdb").arg(i), "x"); };
  for (int i = 1; i <= 21; ++i) LeftOff{.set = i, .editors = {{"frmLarge2nd", i}}}.Keep(path(i));
  LeftOff{.set = 30, .editors = {}}.Keep(path(3));
  EXPECT_EQ(LeftOff::Of(path(1)).set, 0);
  EXPECT_EQ(LeftOff::Of(path(2)).editors.front().record, 2);
  EXPECT_EQ(LeftOff::Of(path(3)).set, 30);
  EXPECT_EQ(LeftOff::Of(path(21)).set, 21);
}

TEST_F(MasterTest, AboutTellsVersionAndLicences) {
  Start();
  dialogs_.modals = {[](Form&) {
    EXPECT_TRUE(frmAbout->lblVersion.Caption().endsWith(App::Running().version));
    const QString licences = frmAbout->txtLicences.Text();
    for (const char* part : {"GPL-3+", "OFL-1.1", "libjpeg"}) EXPECT_TRUE(licences.contains(part)) << part;
    PressKey(frmAbout->txtLicences, Qt::Key_X);
    EXPECT_EQ(frmAbout->txtLicences.Text(), licences);
    PressKey(frmAbout->txtLicences, Qt::Key_Escape);
    EXPECT_FALSE(frmAbout.IsVisible());
  }};
  frmMaster->tbar.ButtonClick("about");
  EXPECT_TRUE(dialogs_.modals.empty());
}

TEST_F(MasterTest, AFileThatIsNoWholeDatabaseIsMissingAndLeftAsItWas) {
  const QString path = database_.Path("orv.mdb");
  const QByteArray whole = ReadWhole(path);
  database_.Execute("DROP TABLE tblArea");
  modData::cn = Connection();
  for (const QByteArray& bytes :
       {ReadWhole(path), whole.chopped(5000), QByteArray("A text, no database.\n")}) {
    SCOPED_TRACE(bytes.size());
    database_.WriteFile("orv.mdb", bytes);
    dialogs_.boxes.clear();
    EXPECT_FALSE(Main());
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(
        dialogs_.boxes[0].prompt,
        "The database is missing.\r\n\r\nMake sure the file ORV.MDB is in the same folder as the program.");
    EXPECT_EQ(dialogs_.boxes[0].title, "Missing database");
    EXPECT_EQ(ReadWhole(path), bytes);
  }
}

}  // namespace
}  // namespace orv
