// The card list at 200 and at 2,000 cards: opening it, opening it where all cards have to be numbered anew,
// and one move up. Each may take at most ten times as long for ten times the cards; see bench/README.md.
#include <cstdio>
#include <vector>

#include "editors/frmCardList.h"
#include "forms/Application.h"
#include "measuring/Measuring.h"
#include "state/Product.h"
#include "state/modData.h"
#include "support/Lists.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

constexpr int kFew = 200;
constexpr int kMany = 2000;
constexpr int kRounds = 9;

struct Times {
  std::vector<double> open, renumber, move;
};

int MakeSet(TestDatabase& database, int cards) {
  const int set = database.AddSet(QStringLiteral("Set"), 2);
  database.Execute(
      QStringLiteral(
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
          "INSERT INTO tblCard_rows (SetID, Nr, Title, CardTypeID, CardBackID, Number, BoldText, "
          "Information) SELECT %2, i, 'Card ' || i, 2, 1, '3', 'Bold', 'A few lines of text.' FROM n")
          .arg(cards)
          .arg(set));
  return set;
}

void Measure(TestDatabase& database, int set, Times& times) {
  database.SelectSet(set);
  frmCardList.Unload();
  times.open.push_back(Milliseconds([] {
    frmCardList->FillList();
    frmCardList->Show();
  }));
  const int middle = frmCardList->lvCard.Count() / 2;
  ClickEntry(frmCardList->lvCard, middle);
  times.move.push_back(Milliseconds([] { ClickOn(frmCardList->cmdUp); }));
  database.Execute(QStringLiteral("UPDATE tblCard_rows SET Nr = Nr + 5000 WHERE SetID = %1").arg(set));
  times.renumber.push_back(Milliseconds([] { frmCardList->FillList(); }));
}

bool Print(const char* what, const std::vector<double>& few, const std::vector<double>& many) {
  std::printf("%-28s %7.1f ms %7.1f ms\n", what, Median(few), Median(many));
  return PrintRatio(what, Median(many) / Median(few), double{kMany} / kFew);
}

int Main() {
  TestDatabase database;
  const int few_set = MakeSet(database, kFew);
  const int many_set = MakeSet(database, kMany);
  Times few;
  Times many;
  for (int round = 0; round < kRounds; ++round) {
    Measure(database, few_set, few);
    Measure(database, many_set, many);
  }
  std::printf("%-28s %7d    %7d      medians of %d\n", "cards", kFew, kMany, kRounds);
  const bool ok = Print("open, nothing to number", few.open, many.open) &
                  Print("number all cards anew", few.renumber, many.renumber) &
                  Print("one move up", few.move, many.move);
  return ok ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  return application.RunOnce(orv::Main);
}
