#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <functional>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "database/CompactAndRepair.h"
#include "records/Connection.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

// The rows of all tables of a sound database, as one text; what is wrong for any other file.
QString ContentOf(const QString& path) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
  const auto read = [database](const QString& sql) {
    QString text;
    char* message = nullptr;
    const auto add = [](void* to, int count, char** values, char**) {
      for (int i = 0; i < count; ++i) *static_cast<QString*>(to) += QString::fromUtf8(values[i]) + u'|';
      return 0;
    };
    sqlite3_exec(database, sql.toUtf8().constData(), add, &text, &message);
    if (message != nullptr) text += QString::fromUtf8(message);
    sqlite3_free(message);
    return text;
  };
  QString content = read(QStringLiteral("PRAGMA integrity_check"));
  for (const char* table : {"tblSet_rows", "tblCard_rows", "tblFont", "tblCardType", "tblCardBack_rows"}) {
    content += read(QStringLiteral("SELECT * FROM %1").arg(QString(table)));
  }
  content += read(
      QStringLiteral("SELECT CardBackID, length(Picture), hex(substr(Picture, 1, 200)) FROM tblCardBack"));
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

// A disk without room for files past a size.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t size) {
    getrlimit(RLIMIT_FSIZE, &former_);
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{size, former_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &former_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit former_{};
  void (*handler_)(int) = nullptr;
};

class CompactionTest : public testing::Test {
 protected:
  // Half of the file is free.
  CompactionTest() {
    database_.AddSet(QStringLiteral("Set"), 2);
    database_.Execute(QStringLiteral(
        "UPDATE tblCardBack SET Picture = randomblob(1000000); CREATE TABLE waste (b BLOB); INSERT "
        "INTO waste VALUES (randomblob(5000000)); DROP TABLE waste"));
    modData::cn = Connection();
    content_ = ContentOf(Path("orv.mdb"));
    size_ = QFileInfo(Path("orv.mdb")).size();
  }

