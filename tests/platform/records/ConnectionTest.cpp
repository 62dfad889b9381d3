#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QtEndian>

#include "base/Files.h"
#include "platform/records/Sample.h"
#include "records/Compaction.h"
#include "records/FileLock.h"
#include "records/LockWaiting.h"
#include "records/inner/Guards.h"
#include "records/inner/LockWait.h"

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

TEST_F(ConnectionTest, ObjectsAreComparedByTheirTokens) {
  Raw("CREATE TABLE kept ( \"Key\"  INTEGER,/* a note */[value] text DEFAULT 'A b' )");
  const auto error_of = [&](const char* type, const char* name, const QString& statement) {
    return ErrorOf([&] { connection_.RequireObjects({{type, name, {"CREATE TABLE x", statement}}}); });
  };
  const char* const made = "create table Kept (key INTEGER, \nValue TEXT DEFAULT 'A b')";
  EXPECT_EQ(error_of("table", "KEPT", made), 0);
  EXPECT_EQ(error_of("view", "kept", made), 3000);
  EXPECT_EQ(error_of("table", "nowhere", made), 3000);
  for (const char* other : {"a b", "A  b", "A b', x TEXT DEFAULT '", "A b') STRICT, ('"})
    EXPECT_EQ(error_of("table", "kept", QString(made).replace("A b", other)), 3000) << other;
  EXPECT_EQ(error_of("table", "kept", QString(made).replace("'A b'", "\"A b\"")), 3000);
}

// Interior pages of a table, each of which shows the next one wherever it should show another.
TEST_F(ConnectionTest, ATableWithoutEndIsGivenUp) {
  connection_ = {};
  Raw("PRAGMA page_size = 512; VACUUM");
  Raw("WITH RECURSIVE n(i) AS (SELECT 3 UNION ALL SELECT i + 1 FROM n LIMIT 900) INSERT INTO tblLanguage "
      "SELECT i, printf('%400d', i) FROM n");
  const int root = Raw("SELECT rootpage FROM sqlite_schema WHERE name = 'tblLanguage'").toInt();
  QByteArray file = ReadWhole(Path());
  constexpr int kPage = 512;
  std::vector<int> chain = {root};
  int leaf = 0;
  for (int page = 2; page <= file.size() / kPage; ++page) {
    const char type = file[(page - 1) * kPage];
    if (type == 5 && page != root) chain.push_back(page);
    if (type == 13) leaf = page;
  }
  ASSERT_GT(chain.size(), 8U);
  chain.push_back(leaf);
  for (size_t i = 0; i + 1 < chain.size(); ++i) {
    char* const page = file.data() + (chain[i] - 1) * kPage;
    qToBigEndian<quint32>(static_cast<quint32>(chain[i + 1]), page + 8);
    for (int cell = 0; cell < qFromBigEndian<quint16>(page + 3); ++cell) {
      char* const pointer = page + qFromBigEndian<quint16>(page + 12 + 2 * cell);
      qToBigEndian<quint32>(static_cast<quint32>(chain[i + 1]), pointer);
    }
  }
  const QString endless = Write("endless.mdb", file);
  EXPECT_EQ(ErrorOf([&] { CompactDatabase(endless, folder_.filePath("compacted.mdb")); }), 3000);
  connection_ = Connection::Open(endless);
  read_limit = std::chrono::milliseconds(300);
  EXPECT_EQ(ErrorOf([&] { Snapshot("SELECT * FROM tblLanguage"); }), 3000);
  EXPECT_EQ(ErrorOf([&] { Editable("SELECT * FROM tblLanguage"); }), 3000);
  read_limit = std::chrono::seconds(30);
  EXPECT_FALSE(Snapshot("SELECT * FROM tblSet").IsEmpty());
}

// Memory that a file of a few bytes asks for.
TEST_F(ConnectionTest, AnExpressionThatIsTooLargeIsAnError) {
  Raw("CREATE VIEW large AS SELECT zeroblob(900000000) AS b");
  Raw("CREATE VIEW deep AS WITH RECURSIVE n(t) AS (SELECT zeroblob(500000000) UNION ALL SELECT t FROM n) "
      "SELECT "
      "* FROM n");
  for (const char* view : {"large", "deep"})
    EXPECT_NE(ErrorOf([&] { Snapshot(QString("SELECT * FROM ") + view); }), 0) << view;
  EXPECT_FALSE(Snapshot("SELECT * FROM tblSet").IsEmpty());
}

TEST_F(ConnectionTest, AChangeWaitsForTheLockOfAnotherProgram) {
  patience = std::chrono::milliseconds(300);
  QString told;
  bool goes_on = true;
  WaitingForLock = [&](bool waiting) { told += waiting ? "waits " : "over "; };
  GoOnWaiting = [&] {
    told += "asks ";
    if (goes_on) Raw("COMMIT");
    return goes_on;
  };
  Recordset cards = Cards();
  const auto change = [&](const char* lock, const char* title, const QByteArray& picture) {
    Raw(lock);
    cards["Title"] = title;
    if (!picture.isEmpty()) cards["Picture"] = picture;
    return ErrorOf([&] { cards.Update(); });
  };
  EXPECT_EQ(change("BEGIN IMMEDIATE", "short", ""), 0);
  EXPECT_EQ(told, "waits over asks ");
  // A reader keeps it from the file at the end of the change only.
  EXPECT_EQ(change("BEGIN; SELECT * FROM tblCard", "read", ""), 0);
  EXPECT_EQ(change("BEGIN; SELECT * FROM tblCard", "long", "picture"), 0);
  EXPECT_EQ(Raw("SELECT Title || Picture FROM tblCard WHERE CardID = 2"), "longpicture");
  EXPECT_EQ(change("BEGIN EXCLUSIVE", "locked", "another"), 0);
  EXPECT_EQ(StoredTitle(), "locked");
  Raw("BEGIN EXCLUSIVE");
  EXPECT_EQ(ErrorOf([&] { Open(); }), 0);
  goes_on = false;
  EXPECT_EQ(change("BEGIN IMMEDIATE", "kept", ""), 70);
  Raw("COMMIT");
  cards.Update();
  EXPECT_EQ(StoredTitle(), "kept");
  WaitingForLock = nullptr;
  GoOnWaiting = nullptr;
  patience = std::chrono::seconds(5);
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
    {
      const ReadScope inner(connection_);
    }
    other.Execute("PRAGMA busy_timeout = 0");
    EXPECT_EQ(ErrorOf([&] { other.Execute("UPDATE tblCard_rows SET Title = 'x' WHERE CardID = 2"); }), 70);
    EXPECT_NE(ErrorOf([&] { Transaction change(connection_); }), 0);
  }
  other.Execute("UPDATE tblCard_rows SET Title = 'x' WHERE CardID = 2");
  EXPECT_EQ(title(), "x");
  Transaction change(connection_);
  {
    const ReadScope within(connection_);
  }
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
