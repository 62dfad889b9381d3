// Two editors work on one recordset of cards, and the main window reopens it: whatever the way there, an edit
// reaches the card on show or none.
#include "MasterScene.h"

#include <QTest>
#include <QWidget>

#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "forms/Lifetime.h"

namespace orv {
namespace {

class SharedCardsTest : public testing::Test, protected MasterScene {
 protected:
  // Sets of five cards, "A1" to "A5" and so on.
  int AddSet(const char* name, int edition) {
    const int set = database_.AddSet(name, edition);
    for (int nr = 1; nr <= 5; ++nr) database_.AddCard(set, nr, QString("%1%2").arg(name).arg(nr));
    return set;
  }
  QString Titles() {
    return Scalar("SELECT group_concat(Title, ' ') FROM (SELECT Title FROM tblCard ORDER BY SetID, Nr)");
  }
  // Keys as they come in a row, each to the control that has the focus by then.
  static void TypeOn(TextBox& box, const char* text) {
    box.SetFocus();
    for (; *text != 0; ++text) QTest::keyClick(box.Handle()->window()->focusWidget(), *text);
  }
  void PressCards() { frmMaster->tbar.ButtonClick("card2nd"); }
};

TEST_F(SharedCardsTest, WhatRedrawsTheEditorsLeavesThemOnTheirCard) {
  const QString symbol = database_.WriteFile("s.bmp", TestDatabase::PlainPicture(9, 9, kBlack));
  AddSet("A", 2);
  const CommandButton MasterForm::* buttons[] = {&MasterForm::cmdSymbolAdd, &MasterForm::cmdSymbolDel};
  const std::function<void()> roads[] = {
      [] { ClickOn(frmMaster->chkAutonumber); },
      [&] { ClickOn((*frmMaster).*buttons[0]); },
      [&] { ClickOn((*frmMaster).*buttons[1]); },
      [] {
        frmCard2nd.Unload();
        ClickOn(frmMaster->chkAutonumber);
      },
  };
  QString expected = "A1 A2 A3 A4 A5";
  for (const auto& road : roads) {
    Start();
    PressCards();
    ClickOn(frmCard2nd->cmdCardNav[3]);
    dialogs_.files = {symbol};
    road();
    EXPECT_EQ(frmCard2nd->lblCurrentCard.Caption(), QString("%1 (%1)").arg(frmCard2nd->lblCurrentCard.Tag()));
    Retype(frmCard2nd->txtTitle, "typed");
    EXPECT_EQ(Titles(), expected.chopped(2) + "typed");
    ClickOn(frmCard2nd->cmdCardDelete);
    expected.chop(3);
    EXPECT_EQ(Titles(), expected);
    UnloadAll();
  }
}

TEST_F(SharedCardsTest, AnEditorOfTheThirdEditionWhoseSetWasLeftTakesNoEdit) {
  AddSet("A", 3);
  AddSet("B", 3);
  const std::function<void()> edits[] = {
      [] { TypeOn(frmCard3rd->txtTitle, "typed"); },
      [] { ClickOn(frmCard3rd->cmdCardDelete); },
      [] { ClickOn(frmCard3rd->chkFrame); },
      [] { ClickOn(frmCard3rd->cmdDelPic); },
      [] { Choose(frmCard3rd->cboType, 1); },
      [] { PressKey(frmCard3rd->viewCard, Qt::Key_Left); },
      [] { frmCard3rd->Preview().lblPicSize.MouseMove({1, 0, 0, 300}); },
  };
  for (const auto& edit : edits) {
    Start();
    PressCards();
    ClickOn(frmCard3rd->cmdCardNav[3]);
    frmCard3rd->Preview().picImage.SetFocus();
    Choose(frmMaster->cboSet, 1);
    EXPECT_EQ(frmCard3rd->txtTitle.Text(), "A5") << "it doesn't follow by itself";
    const QString whole =
        "SELECT group_concat(Title || Nr || UsePicture || UseFrame || PicLeft || PicHeight || "
        "CardTypeID) FROM (SELECT * FROM tblCard ORDER BY CardID)";
    const QString before = database_.Scalar(whole);
    edit();
    EXPECT_EQ(database_.Scalar(whole), before);
    EXPECT_EQ(frmCard3rd->txtTitle.Text(), "B1") << "what is there is shown";
    UnloadAll();
  }
}

TEST_F(SharedCardsTest, AnEditorDeletesItsOwnCardWhereverTheOtherHasWalked) {
  AddSet("A", 2);
  AddSet("B", 3);
  Start();
  PressCards();
  Choose(frmMaster->cboSet, 1);
  PressCards();
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), "B1");
  for (int i = 0; i < 2; ++i) ClickOn(frmCard3rd->cmdCardNav[2]);
  ClickOn(frmCard2nd->cmdCardDelete);
  EXPECT_EQ(Titles(), "A1 A2 A3 A4 A5 B2 B3 B4 B5");
  Retype(frmCard3rd->txtTitle, "third");
  EXPECT_EQ(Titles(), "A1 A2 A3 A4 A5 B2 third B4 B5");
  // Deleted under the other editor, its card takes nothing more.
  ClickOn(frmCard3rd->cmdCardNav[0]);
  frmCard2nd->UpdateDisplay();
  ClickOn(frmCard3rd->cmdCardDelete);
  TypeOn(frmCard2nd->txtTitle, "late");
  EXPECT_EQ(Titles(), "A1 A2 A3 A4 A5 third B4 B5");
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), "third");
}

TEST_F(SharedCardsTest, AHiddenEditorAndANewCardGoByTheCurrentSet) {
  AddSet("A", 2);
  database_.Execute("UPDATE tblCardType SET LanguageID = 2 WHERE CardTypeID = 5");
  database_.Execute("UPDATE tblCardBack SET LanguageID = 2 WHERE CardBackID = 5");
  const auto add = [&](const char* name) {
    FillSet(name, true, 1);
    ClickOn(frmMaster->cmdNew);
    if (!frmCard3rd.IsVisible()) PressCards();
    ClickOn(frmCard3rd->cmdCardAdd);
    EXPECT_EQ(
        Scalar(
            "SELECT Title || CardTypeID || CardBackID || (SELECT group_concat(DefaultCardTypeID || "
            "DefaultCardBackID) FROM tblSet s WHERE s.SetID = c.SetID) FROM tblCard c ORDER BY CardID DESC"),
        "CARD 15555");
  };
  Start();
  ClickOn(frmMaster->chkAutonumber);  // loads the editor of the 3rd edition, with this set's language
  add("new");
  // Open, it is left with another set's lists by the next new set.
  Choose(frmMaster->cboSet, 0);
  database_.Execute("UPDATE tblSet SET EditionID = 3 WHERE SetName = 'A'");
  frmMaster->InitialiseSet();
  ClickOn(frmCard3rd->cmdCardNav[0]);
  EXPECT_EQ(frmCard3rd->cboType.Text(), "Place Site (4)");
  add("newer");
}

TEST_F(SharedCardsTest, AStartAreaThatWaitsIsDroppedWhenTheEditorIsOpenedAnew) {
  database_.AddCharacter(database_.AddSet("A", 2), 1, "Someone");
  Start();
  frmCharacter2nd->Show();
  Choose(frmCharacter2nd->cboStartArea, 0);
  EXPECT_EQ(Scalar("SELECT StartingAreaID FROM tblCharacter"), "1");
  Choose(frmMaster->cboSet, 0);
  EXPECT_EQ(Scalar("SELECT StartingAreaID FROM tblCharacter"), "1");
}

}  // namespace
}  // namespace orv
