#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <functional>
#include <optional>

#include "base/Files.h"
#include "database/inner/CompactAndRepair.h"
#include "records/Connection.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Errors.h"
#include "support/SmallDisk.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

// The rows of all tables of a sound database, as one text; what is wrong for any other file.
QString ContentOf(const QString& path) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
  QString content;
  const auto read = [&](const QString& sql) {
    char* message = nullptr;
    const auto add = [](void* to, int count, char** values, char**) {
      for (int i = 0; i < count; ++i) *static_cast<QString*>(to) += QString::fromUtf8(values[i]) + u'|';
      return 0;
    };
    sqlite3_exec(database, sql.toUtf8().constData(), add, &content, &message);
    if (message != nullptr) content += message;
    sqlite3_free(message);
  };
  read("PRAGMA integrity_check");
  for (const char* table : {"tblSet_rows", "tblCard_rows", "tblFont", "tblCardType", "tblCardBack_rows"}) {
    read(QString("SELECT * FROM %1").arg(table));
  }
  read("SELECT TableName, RecordID, Digest, hex(File) FROM tblOriginal");
  read("SELECT CardBackID, length(Picture), hex(substr(Picture, 1, 200)) FROM tblCardBack");
  sqlite3_close(database);
  return content;
}

// Runs an action in another process, which ends by itself or is killed after a time; true if it ended by
// itself with success.
bool Elsewhere(const std::function<void()>& action, int kill_after_microseconds = 0) {
  const pid_t child = ::fork();
  if (child == 0) {
    try {
      action();
    } catch (...) {
      ::_exit(1);
    }
    ::_exit(0);
  }
  if (kill_after_microseconds > 0) {
    ::usleep(static_cast<useconds_t>(kill_after_microseconds));
    ::kill(child, SIGKILL);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class CompactionTest : public testing::Test {
 protected:
  // Half of the file is free.
  CompactionTest() {
    database_.AddSet("Set", 2);
    database_.Execute(
        "UPDATE tblCardBack SET Picture = randomblob(1000000); CREATE TABLE waste (b BLOB); INSERT "
        "INTO waste VALUES (randomblob(5000000)); DROP TABLE waste;"
        "INSERT INTO tblOriginal (TableName, RecordID, ColumnName, Scale, Digest, File) VALUES "
        "('tblCardBack', 1, "
        "'Picture', 0.1, 'digest', randomblob(3000))");
    modData::cn = Connection();
    content_ = ContentOf(Path("orv.mdb"));
    size_ = QFileInfo(Path("orv.mdb")).size();
  }

  QString Path(const char* name) { return database_.Path(QString(name)); }
  // The files of the database in the folder, "orv.mdb" first.
  QString Files() {
    return QDir(database_.Folder())
        .entryList({"*orv*"}, QDir::AllEntries | QDir::Hidden, QDir::Name)
        .join('|');
  }
  void ExpectWhole(const char* name) { EXPECT_TRUE(ContentOf(Path(name)) == content_) << name; }
  // The first box of a compaction, behind its fixed words.
  QString Cause() {
    if (dialogs_.boxes.empty()) return {};
    const QString start =
        "ORV tried to compact the database but a problem occured.\r\n"
        "Would you like ORV will to try restore its backup?\r\n\r\n";
    EXPECT_TRUE(dialogs_.boxes[0].prompt.startsWith(start));
    EXPECT_EQ(dialogs_.boxes[0].title, "Repair database");
    EXPECT_EQ(dialogs_.boxes[0].icon, Icon::Exclamation);
    return dialogs_.boxes[0].prompt.mid(start.size());
  }
  // Compacts, answering the offer to restore; the error that comes out of it, 0 for none.
  int Compact(Answer answer) {
    dialogs_.boxes.clear();
    dialogs_.answers = {answer};
    return ErrorOf(CompactAndRepair);
  }
  static void RunSteps(Compaction& compaction, int count) {
    const std::function<void()> steps[] = {[&] { compaction.RemoveLeftover(); }, [&] { compaction.Backup(); },
                                           [&] { compaction.Compact(); }, [&] { compaction.Swap(); },
                                           [&] { compaction.RemoveBackup(); }};
    for (int i = 0; i < count; ++i) steps[i]();
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  QString content_;
  qint64 size_ = 0;
};

TEST_F(CompactionTest, LeavesOneSmallerFileAndSaysNothing) {
  ASSERT_EQ(content_.left(3), "ok|");
  database_.WriteFile("orv1.mdb", "a leftover");
  database_.WriteFile("orv1.mdb-journal", "a leftover");
  database_.WriteFile("orvbup.mdb", "an older backup");
  const QFile::Permissions owner_only =
      QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
  QFile::setPermissions(Path("orv.mdb"), owner_only);
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_TRUE(dialogs_.boxes.empty()) << Cause().toStdString();
    EXPECT_EQ(Files(), "orv.mdb");
    ExpectWhole("orv.mdb");
    EXPECT_LT(QFileInfo(Path("orv.mdb")).size(), size_ - 4900000);
    EXPECT_EQ(QFile::permissions(Path("orv.mdb")), owner_only);
  }
}

TEST_F(CompactionTest, WhatACrashLeftIsRecoveredFirst) {
  EXPECT_FALSE(Elsewhere([this] {
    const Connection connection = Connection::Open(Path("orv.mdb"));
    connection.Execute(
        "PRAGMA cache_size = 1; BEGIN; DELETE FROM tblCardBack_long; UPDATE tblCardType SET UpperLeft = "
        "'torn'; CREATE TABLE t (b); INSERT INTO t VALUES (randomblob(3000000))");
    ::raise(SIGKILL);
  }));
  ASSERT_GT(QFileInfo(Path("orv.mdb-journal")).size(), 0);
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_EQ(Files(), "orv.mdb");
  ExpectWhole("orv.mdb");
}

// SQLite plays nothing back from a journal that hasn't reached the disk, and leaves it where it is.
TEST_F(CompactionTest, AJournalThatAKillLeftUnsyncedIsNoObstacle) {
  const auto leave = [this] {
    EXPECT_FALSE(Elsewhere([this] {
      sqlite3* other = nullptr;
      sqlite3_open(Path("orv.mdb").toUtf8().constData(), &other);
      sqlite3_exec(other, "BEGIN; UPDATE tblCardType SET UpperLeft = 'torn'", nullptr, nullptr, nullptr);
      ::raise(SIGKILL);
    }));
    return ReadWhole(Path("orv.mdb-journal")).left(1);
  };
  ASSERT_EQ(leave(), QByteArray(1, '\0'));
  EXPECT_EQ(Compact(Answer::Yes), 0);
  EXPECT_TRUE(dialogs_.boxes.empty()) << Cause().toStdString();
  EXPECT_EQ(Files(), "orv.mdb");
  ExpectWhole("orv.mdb");

  // Nor for the restoring.
  Compaction compaction;
  RunSteps(compaction, 3);
  leave();
  compaction.Restore();
  ExpectWhole("orv.mdb");
  EXPECT_FALSE(FileExists(Path("orv.mdb-journal")));

  // One that another program is about to fill is let be.
  sqlite3* other = nullptr;
  sqlite3_open(Path("orv.mdb").toUtf8().constData(), &other);
  sqlite3_exec(other, "BEGIN; UPDATE tblCardType SET UpperLeft = 'new'", nullptr, nullptr, nullptr);
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Cause(), "70, Permission denied");
  EXPECT_EQ(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(other);
  EXPECT_TRUE(ContentOf(Path("orv.mdb")).contains("|new|"));
}

TEST_F(CompactionTest, AFailureBeforeTheBackupLeavesTheDatabase) {
  struct Case {
    const char* folder;  // in the way of a file of this name
    rlim_t room;
  };
  for (const auto& [folder, room] : {Case("orv1.mdb", RLIM_INFINITY), Case("orvbup.mdb", RLIM_INFINITY),
                                     Case("none", static_cast<rlim_t>(size_ / 2))}) {
    SCOPED_TRACE(folder);
    QDir().mkpath(Path(folder) + "/x");
    std::optional<SmallDisk> disk(room);
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_EQ(Cause(), "75, Path/File access error");
    ASSERT_EQ(dialogs_.boxes.size(), 2U);
    EXPECT_EQ(dialogs_.boxes[1].prompt,
              "The database is backup up as '\\orvbup.mdb'. You may manually rename it to '\\orv.mdb'.");
    EXPECT_EQ(dialogs_.boxes[1].title, "Repair");
    EXPECT_EQ(dialogs_.boxes[1].icon, Icon::Information);
    // There is no backup to restore from, and what there is instead must not take the database's place.
    if (!FileExists(Path("orvbup.mdb"))) database_.WriteFile("orvbup.mdb", "older");
    EXPECT_EQ(Compact(Answer::Yes), kErrFileNotFound);
    disk.reset();
    ExpectWhole("orv.mdb");
    QDir(Path(folder)).removeRecursively();
    QFile::remove(Path("orvbup.mdb"));
  }
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Files(), "orv.mdb");
}

TEST_F(CompactionTest, ABrokenFileIsReplacedByItsOwnCopy) {
  QByteArray broken = ReadWhole(Path("orv.mdb"));
  broken.replace(4096, 3 * 4096, QByteArray(3 * 4096, 'x'));
  for (const QByteArray& bytes : {broken, broken.left(50000), QByteArray("no database"), QByteArray()}) {
    QFile::remove(Path("orv1.mdb"));
    database_.WriteFile("orv.mdb", bytes);
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_TRUE(Cause().startsWith("3000, Database error: ")) << Cause().toStdString();
    EXPECT_EQ(ReadWhole(Path("orv.mdb")), bytes);
    EXPECT_EQ(ReadWhole(Path("orvbup.mdb")), bytes);
    EXPECT_EQ(Compact(Answer::Yes), 0);
    EXPECT_EQ(dialogs_.boxes.size(), 1U);
    EXPECT_EQ(ReadWhole(Path("orv.mdb")), bytes);
    EXPECT_FALSE(FileExists(Path("orvbup.mdb")));
  }
}

TEST_F(CompactionTest, ASecondProgramKeepsItsFile) {
  int started[2];
  ASSERT_EQ(::pipe(started), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const Connection connection = Connection::Open(Path("orv.mdb"));
    if (::write(started[1], "x", 1) == 1) ::pause();
    ::_exit(1);
  }
  char byte = 0;
  ASSERT_EQ(::read(started[0], &byte, 1), 1);
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Cause(), "70, Permission denied: another program is using the database");
  ExpectWhole("orvbup.mdb");
  // What the other program goes on writing to must not be deleted under it.
  EXPECT_EQ(Compact(Answer::Yes), kErrPermissionDenied);
  ExpectWhole("orv.mdb");
  ExpectWhole("orvbup.mdb");
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Files(), "orv.mdb");
}

