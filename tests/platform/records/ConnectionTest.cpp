#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "base/Files.h"
#include "platform/records/Sample.h"
#include "records/FileLock.h"

namespace orv {
namespace {

class ConnectionTest : public Sample {
 protected:
  QString Write(const char* name, const QByteArray& bytes) const {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
};

TEST_F(ConnectionTest, ARefusedFileStaysAsItWas) {
  const QByteArray whole = ReadWhole(Path());
  QByteArray wrong_magic = whole;
  wrong_magic[3] = 'x';
  const std::vector<std::pair<const char*, QByteArray>> files = {
      {"empty", ""},
      {"text", "This is no database, however long it may be.\n"},
      {"long text", QByteArray(50'000, 'x')},
      {"magic", wrong_magic},
      {"cut to 1", whole.left(1)},
      {"cut to 16", whole.left(16)},
      {"cut to 100", whole.left(100)},
      {"cut to a page", whole.left(4096)},
      {"cut by a page", whole.chopped(4096)},
      {"cut by a byte", whole.chopped(1)}};
  for (const auto& [name, bytes] : files) {
    const QString path = Write("broken.mdb", bytes);
    struct stat before {
    }, after{};
    ::stat(path.toUtf8().constData(), &before);
    EXPECT_EQ(ErrorOf([&] { Connection::Open(path); }), 3000) << name;
    ::stat(path.toUtf8().constData(), &after);
    EXPECT_TRUE(ReadWhole(path) == bytes) << name;
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec) << name;
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList({"broken.mdb", "orv.mdb"})) << name;
  }
  EXPECT_EQ(ErrorOf([&] { Connection::Open(folder_.filePath("none.mdb")); }), 53);
  EXPECT_FALSE(FileExists(folder_.filePath("none.mdb")));
  EXPECT_EQ(ErrorOf([&] { Connection::Open(folder_.path()); }), 75);
  EXPECT_EQ(ErrorOf([] { Connection().Execute("SELECT 1"); }), 91);
}

TEST_F(ConnectionTest, RequiresColumnsWithoutRegardToCase) {
  const QByteArray before = ReadWhole(Path());
  EXPECT_EQ(
      ErrorOf([&] { connection_.RequireColumns("tblcard: cardid, PICTURE\n\n tblSet: AutoNumber,SetID\n"); }),
      0);
  for (const char* schema : {"tblCard: CardID, Nowhere", "tblNowhere: CardID", "tblCard\n\"tblSet: SetID"}) {
    EXPECT_EQ(ErrorOf([&] { connection_.RequireColumns(schema); }), 3000) << schema;
  }
  EXPECT_TRUE(ReadWhole(Path()) == before);
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
  int status = 0;
  waitpid(child, &status, 0);
  const QString journal = Path() + "-journal";
  ASSERT_TRUE(QFile::exists(journal) && QFileInfo(journal).size() > 0);
  connection_ = Open();
  EXPECT_EQ(Raw("SELECT group_concat(IFNULL(Title, '~')) FROM tblCard"), "Bravo,Alpha,alpha,Delta,~,Other");
  EXPECT_FALSE(QFile::exists(journal));

  // A journal beside what is no database changes nothing.
  const QString text = Write("text.mdb", QByteArray(5000, 'x'));
  Write("text.mdb-journal", QByteArray(5000, 'j'));
  EXPECT_EQ(ErrorOf([&] { Connection::Open(text); }), 3000);
  EXPECT_EQ(ReadWhole(text), QByteArray(5000, 'x'));
  EXPECT_EQ(QFileInfo(text + "-journal").size(), 5000);
}

TEST_F(ConnectionTest, TransactionsNestAndRollBackUnlessCommitted) {
  Recordset cards = Cards();
  const auto write = [&](const char* title) {
    cards["Title"] = title;
    cards.Update();
  };
  const auto stored = [&] { return Raw("SELECT Title FROM tblCard WHERE CardID = 2"); };
  {
    Transaction outer(connection_);
    write("outer");
    EXPECT_EQ(stored(), "Alpha");
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
  EXPECT_EQ(stored(), "inner kept");
  {
    Transaction outer(connection_);
    Transaction inner(connection_);
    write("lost");
    cards.AddNew();
    cards.Update();
    inner.Commit();
  }
  EXPECT_EQ(stored(), "inner kept");
  cards.MoveLast();
  EXPECT_EQ(cards["CardID"].Int32(), 5);  // the row that was rolled back is gone again
  write("after");
  EXPECT_EQ(Raw("SELECT Title FROM tblCard WHERE CardID = 5"), "after");
}

TEST_F(ConnectionTest, WithinAReadScopeAllReadsShowOneState) {
  const auto title = [&] { return Snapshot("SELECT Title FROM tblCard WHERE CardID = 2")["Title"].Text(); };
  Connection other = Open();
  {
    const ReadScope reading(connection_);
    EXPECT_EQ(title(), "Alpha");
    {
      const ReadScope inner(connection_);
      EXPECT_EQ(title(), "Alpha");
    }
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
  EXPECT_EQ(Raw("SELECT Title FROM tblCard WHERE CardID = 2"), "y");
}

TEST_F(ConnectionTest, ErrorsTellTheirCause) {
  Recordset cards = Cards();
  cards["Title"] = "waits";
  Raw("BEGIN IMMEDIATE");
  connection_.Execute("PRAGMA busy_timeout = 50");
  EXPECT_EQ(ErrorOf([&] { cards.Update(); }), 70);
  EXPECT_EQ(ErrorOf([&] { Transaction transaction(connection_); }), 70);
  Raw("COMMIT");
  cards.Update();  // nothing was lost
  EXPECT_EQ(Raw("SELECT Title FROM tblCard WHERE CardID = 2"), "waits");
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

TEST_F(ConnectionTest, ConnectionsShareTheFileAndCompactionNeedsItAlone) {
  const Connection second = Open();
  EXPECT_EQ(ErrorOf([&] { ExclusiveFileLock lock(Path()); }), 70);
  // So does another process.
  const auto in_another_process = [&](auto action) {
    const pid_t child = fork();
    if (child == 0) {
      // Locks are of open files, which fork shares; only one of its own tells.
      _exit(execl("/usr/bin/flock", "flock", "-n", action, Path().toUtf8().constData(), "true", nullptr));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
  };
  EXPECT_EQ(in_another_process("-s"), 0);
  EXPECT_EQ(in_another_process("-x"), 1);
  connection_ = {};
  EXPECT_EQ(in_another_process("-x"), 1);
}

TEST_F(ConnectionTest, TheHolderOfTheExclusiveLockMayOpenTheFile) {
  connection_ = {};
  {
    ExclusiveFileLock lock(Path());
    EXPECT_EQ(ErrorOf([&] { ExclusiveFileLock again(Path()); }), 70);
    const Connection mine = Open();
    mine.Execute(QString("VACUUM INTO '%1'").arg(folder_.filePath("orv1.mdb")));
    EXPECT_EQ(Recordset::OpenSnapshot(mine, "SELECT * FROM pragma_integrity_check")["integrity_check"].Text(),
              "ok");
  }
  EXPECT_EQ(ErrorOf([&] { ExclusiveFileLock lock(Path()); }), 0);
  EXPECT_EQ(ErrorOf([&] { ExclusiveFileLock lock(folder_.filePath("none.mdb")); }), 53);
  EXPECT_EQ(Rows(Recordset::OpenSnapshot(Connection::Open(folder_.filePath("orv1.mdb")),
                                         "SELECT * FROM tblLanguage"),
                 {"Language"}),
            "English / Deutsch");
}

}  // namespace
}  // namespace orv
