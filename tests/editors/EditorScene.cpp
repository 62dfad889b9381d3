#include "EditorScene.h"

#include "base/Rounding.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"

namespace orv {
namespace {

EditorParts PartsOf(CardEditor& form) {
  return {form, form.txtTitle, {&form.pic2ndCard, &form.picCardRest}, {&form.cmdSort}};
}

EditorParts PartsOf(Character2ndForm& form) {
  return {form, form.txtCharName, {&form.pic2ndCharacter, &form.picCharacterRest}, {&form.cmdSortCharacter}};
}

EditorParts PartsOf(Large2ndForm& form) {
  return {form, form.txtTitleLarge, {&form.pic2ndCardLarge, &form.picLargeCard}, {}};
}

constexpr const char* kCardDefaults =
    "Title || '|' || CardTypeID || CardBackID || Number || '|' || PicHeight || '|' || Copies || '|' || "
    "(SELECT DefaultCardBackID FROM tblSet)";

}  // namespace

// The type and the back of a new card both come from the list of types. A large card is titled by its own
// number, unlike the others. A character has the first area and the first back of the loaded lists.
const EditorKind kCard2nd(
    "frmCard2nd", 2, "tblCard", "Title", &TestDatabase::AddCard, [] { return PartsOf(*frmCard2nd); },
    "CARD 1", kCardDefaults, "CARD 4|111|105.0|1|1");
const EditorKind kCard3rd(
    "frmCard3rd", 3, "tblCard", "Title", &TestDatabase::AddCard, [] { return PartsOf(*frmCard3rd); },
    "CARD 1", kCardDefaults, "CARD 4|444|105.0|1|4");
const EditorKind kLargeCard(
    "frmLarge2nd", 2, "tblLargeCard", "Title", &TestDatabase::AddLargeCard,
    [] { return PartsOf(*frmLarge2nd); }, "LARGE CARD 1",
    "Title || '|' || Information || '|' || UsePicture || UseFrame || Resize || '|' || "
    "PicWidth || '|' || BGColour || '|' || Copies",
    "LARGE CARD 8||-1-10|121.0|16777215|1");
const EditorKind kCharacter(
    "frmCharacter2nd", 2, "tblCharacter", "Name", &TestDatabase::AddCharacter,
    [] { return PartsOf(*frmCharacter2nd); }, "CHARACTER 1",
    "Name || '|' || StartingAreaID || AlignmentID || Strength || Craft || Gold || "
    "Lives || '|' || PicWidth || '|' || UsePicture || UseFrame || IncludeBoard || "
    "'|' || Abilities || '|' || CharacterBackID || PPTop",
    "CHARACTER 4|223314|121.0|-1-10||10.0");

EditorScene::EditorScene(const EditorKind& kind)
    : kind_(kind), set_(database_.AddSet(QStringLiteral("Set"), kind.edition)) {}

void EditorScene::Open(int records) {
  for (int nr = 1; nr <= records; ++nr) Add(nr, QStringLiteral("RECORD %1").arg(nr));
  database_.SelectSet(set_);
  Editor().Show();
}

QString EditorScene::Position() {
  const FormLabel& label = Editor().lblCurrentCard;
  EXPECT_TRUE(label.Caption().endsWith(u'(' + label.Tag() + u')')) << label.Tag().toStdString();
  return label.Caption();
}

QString EditorScene::Stored(const QString& expression, int nr) {
  return database_.Scalar(QStringLiteral("SELECT %1 FROM %2 WHERE SetID = %3 AND Nr = %4")
                              .arg(expression, kind_.table)
                              .arg(set_)
                              .arg(nr));
}

void EditorScene::ExpectEdits(const std::vector<Edit>& edits) {
  for (const Edit& edit : edits) {
    const QString other = Stored(edit.column, 2);
    edit.edit();
    EXPECT_EQ(Stored(edit.column), edit.stored) << edit.column;
    EXPECT_EQ(edit.shown(), edit.preview) << edit.column;
    EXPECT_EQ(Stored(edit.column, 2), other) << edit.column;
  }
}

void DragHandle(Label& handle, int button, double across) {
  handle.MouseDown({button, 0, 30, 75});
  handle.MouseMove({button, 0, 30 + across * kTwipsPerPixel, 900});
}

}  // namespace orv
