#include <sys/wait.h>
#include <unistd.h>

#include <QDir>

#include "base/Files.h"
#include "platform/records/Sample.h"
#include "records/FileLock.h"

namespace orv {
namespace {

class ConnectionTest : public Sample {
 protected:
  QString Write(const char* name, const QByteArray& bytes) const {
    ReplaceFile(folder_.filePath(name), bytes);
    return folder_.filePath(name);
  }
  int ErrorOfOpening(const QString& path) const {
    return ErrorOf([&] { Connection::Open(path); });
  }
};

TEST_F(ConnectionTest, ARefusedFileStaysAsItWas) {
  const QByteArray whole = ReadWhole(Path());
  QByteArray wrong_magic = whole;
  wrong_magic[3] = 'x';
  using File = std::pair<const char*, QByteArray>;
  for (const auto& [name, bytes] :
       {File("empty", ""), File("text", "This is no database, however long it may be.\n"),
        File("long text", QByteArray(50'000, 'x')), File("magic", wrong_magic),
        File("cut to 1", whole.left(1)), File("cut to 16", whole.left(16)),
        File("cut to 100", whole.left(100)), File("cut to a page", whole.left(4096)),
        File("cut by a page", whole.chopped(4096)), File("cut by a byte", whole.chopped(1))}) {
    const QString path = Write("broken.mdb", bytes);
    EXPECT_EQ(ErrorOfOpening(path), 3000) << name;
    EXPECT_TRUE(ReadWhole(path) == bytes) << name;
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList({"broken.mdb", "orv.mdb"})) << name;
  }
  EXPECT_EQ(ErrorOfOpening(folder_.filePath("none.mdb")), 53);
  EXPECT_FALSE(FileExists(folder_.filePath("none.mdb")));
  EXPECT_EQ(ErrorOfOpening(folder_.path()), 75);
  EXPECT_EQ(ErrorOf([] { Connection().Execute("SELECT 1"); }), 91);
}

TEST_F(ConnectionTest, RequiresColumnsWithoutRegardToCase) {
  const auto error_of = [&](const char* table, const QStringList& columns) {
    return ErrorOf([&] { connection_.RequireColumns(table, columns); });
  };
  EXPECT_EQ(error_of("tblcard", {"cardid", "PICTURE"}), 0);
  EXPECT_EQ(error_of("tblCard", {"CardID", "Nowhere"}), 3000);
  for (const char* table : {"tblNowhere", "\"tblSet"}) EXPECT_EQ(error_of(table, {"SetID"}), 3000) << table;
}

TEST_F(ConnectionTest, RecoversWhatACrashLeft) {
  // Another process ends in the middle of a change that has reached the file.
  const pid_t child = fork();
  if (child == 0) {
    sqlite3* database = nullptr;
    sqlite3_open(Path().toUtf8().constData(), &database);
    sqlite3_exec(database,
                 "PRAGMA cache_size = 1; BEGIN; UPDATE tblCard SET Title = 'half'; UPDATE tblCard_rows SET "
                 "BoldText = hex(randomblob(9000))",
                 nullptr, nullptr, nullptr);
    _exit(0);
  }
  waitpid(child, nullptr, 0);
  const QString journal = Path() + "-journal";
  ASSERT_FALSE(ReadWhole(journal).isEmpty());
  connection_ = Open();
  EXPECT_EQ(Raw("SELECT group_concat(Title) FROM tblCard"), "Bravo,Alpha,alpha,Delta,,Other");
  EXPECT_FALSE(FileExists(journal));

  // A journal beside what is no database changes nothing.
  const QString text = Write("text.mdb", QByteArray(5000, 'x'));
  const QString beside = Write("text.mdb-journal", QByteArray(5000, 'j'));
  EXPECT_EQ(ErrorOfOpening(text), 3000);
  EXPECT_EQ(ReadWhole(text), QByteArray(5000, 'x'));
  EXPECT_EQ(ReadWhole(beside), QByteArray(5000, 'j'));
}

TEST_F(ConnectionTest, TransactionsNestAndRollBackUnlessCommitted) {
  Recordset cards = Cards();
  const auto write = [&](const char* title) {
    cards["Title"] = title;
    cards.Update();
  };
  {
    Transaction outer(connection_);
    write("outer");
    EXPECT_EQ(StoredTitle(), "Alpha");
    {
      Transaction inner(connection_);
      write("inner");
    }
    cards.MoveFirst();
    EXPECT_EQ(cards["Title"].Text(), "outer");
    {
      Transaction inner(connection_);
      write("inner kept");
      inner.Commit();
    }
    outer.Commit();
  }
  EXPECT_EQ(StoredTitle(), "inner kept");
  {
    Transaction outer(connection_);
    Transaction inner(connection_);
    write("lost");
    cards.AddNew();
    cards.Update();
    inner.Commit();
  }
  EXPECT_EQ(StoredTitle(), "inner kept");
  cards.MoveLast();
  EXPECT_EQ(cards["CardID"].Int32(), 5) << "the row that was rolled back is gone again";
}

TEST_F(ConnectionTest, WithinAReadScopeAllReadsShowOneState) {
  const auto title = [&] { return Snapshot("SELECT Title FROM tblCard WHERE CardID = 2")["Title"].Text(); };
  Connection other = Open();
  {
    const ReadScope reading(connection_);
    EXPECT_EQ(title(), "Alpha");
    { const ReadScope inner(connection_); }
    other.Execute("PRAGMA busy_timeout = 0");
    EXPECT_EQ(ErrorOf([&] { other.Execute("UPDATE tblCard_rows SET Title = 'x' WHERE CardID = 2"); }), 70);
    EXPECT_NE(ErrorOf([&] { Transaction change(connection_); }), 0);
  }
  other.Execute("UPDATE tblCard_rows SET Title = 'x' WHERE CardID = 2");
  EXPECT_EQ(title(), "x");
  Transaction change(connection_);
  { const ReadScope within(connection_); }
  connection_.Execute("UPDATE tblCard_rows SET Title = 'y' WHERE CardID = 2");
  change.Commit();
  EXPECT_EQ(StoredTitle(), "y");
}

TEST_F(ConnectionTest, ErrorsTellTheirCauseAndLoseNothing) {
  Recordset cards = Cards();
  cards["Title"] = "waits";
  Raw("BEGIN IMMEDIATE");
  connection_.Execute("PRAGMA busy_timeout = 50");
  EXPECT_EQ(ErrorOf([&] { cards.Update(); }), 70);
  EXPECT_EQ(ErrorOf([&] { Transaction transaction(connection_); }), 70);
  Raw("COMMIT");
  cards.Update();
  EXPECT_EQ(StoredTitle(), "waits");
  connection_.Execute("PRAGMA max_page_count = 1");
  cards["Picture"] = QByteArray(5'000'000, 'x');
  EXPECT_EQ(ErrorOf([&] { cards.Update(); }), 61);
  connection_.Execute("PRAGMA max_page_count = 1000000");
  EXPECT_EQ(Raw("SELECT COUNT(*) || (SELECT integrity_check FROM pragma_integrity_check) FROM tblCard_long"),
            "1ok");
  cards.Update();
  EXPECT_EQ(Raw("SELECT length(Picture) FROM tblCard WHERE CardID = 2"), "5000000");
  EXPECT_EQ(ErrorOf([&] { connection_.Execute("NONSENSE"); }), 3000);
}

TEST_F(ConnectionTest, TheExclusiveLockNeedsTheFileAloneAndLetsItsHolderIn) {
  const auto lock = [](const QString& path) { return ErrorOf([&] { ExclusiveFileLock alone(path); }); };
  Connection second = Open();
  connection_ = {};
  EXPECT_EQ(lock(Path()), 70) << "the second connection still stands";
  second = {};
  {
    const ExclusiveFileLock alone(Path());
    EXPECT_EQ(lock(Path()), 70);
    const QString copy = folder_.filePath("copy.mdb");
    Open().Execute(QString("VACUUM INTO '%1'").arg(copy));
    const auto languages =
        Recordset::OpenSnapshot(Connection::Open(copy), "SELECT * FROM tblLanguage ORDER BY LanguageID");
    EXPECT_EQ(Rows(languages, {"Language"}), "English / Deutsch");
  }
  EXPECT_EQ(lock(Path()), 0);
  EXPECT_EQ(lock(folder_.filePath("none.mdb")), 53);
}

}  // namespace
}  // namespace orv
