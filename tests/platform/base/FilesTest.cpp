#include "base/Files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/RuntimeError.h"

namespace orv {
namespace {

class FilesTest : public ::testing::Test {
 protected:
  QString Path(const QString& name) const { return JoinPath(folder_.path(), name); }
  int Replace(const QString& path, const QByteArray& bytes = "new") const {
    try {
      ReplaceFile(path, bytes);
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }
  QStringList Names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

  QTemporaryDir folder_;
};

TEST_F(FilesTest, ReplacesAFileInOneStep) {
  ReplaceFile(Path(QStringLiteral("a.txt")), "old");
  EXPECT_THROW(ReplaceFile(Path(QStringLiteral("a.txt")),
                           [&](const QString& temporary) {
                             QFile file(temporary);
                             ASSERT_TRUE(file.open(QIODevice::WriteOnly));
                             file.write("half");
                             throw RuntimeError(kErrDiskFull);
                           }),
               RuntimeError);
  EXPECT_EQ(ReadWhole(Path(QStringLiteral("a.txt"))), "old");
  EXPECT_EQ(Names(), QStringList{QStringLiteral("a.txt")}) << "nothing is left behind";
  EXPECT_EQ(Replace(Path(QStringLiteral("a.txt"))), 0);
  EXPECT_EQ(ReadWhole(Path(QStringLiteral("a.txt"))), "new");
}

TEST_F(FilesTest, RefusesWhatIsNoNameAndWhatIsReadOnly) {
  for (const char* name : {"a:b", "a?", "a*", "<a>", "a|b", "\"a\"", "a\\b", "a\tb", "", "..", "."}) {
    EXPECT_EQ(Replace(Path(QString::fromLatin1(name))), kErrPathFileAccess) << name;
  }
  EXPECT_EQ(Replace(Path(QStringLiteral("none/a.txt"))), kErrPathNotFound);
  ReplaceFile(Path(QStringLiteral("fixed.txt")), "old");
  QFile::setPermissions(Path(QStringLiteral("fixed.txt")), QFile::ReadOwner);
  EXPECT_EQ(Replace(Path(QStringLiteral("fixed.txt"))), kErrPathFileAccess);
  EXPECT_EQ(ReadWhole(Path(QStringLiteral("fixed.txt"))), "old");
  EXPECT_TRUE(ClearAttributes(Path(QStringLiteral("fixed.txt"))));
  EXPECT_EQ(Replace(Path(QStringLiteral("fixed.txt"))), 0);
}

TEST_F(FilesTest, PartsOfAPath) {
  EXPECT_EQ(JoinPath(QStringLiteral("/"), QStringLiteral("orv.mdb")), QStringLiteral("/orv.mdb"));
  EXPECT_EQ(JoinPath(QStringLiteral("/a"), QStringLiteral("b")), QStringLiteral("/a/b"));
  EXPECT_EQ(FolderPart(QStringLiteral("/a/b.bmp")), QStringLiteral("/a/"));
  EXPECT_EQ(FilePart(QStringLiteral("/a/b.bmp")), QStringLiteral("b.bmp"));
}

}  // namespace
}  // namespace orv
