#include <gtest/gtest.h>

#include "editors/inner/Statistics.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

class StatisticsTest : public testing::Test {
 protected:
  // A set with some cards of each pair of a type and a back, and its report, "/" for a line break.
  QString Report(int edition, const std::vector<std::array<int, 3>>& cards, const char* second) {
    const int set = database_.AddSet("Set", edition);
    Transaction transaction(modData::cn);
    for (const auto& [count, type, back] : cards) {
      for (int i = 0; i < count; ++i) {
        const int card = database_.AddCard(set, 1, "Card");
        database_.Execute(
            QStringLiteral(
                "UPDATE tblCard SET CardTypeID = %1, CardBackID = %2, Copies = 5 WHERE CardID = %3")
                .arg(type)
                .arg(back)
                .arg(card));
      }
    }
    transaction.Commit();
    database_.SelectSet(set);
    ShowStatistics(second);
    return dialogs_.LastPrompt().replace("\r\n", "/");
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
};

TEST_F(StatisticsTest, CountsByNameBiggestFirst) {
  database_.Execute(
      "INSERT INTO tblCardType VALUES (20, 'EVENT', '', 'other', '', '9', 1, 2, 0, 0), "
      "(21, 'Bare', NULL, '', '', '', 1, 2, 0, 0)");
  EXPECT_EQ(Report(2, {}, "LowerLeft"),
            "0 number of cards in set.///0 number of types used.////0 number of sets used./");
  EXPECT_EQ(dialogs_.boxes[0].title, "Cards used in set");
  EXPECT_EQ(dialogs_.boxes[0].icon, Icon::Information);
  EXPECT_EQ(Report(2, {{4, 1, 1}}, "LowerLeft"),
            "4 number of cards in set.///1 number of types used.//4 - EVENT  (100%)///"
            "1 number of sets used.//4 - Dark (50%)");
  // Types of one name are one group; the shares of the backs are of twice the cards; what has no row is
  // left out.
  EXPECT_EQ(Report(2, {{1, 1, 1}, {3, 20, 2}, {3, 2, 1}, {1, 21, 99}, {1, 99, 99}}, "LowerLeft"),
            "8 number of cards in set.///3 number of types used.//4 - EVENT  (50%)/3 - FOE- Beast (38%)/"
            "1 - Bare  (13%)///2 number of sets used.//4 - Dark (27%)/3 - Bright (20%)");
}

TEST_F(StatisticsTest, TheThirdEditionGoesByUpperRight) {
  EXPECT_EQ(
      Report(3, {{1, 4, 4}, {1, 5, 5}}, "UpperRight"),
      "2 number of cards in set.///2 number of types used.//1 - Place Site (50%)/1 - Thing Gift (50%)///"
      "2 number of sets used.//1 - Leaf (25%)/1 - Stone (25%)");
}

TEST_F(StatisticsTest, AHalfGoesUp) {
  EXPECT_TRUE(Report(2, {{29, 1, 1}, {171, 2, 1}}, "LowerLeft").contains("29 - EVENT  (15%)"));
  EXPECT_TRUE(Report(2, {{1, 1, 1}, {199, 2, 1}}, "LowerLeft").contains("1 - EVENT  (1%)"));
}

}  // namespace
}  // namespace orv
