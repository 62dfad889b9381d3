// Fields without a value: each counts as its column's default, and only a text that a card can't do without
// is an error.
#include "composition/frmCard.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "output/OutputScene.h"
#include "output/Saving.h"
#include "support/Errors.h"
#include "support/Pixels.h"

namespace orv {
namespace {

struct Kind {
  const char* table;
  int edition;
  void (*show)();  // in an editor that was just opened
  void (*compose)();
  void (*save)();
  QStringList errors;    // columns without which there is no picture
  QStringList failures;  // without which there is no file, as a box tells
  QStringList boxes;     // that name what is to be found, as a box tells
};

template <class T>
void Reopen(FormInstance<T>& editor) {
  editor.Unload();
  editor->Show();
}

const QStringList kCardErrors{"Title", "BoldText", "Information"};
const QStringList kCardBoxes{"CardTypeID", "CardBackID"};

std::vector<Kind> Kinds() {
  return {{"tblCard",
           2,
           [] { Reopen(frmCard2nd); },
           [] { frmCard->CreateCard2nd(); },
           SaveTheCard2nd,
           kCardErrors,
           {"FileName", "Nr"},
           kCardBoxes},
          {"tblCard",
           3,
           [] { Reopen(frmCard3rd); },
           [] { frmCard->CreateCard3rd(); },
           SaveTheCard3rd,
           kCardErrors,
           {"FileName", "Nr"},
           kCardBoxes},
          {"tblCharacter",
           2,
           [] { Reopen(frmCharacter2nd); },
           [] { frmCard->CreateCharacter2nd(); },
           SaveTheCharacter2nd,
           {},
           {"Name", "Nr"},
           {"CharacterBackID"}},
          {"tblLargeCard",
           2,
           [] { Reopen(frmLarge2nd); },
           [] { frmCard->CreateLargeCard2nd(); },
           SaveTheLargeCard,
           {"Title", "Information"},
           {"Nr"},
           {}}};
}

// Each stored number of these is its column's default.
const QStringList kSameWithout{"PicTop", "PicLeft",  "PicHeight", "PicWidth",     "PPTop",
                               "PPLeft", "BGColour", "Copies",    "ArtistColour", "PicFormatID"};

class NullsTest : public OutputScene {
 protected:
  NullsTest() : OutputScene(TestDatabase::Age::kOlder) {}

  void Make(const Kind& kind) {
    Open(kind.edition, 1);
    database_.AddCharacter(set_, 1, "Warrior");
    database_.AddLargeCard(set_, 1, "Siege");
    Card("Artist", "Ann");
    database_.Execute("UPDATE tblSet SET Autonumber = -1");
  }
  // Puts Null into a column of every row of a table; false where the file lets no Null in.
  bool Empty(const char* table, const QString& column) {
    return ErrorOf([&] { database_.Execute(QString("UPDATE %1 SET %2 = NULL").arg(table, column)); }) == 0;
  }
  QStringList ColumnsOf(const char* table) {
    return modData::OpenSnapshot(QString("SELECT * FROM %1").arg(table)).ColumnNames();
  }
  // Shows and composes the record of a kind; the number of the error.
  int Show(const Kind& kind) {
    dialogs_.boxes.clear();
    database_.SelectSet(set_);
    return ErrorOf([&] {
      kind.show();
      kind.compose();
    });
  }
  static Picture Shown() { return frmCard->picACard.Image(); }
};

TEST_F(NullsTest, OfARecord) {
  for (const Kind& kind : Kinds()) {
    Make(kind);
    ASSERT_EQ(Show(kind), 0);
    const Picture whole = Shown();
    for (const QString& column : ColumnsOf(kind.table).mid(2)) {
      SCOPED_TRACE(QString("%1.%2, edition %3").arg(kind.table, column).arg(kind.edition).toStdString());
      const Transaction undone(modData::cn);
      if (!Empty(kind.table, column)) continue;
      const bool fatal = kind.errors.contains(column);
      EXPECT_EQ(Show(kind), fatal ? kErrInvalidNull : 0);
      EXPECT_EQ(dialogs_.boxes.size(), kind.boxes.contains(column) ? 1u : 0u)
          << dialogs_.LastPrompt().toStdString();
      EXPECT_TRUE(!kSameWithout.contains(column) || Difference(whole, Shown()).isEmpty());
      dialogs_.boxes.clear();
      kind.save();
      const bool fails = kind.failures.contains(column);
      EXPECT_TRUE(fatal || dialogs_.boxes.size() == (fails ? 1u : 0u)) << dialogs_.LastPrompt().toStdString();
    }
  }
}

TEST_F(NullsTest, OfASetAndItsFonts) {
  for (const Kind& kind : Kinds()) {
    Make(kind);
    ASSERT_EQ(Show(kind), 0);
    const Picture whole = Shown();
    for (const char* table : {"tblSet", "tblFont"}) {
      for (const QString& column : ColumnsOf(table).mid(1)) {
        SCOPED_TRACE(QString("%1.%2 for %3").arg(table, column, kind.table).toStdString());
        const Transaction undone(modData::cn);
        if (!Empty(table, column)) continue;
        EXPECT_EQ(Show(kind), 0);
        EXPECT_TRUE(!kSameWithout.contains(column) || Difference(whole, Shown()).isEmpty());
        dialogs_.boxes.clear();
        kind.save();
        EXPECT_EQ(dialogs_.boxes.size(), column == u"SaveTo" ? 1u : 0u);
      }
    }
  }
}

}  // namespace
}  // namespace orv
