#include "base/Files.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

#include "support/Errors.h"

namespace orv {
namespace {

class FilesTest : public ::testing::Test {
 protected:
  QString Path(const char* name) const { return JoinPath(folder_.path(), name); }
  int Replace(const char* name) const {
    return ErrorOf([&] { ReplaceFile(Path(name), "new"); });
  }

  QTemporaryDir folder_;
};

TEST_F(FilesTest, AFileIsReplacedWholeOrNotAtAll) {
  ReplaceFile(Path("a.txt"), "old");
  const auto half = [](const QString& temporary) {
    QFile file(temporary);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("half");
    throw RuntimeError(kErrDiskFull);
  };
  EXPECT_EQ(ErrorOf([&] { ReplaceFile(Path("a.txt"), half); }), kErrDiskFull);
  EXPECT_EQ(ReadWhole(Path("a.txt")), "old");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.txt"));
  EXPECT_EQ(Replace("a.txt"), 0);
  EXPECT_EQ(ReadWhole(Path("a.txt")), "new");
}

TEST_F(FilesTest, RefusesWhatIsNoNameAndWhatIsReadOnly) {
  for (const char* name : {"a:b", "a?", "a*", "<a>", "a|b", "\"a\"", "a\\b", "a\tb", "", "..", "."}) {
    EXPECT_EQ(Replace(name), kErrPathFileAccess) << name;
  }
  EXPECT_EQ(Replace("none/a.txt"), kErrPathNotFound);
  ReplaceFile(Path("fixed.txt"), "old");
  QFile::setPermissions(Path("fixed.txt"), QFile::ReadOwner);
  EXPECT_EQ(Replace("fixed.txt"), kErrPathFileAccess);
  EXPECT_EQ(ReadWhole(Path("fixed.txt")), "old");
  EXPECT_TRUE(ClearAttributes(Path("fixed.txt")));
  EXPECT_EQ(Replace("fixed.txt"), 0);
}

TEST_F(FilesTest, AReplacedFileKeepsItsRights) {
  for (const QFile::Permissions rights :
       {QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser,
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup |
            QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther}) {
    ReplaceFile(Path("a.txt"), "old");
    QFile::setPermissions(Path("a.txt"), rights);
    ReplaceFile(Path("a.txt"), "new");
    EXPECT_EQ(QFile::permissions(Path("a.txt")), rights);
  }
}

// What a kill leaves is removed by the next process that writes there; nothing else is.
TEST_F(FilesTest, AbandonedFilesGo) {
  const auto temporary_of_killed = [&](const QString& folder) {
    QDir().mkpath(folder);
    const pid_t child = ::fork();
    if (child == 0) {
      ReplaceFile(JoinPath(folder, "a.txt"), [](const QString& temporary) {
        QFile file(temporary);
        if (file.open(QIODevice::WriteOnly)) ::raise(SIGKILL);
      });
    }
    ::waitpid(child, nullptr, 0);
    return QDir(folder).entryList({".orv*"}, QDir::Files | QDir::Hidden).value(0);
  };
  const auto age = [](const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime::currentDateTime().addDays(-2), QFileDevice::FileModificationTime);
  };
  const QString folder = Path("out");
  const QString killed = temporary_of_killed(folder);
  ASSERT_FALSE(killed.isEmpty());
  const QString pid = QString::number(::getpid());
  const QStringList parts = killed.split('-');
  // The number of the killed process was given out again.
  const QString reused = parts[0] + '-' + pid + "-1-" + parts[3];
  const QString elsewhere = ".orv01234567-" + parts[1] + "-1-0.tmp";
  const QString old_elsewhere = ".orv01234567-" + parts[1] + "-1-1.tmp";
  for (const QString& name :
       {reused, elsewhere, old_elsewhere, QString(".orv1-notes.tmp"), QString(".orvx.tmp")})
    age(JoinPath(folder, name));
  QFile fresh(JoinPath(folder, elsewhere));
  ASSERT_TRUE(fresh.open(QIODevice::WriteOnly) && fresh.write("x") == 1);
  fresh.close();
  ReplaceFile(JoinPath(folder, "b.txt"), [&](const QString& temporary) {
    QFile file(temporary);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // Another process takes no file that is being written.
    const pid_t child = ::fork();
    if (child == 0) {
      ReplaceFile(QDir(folder).filePath("../out/c.txt"), "c");
      ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
  });
  EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name),
            QStringList({elsewhere, ".orv1-notes.tmp", ".orvx.tmp", "b.txt", "c.txt"}));
}

TEST_F(FilesTest, PartsOfAPath) {
  EXPECT_EQ(JoinPath("/", "orv.mdb"), "/orv.mdb");
  EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
  EXPECT_EQ(FolderPart("/a/b.bmp"), "/a/");
  EXPECT_EQ(FilePart("/a/b.bmp"), "b.bmp");
}

}  // namespace
}  // namespace orv
