#include "CatalogueScene.h"

namespace orv {
namespace {

class CardTypeTest : public testing::Test, protected CatalogueScene {
 protected:
  CardTypeTest() : CatalogueScene(kTypes, 2) {}

  CardTypeForm& Form() { return *frmCardType; }
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
  QString EnabledButtons() {
    return Enabled({&Form().cmdDelete, &Form().cmdDefault, &Form().cmdSet, &Form().cmdOK});
  }
};

TEST_F(CardTypeTest, ListsAllTypesOfTheLanguage) {
  // Of both editions and locked to another set, in the query's order.
  EXPECT_EQ(Listed(0), "EVENT|FOE-|LOCKED|Own|Own|Place|Thing");
  EXPECT_EQ(Listed(1), "|Beast||a|b||");
  EXPECT_EQ(Listed(2), "EVENT|-FOE||||Site|Gift");
  EXPECT_EQ(Listed(3), "|Brute|||||");
  EXPECT_EQ(Listed(4), "1|2|3|2|10|4|5");
  EXPECT_EQ(Listed(5), "No|No|Yes|Yes|Yes|No|No");
  EXPECT_EQ(Listed(6), "Yes|Yes|No|Yes|Yes|Yes|Yes");
  const int widths[] = {74, 74, 74, 74, 28, 56, 56};
  for (int i = 0; i < 7; ++i) EXPECT_EQ(Entries().ColumnWidth(i), widths[i]) << i;
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
  EXPECT_EQ(Listed(4), "1|10|2|2|3|4|5");
  ClickHeader(Form().lvType, 4);
  EXPECT_EQ(Listed(4), "1|10|2|2|3|4|5");
  ClickHeader(Form().lvType, 0);
  EXPECT_EQ(Listed(0), "EVENT|FOE-|LOCKED|Own|Own|Place|Thing");
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
  Retype(Form().txtUL, "   ");
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
  EXPECT_EQ(Listed(0), " Mid| Mid|EVENT|FOE-|LOCKED|Own|Own|Place|Thing");
  Fill("ZZ", "", "", "", "");
  for (int i = 0; i < 9; ++i) ClickOn(Form().cmdNew);
  const QTreeWidget& tree = TreeOf(Form().lvType);
  EXPECT_TRUE(tree.viewport()->rect().contains(tree.visualItemRect(tree.topLevelItem(17))));
}

TEST_F(CardTypeTest, DeletesDownToAnEmptyList) {
  database_.Execute("DELETE FROM tblCardType WHERE CardTypeID <> 11");
  Click("Own");
  ClickOn(Form().cmdDelete);
  EXPECT_EQ(Form().lvType.Count(), 0);
  EXPECT_EQ(Count(), "0");
  ClickOn(Form().cmdSet);
  EXPECT_TRUE(dialogs_.boxes.empty()) << "nothing is selected";
  Fill("First", "", "", "", "");
  ClickOn(Form().cmdNew);
  EXPECT_EQ(Listed(0), "First");
}

TEST_F(CardTypeTest, LocksAndReleases) {
  Click("LOCKED");
  const QString locked = "SELECT UsedInSet FROM tblCardType WHERE CardTypeID = 3";
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
    EXPECT_EQ(Column(Entries(), 6)[2], step.global);
    EXPECT_EQ(Form().lvType.SelectedIndex(), 2);
  }
}

TEST_F(CardTypeTest, WhatIsAddedIsChosenAndAfterDeletingEnterDeletesNoMore) {
  Fill("NEW", "", "", "", "1");
  ClickOn(Form().cmdNew);
  EXPECT_EQ(Entries().SelectedItem().Text, "NEW");
  EXPECT_EQ(EnabledButtons(), "1111");
  Form().cmdDelete.SetFocus();
  ClickOn(Form().cmdDelete);
  EXPECT_TRUE(Entries().HasFocus());
}

}  // namespace
}  // namespace orv
