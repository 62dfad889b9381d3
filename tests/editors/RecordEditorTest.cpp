// What the editors of cards, characters and large cards have in common.
#include <QWidget>
#include <utility>

#include "EditorScene.h"
#include "forms/Lifetime.h"
#include "state/modData.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class RecordEditorTest : public testing::TestWithParam<const EditorKind*>, protected EditorScene {
 protected:
  RecordEditorTest() : EditorScene(*GetParam()) {}

  // The numbers and titles of the set in their order, "~" without any.
  QString Records() {
    return database_.Scalar(QStringLiteral("SELECT group_concat(t, ' ') FROM (SELECT Nr || ':' || %1 AS t "
                                           "FROM %2 WHERE SetID = %3 ORDER BY Nr, %1)")
                                .arg(kind_.title_column, kind_.table)
                                .arg(set_));
  }
  void ExpectInput(bool offered) {
    const EditorParts parts = kind_.parts();
    for (const Control* side : parts.sides) EXPECT_EQ(side->Visible(), offered);
    for (const Control* button : parts.for_records) EXPECT_EQ(button->Enabled(), offered);
    for (const CommandButton& button : parts.editor.cmdCardNav) EXPECT_EQ(button.Enabled(), offered);
    EXPECT_EQ(parts.editor.cmdCardDelete.Enabled(), offered);
  }
};

TEST_P(RecordEditorTest, AnEmptySetOffersOnlyAdding) {
  Open(0);
  EXPECT_EQ(Position(), "0 (0)");
  ExpectInput(false);
  const FormLabel& hint = Editor().lblHint;
  EXPECT_TRUE(hint.Visible());
  EXPECT_EQ(hint.Caption(), QStringLiteral("This set has no %1s yet. Press + or Ctrl+N to add the first one.")
                                .arg(QString(kind_.first_title).toLower().chopped(2)));
  const auto set = std::exchange(modData::CurrentSetID, std::int16_t{0});
  RecordEditor::LockAll();
  EXPECT_EQ(hint.Caption(), "There is no set yet. Press \"New set\" to make one first.");
  modData::CurrentSetID = set;
  Editor().Hide();
  UnloadAll();
  Editor().Show();
  ClickOn(Editor().cmdCardAdd);
  EXPECT_FALSE(Editor().lblHint.Visible());
  EXPECT_EQ(Position(), "1 (1)");
  EXPECT_EQ(Records(), QString("1:") + kind_.first_title);
  ExpectInput(true);
  const TextBox& title = kind_.parts().title;
  EXPECT_TRUE(title.HasFocus());
  EXPECT_EQ(title.SelLength(), title.Text().size());
}

// A screen of 1366 by 768 pixels with a panel of the desktop, and at a scale of 1.5 with one scroll bar.
TEST_P(RecordEditorTest, IsSeenWholeOnALaptop) {
  Open(1);
  const QSize least = Editor().Handle()->minimumSizeHint();
  EXPECT_LE(least.height(), 570);
  EXPECT_LE(least.width(), 880);
}

TEST_P(RecordEditorTest, AddsBehindTheLastOne) {
  Open(3);
  Editor().Form_KeyDown({kKeyN, 0});
  EXPECT_EQ(Position(), "1 (3)") << "only with Ctrl";
  const auto set = std::exchange(modData::CurrentSetID, std::int16_t{0});
  ClickOn(Editor().cmdCardAdd);
  EXPECT_EQ(Position(), "1 (3)") << "no set, no record";
  modData::CurrentSetID = set;
  database_.Execute(QStringLiteral("UPDATE %1 SET Nr = 7 WHERE Nr = 3").arg(kind_.table));
  Editor().Form_KeyDown({kKeyN, kCtrl});
  EXPECT_EQ(Position(), "8 (8)");
  EXPECT_EQ(Stored(kind_.defaults, 8), kind_.added);
}

TEST_P(RecordEditorTest, WalksWithoutWrappingAroundAndComesAnewAtTheFirst) {
  Open(3);
  const struct {
    int button, number;
  } steps[] = {{1, 1}, {2, 2}, {3, 3}, {2, 3}, {1, 2}, {0, 1}, {3, 3}};
  for (const auto& step : steps) {
    ClickOn(Editor().cmdCardNav[step.button]);
    EXPECT_EQ(Position(), QStringLiteral("%1 (3)").arg(step.number));
    EXPECT_EQ(kind_.parts().title.Text(), QStringLiteral("RECORD %1").arg(step.number));
  }
  Editor().UpdateDisplay();
  EXPECT_EQ(Position(), "3 (3)");
  QString closed;
  EditorClosed = [&closed](const QString& name) { closed = name; };
  Editor().Handle()->window()->close();
  EditorClosed = nullptr;
  EXPECT_EQ(closed, kind_.form_name);
  EXPECT_EQ(Position(), "1 (3)");
}

// Those whose delete button works.
class DeletingTest : public RecordEditorTest {};

TEST_P(DeletingTest, ClosesTheGapAsFarAsNumbersFollowEachOther) {
  const struct {
    const char* numbers;  // of the records before
    int moves;            // to the record that is deleted
    const char *records, *position, *title;
  } rows[] = {
      {"12345", 2, "1:r1 2:r2 3:r4 4:r5", "3 (4)", "r4"},
      {"12345", 4, "1:r1 2:r2 3:r3 4:r4", "4 (4)", "r4"},
      {"12345", 0, "1:r2 2:r3 3:r4 4:r5", "1 (4)", "r2"},
      {"1245", 0, "1:r2 4:r4 5:r5", "1 (5)", "r2"},
      {"1", 0, "~", "0 (0)", "r1"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.records);
    database_.Execute(QStringLiteral("DELETE FROM %1").arg(kind_.table));
    for (const char* nr = row.numbers; *nr != 0; ++nr) Add(*nr - '0', QStringLiteral("r%1").arg(*nr - '0'));
    UnloadAll();
    Open(0);
    for (int i = 0; i < row.moves; ++i) ClickOn(Editor().cmdCardNav[2]);
    ClickOn(Editor().cmdCardDelete);
    EXPECT_EQ(Records(), row.records);
    EXPECT_EQ(Position(), row.position);
    EXPECT_EQ(kind_.parts().title.Text(), row.title);
  }
  ExpectInput(false);
}

INSTANTIATE_TEST_SUITE_P(Of, RecordEditorTest,
                         testing::Values(&kCard2nd, &kCard3rd, &kCharacter, &kLargeCard), FormName);
INSTANTIATE_TEST_SUITE_P(Of, DeletingTest, testing::Values(&kCard2nd, &kCard3rd, &kLargeCard), FormName);

}  // namespace
}  // namespace orv
