#include "base/Files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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

TEST_F(FilesTest, PartsOfAPath) {
  EXPECT_EQ(JoinPath("/", "orv.mdb"), "/orv.mdb");
  EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
  EXPECT_EQ(FolderPart("/a/b.bmp"), "/a/");
  EXPECT_EQ(FilePart("/a/b.bmp"), "b.bmp");
}

}  // namespace
}  // namespace orv
