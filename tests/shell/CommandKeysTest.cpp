// The commands of an editor work wherever the keyboard is, whatever the control's own use of the key is on
// this system.
#include <QKeySequence>

#include "MasterScene.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"

namespace orv {
namespace {

class CommandKeysTest : public testing::Test, protected MasterScene {
 protected:
  // The texts of the first records that were made.
  QString Stored(const QString& table, int records) {
    const char* const texts =
        table == u"tblCharacter" ? "Name || Abilities || Strength" : "Title || Information || Copies";
    return database_.Scalar(
        QString("SELECT group_concat(Texts, '|') FROM (SELECT %1 AS Texts FROM %2 ORDER BY %3ID LIMIT %4)")
            .arg(texts, table, table.mid(3))
            .arg(records));
  }

  // Each command on each control: one record more, all others as they were.
  void ExpectCommands(RecordEditor& editor, const QString& table,
                      const std::vector<const Control*>& controls) {
    for (const QString& keys : RecordEditor::Commands()) {
      const auto key = QKeySequence(keys)[0];
      for (std::size_t i = 0; i < controls.size(); ++i) {
        SCOPED_TRACE(keys.toStdString() + " on control " + std::to_string(i));
        const auto count = [&] { return database_.Scalar("SELECT COUNT(*) FROM " + table).toInt(); };
        ClickOn(editor.cmdCardNav[0]);
        const int before = count();
        const QString stored = Stored(table, before);
        PressKey(*controls[i], key.key(), int(key.keyboardModifiers()));
        EXPECT_EQ(count(), before + 1);
        EXPECT_EQ(Stored(table, before), stored);
      }
    }
  }
};

TEST_F(CommandKeysTest, TheProgramsCommandsWinInEachKindOfControl) {
  const int set = database_.AddSet("A", 2);
  database_.AddCard(set, 1, "First card");
  database_.AddLargeCard(set, 1, "First large card");
  database_.AddCharacter(set, 1, "First character");
  Start();
  frmMaster->tbar.ButtonClick("card2nd");
  Card2ndForm& card = *frmCard2nd;
  ExpectCommands(
      card, "tblCard",
      {&card.txtTitle, &card.txtInfo, &card.txtBold, &card.txtArtist, &card.cboType, &card.cboNumber,
       &card.cboCardBack, &card.txtCopy, &card.udCopy, &card.chkFrame, &card.cmdGetPic, &card.viewCard,
       &card.cmdCardNav[2], &frmMaster->cboSet, &frmMaster->chkAutonumber});
  card.Hide();
  frmMaster->tbar.ButtonClick("large2nd");
  Large2ndForm& large = *frmLarge2nd;
  ExpectCommands(large, "tblLargeCard",
                 {&large.txtTitleLarge, &large.txtInfoLarge, &large.txtCopyLarge, &large.chkResizeLarge});
  large.Hide();
  frmMaster->tbar.ButtonClick("character2nd");
  Character2ndForm& character = *frmCharacter2nd;
  ExpectCommands(character, "tblCharacter",
                 {&character.txtCharName, &character.txtSpecialAbilities, &character.cboCharAttr[0],
                  &character.cboStartArea});
}

}  // namespace
}  // namespace orv
