// What the card editor makes of what its dialogs did: the catalogues and the card list.
#include <gtest/gtest.h>

#include "catalogues/frmCardBacks.h"
#include "catalogues/frmCardType.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCardList.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Lists.h"
#include "support/Pixels.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class EditorDialogsTest : public testing::Test {
 protected:
  void Open(int edition) {
    const int set = database_.AddSet("Set", edition);
    for (int nr = 1; nr <= 3; ++nr) database_.AddCard(set, nr * 2, QStringLiteral("CARD %1").arg(nr));
    database_.SelectSet(set);
  }
  // Presses a button of an editor and does something in the dialog that it opens.
  void In(const CommandButton& button, const std::function<void()>& action) {
    dialogs_.modals.push_back([action](Form&) { action(); });
    ClickOn(button);
  }
  QString Card(const char* column, int id = 1) {
    return database_.Scalar(
        QStringLiteral("SELECT %1 FROM tblCard WHERE CardID = %2").arg(QString(column)).arg(id));
  }
  static QStringList Entries(const ComboBox& combo) {
    QStringList texts;
    for (int i = 0; i < combo.ListCount(); ++i) texts += combo.List(i);
    return texts;
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
};

TEST_F(EditorDialogsTest, ATypeAddedAndChosenIsSeenAtOnce) {
  Open(2);
  Card2ndForm& editor = *frmCard2nd;
  In(editor.cmdGetType, [] {
    Retype(frmCardType->txtUL, "RUIN");
    Retype(frmCardType->txtNr, "6");
    ClickOn(frmCardType->cmdNew);
    ClickEntry(frmCardType->lvType, "RUIN");
    ClickOn(frmCardType->cmdOK);
  });
  EXPECT_EQ(Card("CardTypeID"), "7");
  EXPECT_EQ(editor.cboType.Text(), "RUIN (6)");
  EXPECT_EQ(editor.Preview().lblType[0]->Caption(), "RUIN");
  // The card keeps its number, which a choice in the combo would have changed.
  EXPECT_EQ(Card("Number"), "1");
  EXPECT_FALSE(frmCardType.IsLoaded());
  // Cancel leaves the card alone; the type that was locked to the set meanwhile is offered, one that is
  // locked to another set isn't.
  In(editor.cmdGetType, [] {
    ClickEntry(frmCardType->lvType, "LOCKED");
    ClickOn(frmCardType->cmdSet);
    ClickOn(frmCardType->cmdSet);
    ClickOn(frmCardType->cmdCancel);
  });
  EXPECT_EQ(Card("CardTypeID"), "7");
  EXPECT_EQ(Entries(editor.cboType).filter("LOCKED").size(), 1);
  EXPECT_EQ(editor.cboType.Text(), "RUIN (6)");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(EditorDialogsTest, ABackAddedAndChosenIsSeenAtOnce) {
  Open(2);
  Card2ndForm& editor = *frmCard2nd;
  const QString path = database_.WriteFile("b.bmp", TestDatabase::PlainPicture(150, 254, Rgb(1, 2, 3)));
  dialogs_.files = {path};
  In(editor.cmdGetCardBack, [] {
    ClickOn(frmCardBacks->cmdLoadPic);
    Retype(frmCardBacks->txtBackText, "Tide");
    ClickOn(frmCardBacks->cmdNew);
    ClickEntry(frmCardBacks->lvCardBack, "Tide");
    ClickOn(frmCardBacks->cmdOK);
  });
  EXPECT_EQ(Card("CardBackID"), "7");
  EXPECT_EQ(editor.cboCardBack.Text(), "Tide");
  EXPECT_EQ(PixelAt(editor.Preview().picBack.Image(), 50, 50), Rgb(1, 2, 3));
}

TEST_F(EditorDialogsTest, TheThirdEditionChoosesAmongTheBacksOfTheSecond) {
  Open(3);
  In(frmCard3rd->cmdGetCardBack, [] {
    EXPECT_EQ(Column(frmCardBacks->lvCardBack, 0).join('|'), "Bright|Dark");
    ClickEntry(frmCardBacks->lvCardBack, 0);
    ClickOn(frmCardBacks->cmdOK);
  });
  EXPECT_EQ(Card("CardBackID"), "2");
  EXPECT_EQ(Entries(frmCard3rd->cboCardBack).join('|'), "Leaf|Stone");
}

TEST_F(EditorDialogsTest, EachComesUpWithWhatTheCardHas) {
  Transaction transaction(modData::cn);
  for (int i = 0; i < 40; ++i) {
    database_.Execute("INSERT INTO tblCardType VALUES (NULL, 'TYPE', '', '', '', '1', 1, 2, 0, 0)");
    database_.Execute("INSERT INTO tblCardBack VALUES (NULL, 'Back', NULL, 0, 1, 2)");
  }
  transaction.Commit();
  Open(2);
  database_.Execute("UPDATE tblCard SET CardTypeID = 30, CardBackID = 30");
  Card2ndForm& editor = *frmCard2nd;
  ClickOn(editor.cmdCardNav[3]);
  const auto expect_chosen = [](const ListView& list, const char* key) {
    ASSERT_GE(list.SelectedIndex(), 0);
    EXPECT_EQ(list.SelectedItem().Key, key);
    const QTreeWidget& tree = TreeOf(list);
    EXPECT_TRUE(tree.viewport()->rect().contains(tree.visualItemRect(tree.currentItem())));
  };
  In(editor.cmdGetType, [&] {
    expect_chosen(frmCardType->lvType, "CT30");
    ClickOn(frmCardType->cmdOK);
  });
  In(editor.cmdGetCardBack, [&] {
    expect_chosen(frmCardBacks->lvCardBack, "CB30");
    frmCardBacks->Handle()->window()->close();
    EXPECT_FALSE(frmCardBacks->OK);
  });
  EXPECT_EQ(Card("CardTypeID", 3) + Card("CardBackID", 3), "3030");
  In(editor.cmdSort, [&] {
    expect_chosen(frmCardList->lvCard, "C3");
    EXPECT_EQ(frmCardList->lblBold.Caption(), editor.txtBold.Text());
    ClickOn(frmCardList->cmdUp);
    ClickOn(frmCardList->cmdGoTo);
  });
  EXPECT_EQ(editor.lblCurrentCard.Caption(), "2 (6)");
}

TEST_F(EditorDialogsTest, GoToShowsTheCardWithItsNewNumber) {
  Open(2);
  Card2ndForm& editor = *frmCard2nd;
  In(editor.cmdSort, [] {
    ClickEntry(frmCardList->lvCard, 2);
    ClickOn(frmCardList->cmdUp);
    ClickOn(frmCardList->cmdClose);
  });
  // Left with "Close" the editor stays where and as it was.
  EXPECT_EQ(editor.txtTitle.Text(), "CARD 1");
  EXPECT_EQ(Card("Nr", 3), "2");
  In(editor.cmdSort, [] { DoubleClickEntry(frmCardList->lvCard, 1); });
  EXPECT_EQ(editor.txtTitle.Text(), "CARD 3");
  // The highest number is as it was when the editor came to the set.
  EXPECT_EQ(editor.lblCurrentCard.Caption(), "2 (6)");
  ClickOn(editor.cmdCardNav[2]);
  EXPECT_EQ(editor.txtTitle.Text(), "CARD 2");
  EXPECT_FALSE(frmCardList.IsLoaded());
}

TEST_F(EditorDialogsTest, TheNextCardIsBehindTheHighestNumberAlsoWhereTheListHasMovedCards) {
  Open(2);
  In(frmCard2nd->cmdSort, [] {
    ClickEntry(frmCardList->lvCard, 2);
    ClickOn(frmCardList->cmdUp);
    ClickOn(frmCardList->cmdClose);
  });
  ClickOn(frmCard2nd->cmdCardAdd);
  EXPECT_EQ(database_.Scalar("SELECT group_concat(Nr, '') FROM (SELECT Nr FROM tblCard ORDER BY CardID)"),
            "1324");
}

TEST_F(EditorDialogsTest, ATypeThatIsNoBackGivesTheFirstBackAsTheDefault) {
  database_.Execute("INSERT INTO tblCardType VALUES (40, 'AAB', '', '', '', '1', 1, 2, 0, 0)");
  Open(2);
  ClickOn(frmCard2nd->cmdCardAdd);
  EXPECT_EQ(Card("CardTypeID || ',' || CardBackID", 4), "40,2");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(EditorDialogsTest, AnEntryThatWasDeletedIsNoChoice) {
  database_.Execute("INSERT INTO tblCardType VALUES (40, 'OWN', '', '', '', '1', 1, 2, 0, 0)");
  Open(2);
  In(frmCard2nd->cmdGetType, [] {
    ClickEntry(frmCardType->lvType, "OWN");
    ClickOn(frmCardType->cmdDelete);
    ClickOn(frmCardType->cmdDefault);
    ClickOn(frmCardType->cmdOK);
  });
  EXPECT_EQ(Card("CardTypeID || (SELECT DefaultCardTypeID FROM tblSet)"), "10");
}

TEST_F(EditorDialogsTest, TheDefaultsServeTheNextCard) {
  Open(2);
  In(frmCard2nd->cmdGetType, [] {
    ClickEntry(frmCardType->lvType, "FOE-");
    ClickOn(frmCardType->cmdDefault);
    ClickOn(frmCardType->cmdCancel);
  });
  In(frmCard2nd->cmdGetCardBack, [] {
    ClickEntry(frmCardBacks->lvCardBack, "Bright");
    ClickOn(frmCardBacks->cmdDefault);
    ClickOn(frmCardBacks->cmdCancel);
  });
  EXPECT_EQ(Card("CardTypeID") + Card("CardBackID"), "11");
  ClickOn(frmCard2nd->cmdCardAdd);
  EXPECT_EQ(Card("CardTypeID", 4) + Card("CardBackID", 4) + Card("Number", 4), "222");
}

}  // namespace
}  // namespace orv