TEST_F(CompactionTest, NobodyComesInOnceTheFileIsBeingCompacted) {
  const auto comes_in = [this] {
    QFile file(Path("orv.mdb"));
    return file.open(QIODevice::ReadOnly) && ::flock(file.handle(), LOCK_SH | LOCK_NB) == 0;
  };
  Compaction compaction;
  RunSteps(compaction, 2);
  EXPECT_TRUE(comes_in());
  compaction.Compact();
  EXPECT_FALSE(comes_in());
  compaction.Swap();
  EXPECT_TRUE(comes_in());
}

TEST_F(CompactionTest, AFailureOfALaterStepCanBeRestored) {
  const struct {
    const char* what;
    int before;  // steps that end well
    std::function<void()> spoil;
    std::function<void(Compaction&)> step;
  } cases[] = {
      {"no room for the compacted file", 2, [] {},
       [this](Compaction& compaction) {
         const SmallDisk small(static_cast<rlim_t>(size_ / 10));
         compaction.Compact();
       }},
      {"the compacted file is gone", 3, [this] { QFile::remove(Path("orv1.mdb")); },
       [](Compaction& compaction) { compaction.Swap(); }},
      {"the backup can't be deleted", 4, [this] { QFile::rename(Path("orvbup.mdb"), Path("aside")); },
       [](Compaction& compaction) { compaction.RemoveBackup(); }}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    Compaction compaction;
    RunSteps(compaction, one.before);
    one.spoil();
    EXPECT_THROW(one.step(compaction), RuntimeError);
    ExpectWhole("orv.mdb");
    QFile::rename(Path("aside"), Path("orvbup.mdb"));
    compaction.Restore();
    ExpectWhole("orv.mdb");
    EXPECT_FALSE(FileExists(Path("orvbup.mdb")));
  }
}

