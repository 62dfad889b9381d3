#include <gtest/gtest.h>

#include "base/RuntimeError.h"
#include "editors/frmCardList.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Lists.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CardListTest : public testing::Test {
 protected:
  CardListTest() : set_(database_.AddSet("Set", 2)) {
    database_.AddCard(set_, 4, "Delta");
    database_.AddCard(set_, 2, "Beta");
    database_.AddCard(set_, 2, "Alpha");
    database_.AddCard(set_, 3, "Lost");
    database_.AddCard(database_.AddSet("Other", 2), 9, "Foreign");
    Update("CardTypeID = 99", "Title = 'Lost'");
    database_.SelectSet(set_);
  }

  CardListForm& Form() { return *frmCardList; }
  void Open() {
    Form().FillList();
    Form().Show();
  }
  void Update(const char* change, const char* which) {
    database_.Execute(QStringLiteral("UPDATE tblCard SET %1 WHERE %2").arg(QString(change), QString(which)));
  }
  void Click(const char* title) { ClickEntry(Form().lvCard, title); }
  QString Titles() { return Column(Form().lvCard, 0).join('|'); }
  // Of the set, as the file has them.
  QString Stored() {
    QStringList cards;
    Recordset rows = modData::OpenSnapshot(
        QStringLiteral("SELECT Nr, Title FROM tblCard WHERE SetID = %1 ORDER BY Nr, Title").arg(set_));
    for (; !rows.IsEOF(); rows.MoveNext()) cards += rows["Nr"].Text() + rows["Title"].Text();
    return cards.join('|');
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_;
};

TEST_F(CardListTest, OpeningMakesTheNumbersDense) {
  Open();
  EXPECT_EQ(Titles(), "Alpha|Beta|Delta");
  // The card without a valid type stays out and keeps its number; so does another set's.
  EXPECT_EQ(Stored(), "1Alpha|2Beta|3Delta|3Lost");
  EXPECT_EQ(database_.Scalar("SELECT Nr FROM tblCard WHERE Title = 'Foreign'"), "9");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Form().lvCard.ColumnWidth(i), 150);
}

TEST_F(CardListTest, TheTypeIsWordedByItsTexts) {
  const struct {
    const char* type;
    const char* number;
    const char* text;
  } cases[] = {
      {"'A', NULL, 'A', ''", "'2'", "A (2)"},      {"'A', '', 'B', ''", "'2'", "A B (2)"},
      {"'A', 'low', 'B', ''", "''", "A low"},      {"'A', NULL, NULL, ''", "NULL", "A "},
      {"'A', '', 'a', 'x'", "'a b'", "A a (a b)"}, {"NULL, NULL, NULL, NULL", "'1'", " (1)"},
  };
  for (const auto& one : cases) {
    database_.Execute(QStringLiteral("DELETE FROM tblCardType WHERE CardTypeID = 50; INSERT INTO tblCardType "
                                     "VALUES (50, %1, '', 1, 2, 0, 0)")
                          .arg(QString(one.type)));
    database_.Execute(QStringLiteral("UPDATE tblCard SET CardTypeID = 50, Number = %1 WHERE Title = 'Alpha'")
                          .arg(QString(one.number)));
    Form().FillList();
    EXPECT_EQ(Column(Form().lvCard, 1)[0], one.text) << one.type;
    EXPECT_EQ(Column(Form().lvCard, 2)[0], "Dark");
  }
}

TEST_F(CardListTest, AClickShowsTheTexts) {
  Update("BoldText = 'Bold words', Information = 'What it does'", "Title = 'Beta'");
  Update("BoldText = NULL, Information = NULL", "Title = 'Delta'");
  Open();
  Click("Beta");
  EXPECT_EQ(Form().lblBold.Caption(), "Bold words");
  EXPECT_EQ(Form().lblInformation.Caption(), "What it does");
  EXPECT_EQ(Form().SelectedCardID, 2);
  // A move leaves them as they are.
  ClickOn(Form().cmdDown);
  EXPECT_EQ(Form().lblBold.Caption(), "Bold words");
  Click("Delta");
  EXPECT_EQ(Form().lblBold.Caption(), "");
}