  QString Path(const char* name) { return database_.Path(QString(name)); }
  // The files of the database in the folder, "orv.mdb" first.
  QString Files() {
    return QDir(database_.Folder())
        .entryList({QStringLiteral("*orv*")}, QDir::AllEntries | QDir::Hidden, QDir::Name)
        .join('|');
  }
  void ExpectWhole(const char* name) { EXPECT_TRUE(ContentOf(Path(name)) == content_) << name; }
  // The first box of a compaction, behind its fixed words.
  QString Cause() {
    if (dialogs_.boxes.empty()) return {};
    const QString start = QStringLiteral(
        "ORV tried to compact the database but a problem occured.\r\n"
        "Would you like ORV will to try restore its backup?\r\n\r\n");
    EXPECT_TRUE(dialogs_.boxes[0].prompt.startsWith(start));
    EXPECT_EQ(dialogs_.boxes[0].title, "Repair database");
    EXPECT_EQ(dialogs_.boxes[0].icon, Icon::Exclamation);
    return dialogs_.boxes[0].prompt.mid(start.size());
  }
  // Compacts, answering the offer to restore; the error that comes out of it, 0 for none.
  int Compact(Answer answer) {
    dialogs_.boxes.clear();
    dialogs_.answers = {answer};
    try {
      CompactAndRepair();
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
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
  database_.WriteFile(QStringLiteral("orv1.mdb"), "a leftover");
  database_.WriteFile(QStringLiteral("orv1.mdb-journal"), "a leftover");
  database_.WriteFile(QStringLiteral("orvbup.mdb"), "an older backup");
  ASSERT_EQ(chmod(Path("orv.mdb").toUtf8().constData(), 0600), 0);
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_TRUE(dialogs_.boxes.empty()) << Cause().toStdString();
    EXPECT_EQ(Files(), "orv.mdb");
    ExpectWhole("orv.mdb");
    EXPECT_LT(QFileInfo(Path("orv.mdb")).size(), size_ - 4900000);
    struct stat status {};
    stat(Path("orv.mdb").toUtf8().constData(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
  }
}

TEST_F(CompactionTest, WhatACrashLeftIsRecoveredFirst) {
  EXPECT_FALSE(Elsewhere([this] {
    sqlite3* other = nullptr;
    sqlite3_open(Path("orv.mdb").toUtf8().constData(), &other);
    sqlite3_exec(
        other,
        "PRAGMA cache_size = 1; BEGIN; DELETE FROM tblCardBack_long; UPDATE tblCardType SET UpperLeft = "
        "'torn'; CREATE TABLE t (b); INSERT INTO t VALUES (randomblob(3000000))",
        nullptr, nullptr, nullptr);
    ::raise(SIGKILL);
  }));
  ASSERT_GT(QFileInfo(Path("orv.mdb-journal")).size(), 0);
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_EQ(Files(), "orv.mdb");
  ExpectWhole("orv.mdb");
}

TEST_F(CompactionTest, AFailureBeforeTheBackupLeavesTheDatabase) {
  const struct {
    const char* what;
    std::function<void()> make;
    const char* cause;
  } cases[] = {{"a leftover that can't be deleted", [this] { QDir().mkpath(Path("orv1.mdb/x")); },
                "75, Path/File access error"},
               {"a backup that can't be overwritten", [this] { QDir().mkpath(Path("orvbup.mdb/x")); },
                "75, Path/File access error"},
               {"no room", [] {}, "75, Path/File access error"}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    one.make();
    std::optional<SmallDisk> small;
    if (one.what == std::string_view("no room")) small.emplace(static_cast<rlim_t>(size_ / 2));
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_EQ(Cause(), one.cause);
    ASSERT_EQ(dialogs_.boxes.size(), 2U);
    EXPECT_EQ(dialogs_.boxes[1].prompt,
              "The database is backup up as '\\orvbup.mdb'. You may manually rename it to '\\orv.mdb'.");
    EXPECT_EQ(dialogs_.boxes[1].title, "Repair");
    EXPECT_EQ(dialogs_.boxes[1].icon, Icon::Information);
    // There is no backup to restore from, and what there is instead must not take the database's place.
    if (!QFileInfo::exists(Path("orvbup.mdb"))) database_.WriteFile(QStringLiteral("orvbup.mdb"), "older");
    EXPECT_EQ(Compact(Answer::Yes), kErrFileNotFound);
    small.reset();
    ExpectWhole("orv.mdb");
    QDir(Path("orv1.mdb")).removeRecursively();
    QDir(Path("orvbup.mdb")).removeRecursively();
    QFile::remove(Path("orvbup.mdb"));
  }
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Files(), "orv.mdb");
}

TEST_F(CompactionTest, ABrokenFileIsReplacedByItsOwnCopy) {
  QFile file(Path("orv.mdb"));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.seek(4096);
  file.write(QByteArray(3 * 4096, 'x'));
  file.close();
  const QByteArray broken = ReadWhole(Path("orv.mdb"));
  for (const QByteArray& bytes : {broken, broken.left(50000), QByteArray("no database"), QByteArray()}) {
    QFile::remove(Path("orv1.mdb"));
    database_.WriteFile(QStringLiteral("orv.mdb"), bytes);
    EXPECT_EQ(Compact(Answer::No), 0);
    EXPECT_TRUE(Cause().startsWith(QStringLiteral("3000, Database error: "))) << Cause().toStdString();
    EXPECT_EQ(ReadWhole(Path("orv.mdb")), bytes);
    EXPECT_EQ(ReadWhole(Path("orvbup.mdb")), bytes);
    EXPECT_EQ(Compact(Answer::Yes), 0);
    EXPECT_EQ(dialogs_.boxes.size(), 1U);
    EXPECT_EQ(ReadWhole(Path("orv.mdb")), bytes);
    EXPECT_FALSE(QFileInfo::exists(Path("orvbup.mdb")));
  }
}

TEST_F(CompactionTest, ASecondProgramKeepsItsFile) {
  int pipe_in[2];
  int pipe_out[2];
  ASSERT_EQ(::pipe(pipe_in) + ::pipe(pipe_out), 0);
  char byte = 0;
  const pid_t child = ::fork();
  if (child == 0) {
    const Connection connection = Connection::Open(Path("orv.mdb"));
    const bool told = ::write(pipe_out[1], "x", 1) == 1;
    ::close(pipe_in[1]);
    ::_exit(told && ::read(pipe_in[0], &byte, 1) >= 0 ? 0 : 1);
  }
  ASSERT_EQ(::read(pipe_out[0], &byte, 1), 1);
  EXPECT_EQ(Compact(Answer::No), 0);
  EXPECT_EQ(Cause(), "70, Permission denied: another program is using the database");
  ExpectWhole("orvbup.mdb");
  // What the other program goes on writing to must not be deleted under it.
  EXPECT_EQ(Compact(Answer::Yes), kErrPermissionDenied);
  ExpectWhole("orv.mdb");
  ExpectWhole("orvbup.mdb");
  ::close(pipe_in[1]);
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
    EXPECT_FALSE(QFileInfo::exists(Path("orvbup.mdb")));
  }
}

TEST_F(CompactionTest, NoJournalStandsAtASwap) {
  Compaction compaction;
  RunSteps(compaction, 3);
  database_.WriteFile(QStringLiteral("orv.mdb-journal"), "of another program");
  EXPECT_THROW(compaction.Swap(), RuntimeError);
  EXPECT_THROW(compaction.Restore(), RuntimeError);
  EXPECT_EQ(QFileInfo(Path("orv.mdb")).size(), size_);
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
