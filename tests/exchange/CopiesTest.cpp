#include "exchange/Copies.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <thread>

#include "base/Files.h"
#include "records/NewDatabase.h"
#include "state/modData.h"
#include "support/Errors.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

class CopiesTest : public testing::Test {
 protected:
  CopiesTest() {
    set_ = database_.AddSet("Harbour", 2);
    database_.AddCard(set_, 1, "Eel");
  }
  QString Database() const { return database_.Path("orv.mdb"); }
  QStringList Backups() const {
    return QDir(database_.Path("backups")).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  void Make(int day) {
    MakeDailyCopy(Database(), QDate(2026, 1, day), [] { return true; });
  }
  static QString TitleIn(const QString& path) {
    return Recordset::OpenSnapshot(Connection::Open(path), "SELECT Title FROM tblCard")["Title"].Text();
  }

  TestDatabase database_;
  int set_ = 0;
};

TEST_F(CopiesTest, OneADayAndSevenAreKept) {
  database_.WriteFile("note.txt", "");
  for (int day = 1; day <= 9; ++day) Make(day);
  database_.Execute("UPDATE tblCard SET Title = 'Changed'");
  Make(9);
  EXPECT_EQ(Backups().size(), 7);
  EXPECT_EQ(CopiesOf(Database()).constFirst(), database_.Path("backups/orv-2026-01-09.mdb"));
  EXPECT_EQ(CopiesOf(Database()).constLast(), database_.Path("backups/orv-2026-01-03.mdb"));
  EXPECT_EQ(TitleIn(CopiesOf(Database()).constFirst()), "Eel");
}

// Edits go on while a copy is being made, and it is one state of the file.
TEST_F(CopiesTest, MadeBesideEdits) {
  for (int nr = 2; nr < 30; ++nr) {
    const int card = database_.AddCard(set_, nr, "Eel");
    database_.Store("tblCard", card, "Picture", QByteArray(400000, static_cast<char>(nr)));
  }
  std::atomic<int> parts = 0;
  std::atomic<bool> done = false;
  std::thread copying([&] {
    MakeDailyCopy(Database(), QDate(2026, 1, 1), [&] {
      ++parts;
      return true;
    });
    done = true;
  });
  int edits = 0;
  while (parts < 2) std::this_thread::yield();
  for (; !done && edits < 20; ++edits) {
    database_.Execute(
        QStringLiteral("UPDATE tblCard SET Title = 'Edit %1', Information = 'Edit %1'").arg(edits));
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  copying.join();
  EXPECT_GT(edits, 0);
  ASSERT_EQ(Backups(), QStringList{"orv-2026-01-01.mdb"});
  const Connection copy = Connection::Open(CopiesOf(Database()).constFirst());
  EXPECT_EQ(Recordset::OpenSnapshot(copy, "SELECT DISTINCT Title FROM tblCard").RecordCount(), 1);
}

TEST_F(CopiesTest, AStoppedCopyLeavesNothing) {
  MakeDailyCopy(Database(), QDate(2026, 1, 1), [] { return false; });
  EXPECT_EQ(Backups(), QStringList());
}

TEST_F(CopiesTest, RestoringKeepsWhatItReplaces) {
  Make(1);
  database_.Execute("UPDATE tblCard SET Title = 'Later'");
  const QString copy = CopiesOf(Database()).constFirst();
  EXPECT_EQ(ErrorOf([&] { RestoreCopy(Database(), copy); }), 70);
  modData::cn = Connection();
  const QString kept = RestoreCopy(Database(), copy);
  EXPECT_EQ(TitleIn(Database()), "Eel");
  EXPECT_EQ(TitleIn(kept), "Later");
  EXPECT_EQ(Backups().size(), 2);
  EXPECT_EQ(CopiesOf(Database()), QStringList{copy});

  ReplaceFile(copy, ReadWhole(copy).left(6000));
  EXPECT_NE(ErrorOf([&] { RestoreCopy(Database(), copy); }), 0);
  EXPECT_EQ(TitleIn(Database()), "Eel");
}

TEST_F(CopiesTest, OnlyADatabaseOfThisProgramIsRestored) {
  modData::cn = Connection();
  const QByteArray before = ReadWhole(Database());
  const QString other = database_.Path("other.mdb");
  MakeDatabase(other, QStringLiteral("CREATE TABLE places (name)"));
  EXPECT_EQ(ErrorOf([&] { RestoreCopy(Database(), other); }), 3000);
  EXPECT_EQ(ErrorOf([&] { RestoreCopy(Database(), database_.Path("none.mdb")); }), 53);
  EXPECT_EQ(ErrorOf([&] { RestoreCopy(Database(), database_.Folder()); }), 75);
  EXPECT_EQ(ReadWhole(Database()), before);
}

// A database that is damaged beyond playing back its journal: the journal is not the copy's.
TEST_F(CopiesTest, ARestoredCopyTakesNoJournalOfTheFileBefore) {
  Make(1);
  modData::cn = Connection();
  ReplaceFile(Database(), QByteArray("damaged"));
  const QString journal = database_.WriteFile("orv.mdb-journal", "of the damaged file");
  const QString kept = RestoreCopy(Database(), CopiesOf(Database()).constFirst());
  EXPECT_FALSE(FileExists(journal));
  EXPECT_EQ(ReadWhole(kept + "-journal"), "of the damaged file");
  EXPECT_EQ(TitleIn(Database()), "Eel");
}

}  // namespace
}  // namespace orv
