#include <QMenu>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "MasterScene.h"
#include "base/Files.h"
#include "editors/frmCard2nd.h"
#include "exchange/SetFile.h"
#include "shell/frmCreate.h"
#include "shell/inner/SetMenu.h"

namespace orv {
namespace {

class ExchangeTest : public testing::Test, protected MasterScene {
 protected:
  // Chooses an entry of the menu behind the tool at the far right, as a user does.
  static void ChooseInMenu(const QString& text) {
    const auto buttons = frmMaster->tbar.Handle()->findChildren<QToolButton*>();
    for (const QToolButton* button : buttons) {
      if (button->menu() == nullptr) continue;
      for (QAction* action : button->menu()->actions()) {
        if (action->text().remove(u'&').startsWith(text)) action->trigger();
      }
    }
  }
  QString Cards(int set) {
    return Scalar(
        qPrintable(QStringLiteral("SELECT group_concat(Nr || Title) AS Cards FROM (SELECT Nr, Title FROM "
                                  "tblCard WHERE SetID = %1 ORDER BY Nr)")
                       .arg(set)));
  }
};

TEST_F(ExchangeTest, ASetIsSavedAndBroughtIn) {
  const int set = database_.AddSet("Bay: east", 2);
  database_.AddCard(set, 1, "Eel");
  Start();
  const QString path = database_.Path("bay.orvset");
  dialogs_.files = {path, QString(), path};
  ChooseInMenu("Save set as");
  EXPECT_EQ(dialogs_.LastPrompt(), "The set is saved.");
  EXPECT_EQ(dialogs_.file_dialogs.back().FileName, "Bay_ east.orvset");
  EXPECT_EQ(SetsInFile(path), QStringList{"Bay: east"});
  ChooseInMenu("Bring in a set");
  EXPECT_EQ(frmMaster->cboSet.ListCount(), 1) << "cancelled";
  ChooseInMenu("Bring in a set");
  EXPECT_EQ(frmMaster->cboSet.Text(), "Bay: east (2)");
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), "Eel");

  ReplaceFile(path, QByteArray("no database"));
  dialogs_.files = {path};
  ChooseInMenu("Bring in a set");
  EXPECT_TRUE(
      dialogs_.LastPrompt().startsWith("\"bay.orvset\" could not be brought in, and nothing has changed."));
  EXPECT_EQ(frmMaster->cboSet.ListCount(), 2);
}

// What the user opens from the desktop.
TEST_F(ExchangeTest, AFileThatIsOpenedIsAskedAbout) {
  const int set = database_.AddSet("Bay", 2);
  const int other = database_.AddSet(QString(200, 'x'), 2);
  const QString one = database_.Path("one.orvset"), two = database_.Path("two.orvset");
  Start();
  for (const QString& path : {one, two}) SaveSet(modData::cn, set, path);
  {
    const Connection second = Connection::Open(two);
    for (const char* name : {"Eel\nbay", "%1"})
      second.Execute("INSERT INTO tblSet (SetName, EditionID) VALUES (?1, 2)", {Value(QString(name))});
  }
  SaveSet(modData::cn, other, database_.Path("long.orvset"));
  struct Case {
    QString file, told;
    Answer answer;
    int more;
  };
  database_.WriteFile("empty.orvset", {});
  database_.WriteFile("text.orvset", "no set\n");
  const QByteArray whole = ReadWhole(one);
  database_.WriteFile("short.orvset", whole.chopped(5000));
  QByteArray damaged = whole;
  damaged.replace(4096, 20000, QByteArray(20000, '\xff'));
  database_.WriteFile("damaged.orvset", damaged);
  const QString refused = "\"%1\" could not be brought in, and nothing has changed.\r\n\r\n";
  const auto path = [this](const char* name) { return database_.Path(name); };
  const Case cases[] = {
      {one, "Bring in this set?\r\n\r\nBay\r\n\r\nIt is in the file " + one, Answer::No, 0},
      {two, "Bring in these 3 sets?\r\n\r\n%1\r\nBay\r\nEel bay\r\n\r\nThey are in the file ", Answer::Yes,
       3},
      {path("long.orvset"), "Bring in this set?\r\n\r\n" + QString(80, 'x') + QChar(0x2026) + "\r\n",
       Answer::No, 0},
      {path("none.orvset"), refused.arg("none.orvset") + "There is no such file.", Answer::Yes, 0},
      {path("."), refused.arg(".") + "It is a folder.", Answer::Yes, 0},
      {path("empty.orvset"), refused.arg("empty.orvset") + "3000, ", Answer::Yes, 0},
      {path("text.orvset"), refused.arg("text.orvset") + "3000, ", Answer::Yes, 0},
      {path("short.orvset"), refused.arg("short.orvset") + "3000, ", Answer::Yes, 0},
      {path("damaged.orvset"), refused.arg("damaged.orvset") + "3000, ", Answer::Yes, 0},
      {path("orv.mdb"), refused.arg("orv.mdb") + "3000, The file is the open database itself.", Answer::Yes,
       0}};
  int sets = 2;
  for (const Case& each : cases) {
    SCOPED_TRACE(each.file.toStdString());
    dialogs_.answers = {each.answer};
    OfferSetOfFile(each.file);
    EXPECT_TRUE(dialogs_.LastPrompt().startsWith(each.told)) << dialogs_.LastPrompt().toStdString();
    sets += each.more;
    EXPECT_EQ(frmMaster->cboSet.ListCount(), sets);
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblSet"), QString::number(sets));
  }
}

