#include <gtest/gtest.h>

#include "catalogues/frmCardType.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Lists.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CardTypeTest : public testing::Test {
 protected:
  CardTypeTest() : set_(database_.AddSet(QStringLiteral("Set"), 2)) {
    database_.Execute(
        QStringLiteral("INSERT INTO tblCardType VALUES (10, 'Own', 'b', NULL, '', '10', 1, 2, 0, 0), "
                       "(11, 'Own', 'a', '', '', '2', 1, 2, 0, 0)"));
    database_.SelectSet(set_);
    Form().Show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Form().Handle()));
  }

  CardTypeForm& Form() { return *frmCardType; }
  void Click(const char* text) { ClickEntry(Form().lvType, EntryOf(Form().lvType, QString(text))); }
  void Fill(const char* ul, const char* ll, const char* ur, const char* lr, const char* nr) {
    Retype(Form().txtUL, ul);
    Retype(Form().txtLL, ll);
    Retype(Form().txtUR, ur);
    Retype(Form().txtLR, lr);
    Retype(Form().txtNr, nr);
  }
  QString Sample() {
    QStringList texts;
    for (const auto& label : Form().lblType) texts += label->Caption();
    return texts.join('|') + '|' + Form().lblNumber.Caption();
  }
  // delete, default, set, OK
  QString EnabledButtons() {
    QString text;
    for (const CommandButton* button : {&Form().cmdDelete, &Form().cmdDefault, &Form().cmdSet, &Form().cmdOK})
      text += button->Enabled() ? '1' : '0';
    return text;
  }
  QString Count() { return database_.Scalar(QStringLiteral("SELECT COUNT(*) AS n FROM tblCardType")); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_;
};

TEST_F(CardTypeTest, ListsAllTypesOfTheLanguage) {
  const ListView& list = Form().lvType;
  // Of both editions and locked to another set, in the query's order.
  EXPECT_EQ(Column(list, 0).join('|'), "EVENT|FOE-|LOCKED|Own|Own|Place|Thing");
  EXPECT_EQ(Column(list, 1).join('|'), "|Beast||a|b||");
  EXPECT_EQ(Column(list, 2).join('|'), "EVENT|-FOE||||Site|Gift");
  EXPECT_EQ(Column(list, 3).join('|'), "|Brute|||||");
  EXPECT_EQ(Column(list, 4).join('|'), "1|2|3|2|10|4|5");
  EXPECT_EQ(Column(list, 5).join('|'), "No|No|Yes|Yes|Yes|No|No");
  EXPECT_EQ(Column(list, 6).join('|'), "Yes|Yes|No|Yes|Yes|Yes|Yes");
  const int widths[] = {74, 74, 74, 74, 28, 56, 56};
  for (int i = 0; i < 7; ++i) EXPECT_EQ(list.ColumnWidth(i), widths[i]) << i;
  EXPECT_EQ(EnabledButtons(), "0000");
}

TEST_F(CardTypeTest, AClickShowsTheTypeAndWhatCanBeDoneToIt) {
  const struct {
    const char* text;
    const char* sample;
    const char* buttons;
    const char* caption;
    int id;
  } cases[] = {{"FOE-", "FOE-|-FOE|Beast|Brute|2", "0101", "Lock to set", 2},
               {"LOCKED", "LOCKED||||3", "1111", "Make global", 3},
               {"Own", "Own||a||2", "1111", "Lock to set", 11},
               {"EVENT", "EVENT|EVENT|||1", "0101", "Lock to set", 1}};
  for (const auto& one : cases) {
    Click(one.text);
    EXPECT_EQ(Sample(), one.sample);
    EXPECT_EQ(EnabledButtons(), one.buttons) << one.text;
    EXPECT_EQ(Form().cmdSet.Caption(), one.caption) << one.text;
    EXPECT_EQ(Form().SelectedTypeID, one.id);
  }
}

TEST_F(CardTypeTest, SortsAsTextAndAlwaysAscending) {
  ClickHeader(Form().lvType, 4);
  EXPECT_EQ(Column(Form().lvType, 4).join('|'), "1|10|2|2|3|4|5");
  ClickHeader(Form().lvType, 4);
  EXPECT_EQ(Column(Form().lvType, 4).join('|'), "1|10|2|2|3|4|5");
  ClickHeader(Form().lvType, 0);
  EXPECT_EQ(Column(Form().lvType, 0).join('|'), "EVENT|FOE-|LOCKED|Own|Own|Place|Thing");
}

TEST_F(CardTypeTest, TheSampleFollowsTheKeysAndTheFocus) {
  Fill("A", "B", "C", "D", "ninety");
  EXPECT_EQ(Sample(), "A|C|B|D|ninety");
  Click("FOE-");
  EXPECT_EQ(Sample(), "FOE-|-FOE|Beast|Brute|2");
  Form().txtLR.SetFocus();
  EXPECT_EQ(Sample(), "A|C|B|D|ninety");
  EXPECT_EQ(Form().txtLR.SelLength(), 1);
}