TEST_F(CompactionTest, NoJournalStandsAtASwap) {
  Compaction compaction;
  RunSteps(compaction, 3);
  database_.WriteFile("orv.mdb-journal", "of another program");
  EXPECT_THROW(compaction.Swap(), RuntimeError);
  EXPECT_EQ(QFileInfo(Path("orv.mdb")).size(), size_);
  database_.WriteFile("orv.mdb", "no database that it could be played back to");
  EXPECT_THROW(compaction.Restore(), RuntimeError);
  EXPECT_EQ(QFileInfo(Path("orvbup.mdb")).size(), size_);
}

TEST_F(CompactionTest, AKillBetweenStepsLeavesTheDatabaseWhole) {
  const char* const files[] = {"orv.mdb", "orv.mdb|orvbup.mdb", "orv.mdb|orv1.mdb|orvbup.mdb",
                               "orv.mdb|orvbup.mdb", "orv.mdb"};
  for (int steps = 1; steps <= 5; ++steps) {
    SCOPED_TRACE(steps);
    EXPECT_FALSE(Elsewhere([steps] {
      Compaction compaction;
      RunSteps(compaction, steps);
      ::raise(SIGKILL);
    }));
    EXPECT_EQ(Files(), files[steps - 1]);
    for (const QString& file : Files().split('|')) ExpectWhole(file.toUtf8().constData());
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_TRUE(dialogs_.boxes.empty());
    EXPECT_EQ(Files(), "orv.mdb");
  }
}

TEST_F(CompactionTest, AKillAtAnyMomentLeavesTheDatabaseWhole) {
  const QByteArray whole = ReadWhole(Path("orv.mdb"));
  for (int round = 0; round < 60; ++round) {
    ASSERT_TRUE(QFile(Path("orv.mdb")).exists());
    Elsewhere([] { CompactAndRepair(); }, 500 + round * 1500);
    ASSERT_TRUE(ContentOf(Path("orv.mdb")) == content_) << "killed in round " << round;
    if (QFileInfo(Path("orv.mdb")).size() != whole.size()) ReplaceFile(Path("orv.mdb"), whole);
  }
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Files(), "orv.mdb");
}

}  // namespace
}  // namespace orv