TEST_F(ExchangeTest, ARecordIsDuplicatedByKeyAndByMenu) {
  const int set = database_.AddSet("A", 2);
  for (int nr : {1, 2}) database_.AddCard(set, nr, nr == 1 ? "Eel" : "Net");
  Start();
  ChooseInMenu("Duplicate");
  EXPECT_EQ(dialogs_.LastPrompt(), "Open an editor on what is to be copied first.");
  frmMaster->tbar.ButtonClick("card2nd");
  PressKey(frmCard2nd->txtTitle, Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(Cards(set), "1Eel,2Eel,3Net");
  EXPECT_EQ(frmCard2nd->lblCurrentCard.Caption(), "2 (3)");
  Retype(frmCard2nd->txtTitle, "Copy");
  ChooseInMenu("Duplicate");
  EXPECT_EQ(Cards(set), "1Eel,2Copy,3Copy,4Net");
}

TEST_F(ExchangeTest, ACardIsCopiedToAnotherSet) {
  const int set = database_.AddSet("A", 2);
  database_.AddCard(set, 1, "Eel");
  Start();
  frmMaster->tbar.ButtonClick("card2nd");
  ChooseInMenu("Copy to another set");
  EXPECT_EQ(dialogs_.LastPrompt(), "There is no other set of this edition.");
  database_.AddSet("Third", 3);
  const int other = database_.AddSet("B", 2);
  dialogs_.modals = {[](Form&) { ClickOn(frmChooseSet->cmdCancel); },
                     [](Form&) {
                       EXPECT_EQ(frmChooseSet->cboSet.ListCount(), 1);
                       ClickOn(frmChooseSet->cmdOK);
                     }};
  ChooseInMenu("Copy to another set");
  EXPECT_EQ(Cards(other), "~");
  ChooseInMenu("Copy to another set");
  EXPECT_EQ(Cards(other), "1Eel");
  EXPECT_EQ(Cards(set), "1Eel");
}

// Copies are written as other cards are.
TEST_F(ExchangeTest, CopiesAreWrittenOut) {
  const int other = database_.AddSet("B", 2), set = database_.AddSet("A", 2);
  database_.AddCard(set, 1, "Eel");
  database_.Execute("UPDATE tblCard SET FileName = 'Eel'");
  Start();
  frmMaster->tbar.ButtonClick("card2nd");
  ChooseInMenu("Duplicate");
  Retype(frmCard2nd->txtTitle, "Net");
  dialogs_.modals = {[](Form&) { ClickOn(frmChooseSet->cmdOK); }};
  ChooseInMenu("Copy to another set");
  EXPECT_EQ(Scalar("SELECT group_concat(quote(FileName)) FROM tblCard"), "'Eel','',''");
  dialogs_.boxes.clear();
  for (const int each : {set, other}) {
    frmMaster->cboSet.SetListIndex(each == set ? 0 : 1);
    frmCreate->CreateAllCards(true, false, false, false, false, false);
  }
  EXPECT_EQ(dialogs_.boxes.size(), 2u) << dialogs_.boxes.front().prompt.toStdString();
  EXPECT_EQ(Scalar("SELECT group_concat(FileName) FROM tblCard"), "Eel,Net,Net");
  EXPECT_TRUE(FileExists(database_.Path("C2 Net.BMP")));
}

// A database of an older version in the place of the program's: what the user is asked, and that No changes
// nothing.
TEST_F(ExchangeTest, AnOldDatabaseIsAskedAboutAtTheStart) {
  modData::cn = Connection();
  const QString path = database_.Path("orv.mdb");
  const QByteArray old = ReadWhole(QStringLiteral(ORV_OLD_DATABASE));
  ReplaceFile(path, old);
  EXPECT_FALSE(Main());
  EXPECT_EQ(ReadWhole(path), old);
  ASSERT_EQ(dialogs_.boxes.size(), 1u);

  ReplaceFile(path, old.left(100000));
  dialogs_.answers = {Answer::Yes};
  EXPECT_FALSE(Main());
  EXPECT_TRUE(dialogs_.LastPrompt().contains("damaged"));
  EXPECT_EQ(ReadWhole(path), old.left(100000));

  ReplaceFile(path, old);
  dialogs_.answers = {Answer::Yes};
  EXPECT_TRUE(Main());
  EXPECT_EQ(dialogs_.boxes.size(), 4u) << "nothing more is told";
  EXPECT_EQ(ReadWhole(database_.Path("orv-old.mdb")), old);
  EXPECT_EQ(frmMaster->cboSet.Text(), "The Saltwind Coast");
}

}  // namespace
}  // namespace orv