TEST_F(CardListTest, MovesUpAndDownAndKeepsTheSelection) {
  Open();
  ClickOn(Form().cmdUp);
  ClickOn(Form().cmdDown);
  EXPECT_EQ(Stored(), "1Alpha|2Beta|3Delta|3Lost");
  Click("Beta");
  const struct {
    bool up;
    const char* titles;
    const char* stored;
  } steps[] = {{true, "Beta|Alpha|Delta", "1Beta|2Alpha|3Delta|3Lost"},
               {true, "Beta|Alpha|Delta", "1Beta|2Alpha|3Delta|3Lost"},
               {false, "Alpha|Beta|Delta", "1Alpha|2Beta|3Delta|3Lost"},
               {false, "Alpha|Delta|Beta", "1Alpha|2Delta|3Beta|3Lost"},
               {false, "Alpha|Delta|Beta", "1Alpha|2Delta|3Beta|3Lost"}};
  for (const auto& step : steps) {
    ClickOn(step.up ? Form().cmdUp : Form().cmdDown);
    EXPECT_EQ(Titles(), step.titles);
    EXPECT_EQ(Stored(), step.stored);
    EXPECT_EQ(Form().lvCard.SelectedItem().Text, "Beta");
    EXPECT_EQ(Form().SelectedCardID, 2);
  }
}

TEST_F(CardListTest, KeepsTheMovedCardInView) {
  Transaction transaction(modData::cn);
  for (int nr = 10; nr < 70; ++nr) database_.AddCard(set_, nr, QStringLiteral("Card %1").arg(nr));
  transaction.Commit();
  Open();
  Click("Alpha");
  for (int i = 0; i < 40; ++i) ClickOn(Form().cmdDown);
  const QTreeWidget& tree = TreeOf(Form().lvCard);
  EXPECT_EQ(Form().lvCard.SelectedIndex(), 40);
  EXPECT_TRUE(tree.viewport()->rect().contains(tree.visualItemRect(tree.topLevelItem(40))));
}

TEST_F(CardListTest, GoToNeedsASelection) {
  const auto leave = [this](const std::function<void()>& how) {
    frmCardList.Unload();
    Form().FillList();
    dialogs_.modals.push_back([&](orv::Form&) {
      how();
      EXPECT_FALSE(Form().IsShown());
    });
    Form().ShowModal();
    return QStringLiteral("%1 %2").arg(Form().GoTo).arg(Form().SelectedCardID);
  };
  EXPECT_EQ(leave([this] { ClickOn(Form().cmdGoTo); }), "0 0");
  EXPECT_EQ(leave([this] { DoubleClickBeside(Form().lvCard); }), "0 0");
  EXPECT_EQ(leave([this] {
              Click("Delta");
              ClickOn(Form().cmdGoTo);
            }),
            "1 1");
  EXPECT_EQ(leave([this] { DoubleClickEntry(Form().lvCard, 1); }), "1 2");
  EXPECT_EQ(leave([this] {
              // A letter jumps, Enter chooses.
              Form().lvCard.SetFocus();
              QTest::keyClick(Form().lvCard.Handle(), Qt::Key_D);
              QTest::keyClick(Form().lvCard.Handle(), Qt::Key_Return);
            }),
            "1 1");
  EXPECT_EQ(leave([this] {
              Click("Delta");
              ClickOn(Form().cmdUp);
              QTest::keyClick(Form().lvCard.Handle(), Qt::Key_Escape);
            }),
            "0 1");
}

TEST_F(CardListTest, AKeyPastSixteenBitsCanNotBeSelected) {
  database_.Execute("UPDATE tblCard_rows SET CardID = 40000 WHERE Title = 'Beta'");
  Open();
  Click("Beta");
  EXPECT_EQ(Form().SelectedCardID, 0);
  ClickOn(Form().cmdUp);
  EXPECT_EQ(Titles(), "Alpha|Beta|Delta");
}

TEST_F(CardListTest, AFailureWhileNumberingChangesNothing) {
  database_.Execute(
      "CREATE TRIGGER refuse BEFORE UPDATE ON tblCard_rows WHEN NEW.Title = 'Delta' "
      "BEGIN SELECT RAISE(ABORT, 'refused'); END");
  EXPECT_THROW(Form().FillList(), RuntimeError);
  EXPECT_EQ(Stored(), "2Alpha|2Beta|3Lost|4Delta");
}

}  // namespace
}  // namespace orv
