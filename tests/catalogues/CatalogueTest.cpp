// What the catalogues of card types and of card backs have in common.
#include "CatalogueScene.h"
#include "forms/Lifetime.h"
#include "support/Errors.h"

namespace orv {
namespace {

class CatalogueTest : public testing::TestWithParam<const Catalogue*>, protected CatalogueScene {
 protected:
  CatalogueTest() : CatalogueScene(*GetParam(), 2) {}

  CatalogueForm& Form() { return catalogue_.form(); }
  // The set's default entry.
  QString Default() {
    return database_.Scalar(QStringLiteral("SELECT Default%1ID FROM tblSet").arg(catalogue_.table + 3));
  }
};

TEST_P(CatalogueTest, DeletesOnlyWhatNoCardUses) {
  const int before = Count().toInt();
  database_.AddCard(set_, 1, "Card");
  const auto use = [this](int id) {
    database_.Execute(QStringLiteral("UPDATE tblCard SET %1ID = %2").arg(catalogue_.table + 3).arg(id));
  };
  use(11);
  Click("Own");
  ClickOn(Form().cmdDelete);
  EXPECT_EQ(dialogs_.LastPrompt(), catalogue_.used_message);
  EXPECT_EQ(dialogs_.boxes.back().title, "");
  EXPECT_EQ(Count(), QString::number(before));
  dialogs_.boxes.clear();
  use(1);
  ClickOn(Form().cmdDefault);
  const QStringList listed = Column(Entries(), 0);
  // The default dangles, the id of the deleted entry stays chosen, and a second click finds nothing selected.
  for (int i = 0; i < 2; ++i) {
    ClickOn(Form().cmdDelete);
    EXPECT_EQ(Count(), QString::number(before - 1));
    EXPECT_EQ(Entries().Count(), listed.size() - 1);
    EXPECT_EQ(Column(Entries(), 0).count("Own"), listed.count("Own") - 1);
    EXPECT_EQ(Default(), "11");
    EXPECT_EQ(Form().SelectedID, 11);
    EXPECT_EQ(Enabled({&Form().cmdDelete, &Form().cmdDefault, &Form().cmdOK}), "111");
  }
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_P(CatalogueTest, AFailureToDeleteIsTold) {
  const char* const rows = &catalogue_ == &kBacks ? "tblCardBack_rows" : "tblCardType";
  database_.Execute(
      QStringLiteral("CREATE TRIGGER refuse BEFORE DELETE ON %1 BEGIN SELECT RAISE(ABORT, 'refused'); END")
          .arg(rows));
  Click("Own");
  EXPECT_EQ(ErrorOf([&] { Form().cmdDelete.Click(); }), kErrDatabase);
}

TEST_P(CatalogueTest, TheKeyboardChoosesAndOnlyOkCounts) {
  const struct {
    Qt::Key key;
    bool ok;
  } endings[] = {{Qt::Key_Return, true}, {Qt::Key_Escape, false}};
  for (const auto& ending : endings) {
    dialogs_.modals.push_back([&](orv::Form&) {
      Form().lvEntries.SetFocus();
      QTest::keyClick(Entries().Handle(), static_cast<Qt::Key>(catalogue_.letter));
      EXPECT_EQ(Form().SelectedID, catalogue_.letter_id);
      ClickOn(Form().cmdDefault);
      Form().lvEntries.SetFocus();
      QTest::keyClick(Entries().Handle(), ending.key);
      EXPECT_FALSE(Form().IsShown());
    });
    Form().Hide();
    Form().ShowModal();
    EXPECT_EQ(Form().OK, ending.ok);
    // What was made the default stands in either case.
    EXPECT_EQ(Default(), QString::number(catalogue_.letter_id));
    UnloadAll();
  }
  EXPECT_FALSE(Form().OK);
}

INSTANTIATE_TEST_SUITE_P(Of, CatalogueTest, testing::Values(&kTypes, &kBacks),
                         [](const testing::TestParamInfo<const Catalogue*>& run) {
                           return run.param->table;
                         });

}  // namespace
}  // namespace orv