TEST_F(CardTypeTest, AddsATypeOfTheSecondEdition) {
  Retype(Form().txtUL, QStringLiteral("   "));
  ClickOn(Form().cmdNew);
  ASSERT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_EQ(dialogs_.LastPrompt(), "You must have a text as upper left.");
  EXPECT_EQ(dialogs_.boxes[0].title, "Add new type.");
  EXPECT_EQ(dialogs_.boxes[0].icon, Icon::Exclamation);
  EXPECT_TRUE(Form().txtUL.HasFocus());
  EXPECT_EQ(Count(), "8");

  const char* const query =
      "SELECT UpperLeft || '/' || LowerLeft || '/' || UpperRight || '/' || LowerRight || "
      "'/' || Number || '/' || LanguageID || EditionID || Original || '/' || UsedInSet "
      "AS t FROM tblCardType ORDER BY CardTypeID DESC";
  Fill(" Mid", "x ", "", "y", "n7");
  ClickOn(Form().cmdNew);
  EXPECT_EQ(database_.Scalar(QString(query)), " Mid/x //y/n7/120/0");
  EXPECT_EQ(Form().txtUL.Text(), " Mid");
  Form().optUsedInSet.SetValue(true);
  ClickOn(Form().cmdNew);
  EXPECT_EQ(database_.Scalar(QString(query)), QStringLiteral(" Mid/x //y/n7/120/%1").arg(set_));
  EXPECT_EQ(Column(Form().lvType, 0).count(QStringLiteral(" Mid")), 2);
  QStringList sorted = Column(Form().lvType, 0);
  EXPECT_EQ(sorted.mid(2).join('|'), "EVENT|FOE-|LOCKED|Own|Own|Place|Thing");
}

TEST_F(CardTypeTest, DeletesOnlyWhatNoCardUses) {
  const int card = database_.AddCard(set_, 1, QStringLiteral("Card"));
  database_.Execute(QStringLiteral("UPDATE tblCard SET CardTypeID = 11 WHERE CardID = %1").arg(card));
  Click("Own");
  ClickOn(Form().cmdDelete);
  EXPECT_EQ(dialogs_.LastPrompt(), "This type can not be deleted. There are cards using it.");
  EXPECT_EQ(dialogs_.boxes.back().title, "");
  EXPECT_EQ(Count(), "8");
  dialogs_.boxes.clear();

  database_.Execute(QStringLiteral("UPDATE tblCard SET CardTypeID = 1 WHERE CardID = %1").arg(card));
  ClickOn(Form().cmdDefault);
  ClickOn(Form().cmdDelete);
  EXPECT_EQ(Count(), "7");
  EXPECT_EQ(Column(Form().lvType, 0).join('|'), "EVENT|FOE-|LOCKED|Own|Place|Thing");
  // The default dangles, the id of the deleted type stays chosen, and a second click finds nothing selected.
  EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT DefaultCardTypeID FROM tblSet")), "11");
  EXPECT_EQ(Form().SelectedTypeID, 11);
  EXPECT_EQ(EnabledButtons(), "1111");
  ClickOn(Form().cmdDelete);
  ClickOn(Form().cmdSet);
  EXPECT_EQ(Count(), "7");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(CardTypeTest, DeletesDownToAnEmptyList) {
  database_.Execute(QStringLiteral("DELETE FROM tblCardType WHERE CardTypeID <> 11"));
  Click("Own");
  ClickOn(Form().cmdDelete);
  EXPECT_EQ(Form().lvType.Count(), 0);
  EXPECT_EQ(Count(), "0");
  Fill("First", "", "", "", "");
  ClickOn(Form().cmdNew);
  EXPECT_EQ(Column(Form().lvType, 0).join('|'), "First");
}

TEST_F(CardTypeTest, LocksAndReleases) {
  Click("LOCKED");
  const QString locked = QStringLiteral("SELECT UsedInSet FROM tblCardType WHERE CardTypeID = 3");
  const struct {
    QString stored;
    const char* caption;
    const char* global;
  } steps[] = {
      {"0", "Lock to set", "Yes"}, {QString::number(set_), "Make global", "No"}, {"0", "Lock to set", "Yes"}};
  for (const auto& step : steps) {
    ClickOn(Form().cmdSet);
    EXPECT_EQ(database_.Scalar(locked), step.stored);
    EXPECT_EQ(Form().cmdSet.Caption(), step.caption);
    EXPECT_EQ(Column(Form().lvType, 6)[2], step.global);
    EXPECT_EQ(Form().lvType.SelectedIndex(), 2);
  }
}

TEST_F(CardTypeTest, TheKeyboardChoosesAndOnlyOkCounts) {
  const struct {
    int key;
    bool ok;
  } endings[] = {{Qt::Key_Return, true}, {Qt::Key_Escape, false}};
  for (const auto& ending : endings) {
    dialogs_.modals.push_back([&](orv::Form&) {
      Form().lvType.SetFocus();
      QTest::keyClick(Form().lvType.Handle(), Qt::Key_T);
      EXPECT_EQ(Form().SelectedTypeID, 5);
      ClickOn(Form().cmdDefault);
      Form().lvType.SetFocus();
      QTest::keyClick(Form().lvType.Handle(), static_cast<Qt::Key>(ending.key));
      EXPECT_FALSE(Form().IsShown());
    });
    Form().Hide();
    Form().ShowModal();
    EXPECT_EQ(Form().OK, ending.ok);
    // What was made the default stands in either case.
    EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT DefaultCardTypeID FROM tblSet")), "5");
    frmCardType.Unload();
  }
  EXPECT_FALSE(frmCardType->OK);
}

}  // namespace
}  // namespace orv
