#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "base/Files.h"
#include "output/modFile.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

const QByteArray kHead =
    "Created with Varnholt Card Set Creator 2.0\r\nhttps://varnholt.example/cards\r\n \r\n";

class ExportTest : public testing::Test {
 protected:
  // What is exported of a set, whose name is "Set".
  QByteArray Export(int set) {
    database_.SelectSet(set);
    ExportSet(path_, set);
    return ReadWhole(path_);
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  const QString path_ = database_.Path(QStringLiteral("out.txt"));
};

TEST_F(ExportTest, AnEmptySetIsFiveLines) {
  ReplaceFile(path_, QByteArray(5000, 'x'));
  EXPECT_EQ(Export(database_.AddSet(QString::fromUtf8("Höhle — ł"), 3)),
            kHead + "Set: H\xF6hle \x97 ?\r\n \r\n");
  EXPECT_EQ(dialogs_.LastPrompt(), "The card set text is exported.");
  EXPECT_EQ(dialogs_.boxes[0].title, "Save text");
  EXPECT_EQ(dialogs_.boxes[0].icon, Icon::Information);
}

TEST_F(ExportTest, ListsCardsLargeCardsAndCharacters) {
  const int set = database_.AddSet(QStringLiteral("Set"), 2);
  const int other = database_.AddSet(QStringLiteral("Other"), 2);
  database_.AddCard(other, 1, QStringLiteral("Foreign"));
  database_.AddCard(set, 2, QString::fromUtf8("Zwölf € 龍"));
  database_.AddCard(set, 1, QStringLiteral("Null"));
  database_.Execute(QStringLiteral(
      "UPDATE tblCard SET Title = NULL, BoldText = NULL, Information = NULL WHERE Title = 'Null'; "
      "UPDATE tblCard SET BoldText = 'Bold' || char(13, 10) || 'words', Information = 'one' || "
      "char(13, 10) || 'two' WHERE Nr = 2"));
  database_.AddLargeCard(set, 7, QStringLiteral("Wide"));
  database_.AddCharacter(set, 1, QStringLiteral("Hero"));
  database_.AddCharacter(set, 2, QStringLiteral("Nobody"));
  database_.AddCharacter(set, 3, QStringLiteral("Homeless"));
  database_.Execute(
      QStringLiteral("UPDATE tblCharacter SET Strength = '---', Craft = '-- -', Gold = NULL, Abilities = "
                     "'---' WHERE Nr = 1; "
                     "UPDATE tblCharacter SET Name = NULL, AlignmentID = 1, StartingAreaID = 2, Abilities = "
                     "'Flies.' WHERE Nr "
                     "= 2; UPDATE tblCharacter SET StartingAreaID = 77 WHERE Nr = 3"));
  EXPECT_EQ(Export(set), kHead +
                             "Set: Set\r\n \r\n"
                             "2 Cards\r\n \r\n"
                             "Null\r\nNr:   1\r\nText: \r\n \r\n---------------\r\n"
                             "Zw\xF6lf \x80 ?\r\nNr:   2\r\nBold: Bold\r\nwords\r\nText: one\r\ntwo\r\n \r\n"
                             "---------------\r\n"
                             " \r\n1 Large Cards\r\n \r\n"
                             "Wide\r\nNr: 7\r\nText: \r\n \r\n---------------\r\n"
                             "2 Characters\r\n \r\n"
                             "Hero\r\nStrength:   \r\nCraft:      -- -\r\nGold:       \r\nLives:      4\r\n"
                             "Alignment:  Neutral\r\nStart area: Plains - Village\r\nAbilities:  ---\r\n \r\n"
                             "---------------\r\n"
                             "Null\r\nStrength:   3\r\nCraft:      3\r\nGold:       1\r\nLives:      4\r\n"
                             "Alignment:  Good\r\nStart area: Hills - Chapel\r\nAbilities:  Flies.\r\n \r\n"
                             "---------------\r\n");
}

TEST_F(ExportTest, OneKindAlone) {
  const int large = database_.AddSet(QStringLiteral("Set"), 2);
  database_.AddLargeCard(large, 1, QStringLiteral("Wide"));
  EXPECT_EQ(Export(large), kHead +
                               "Set: Set\r\n \r\n \r\n1 Large Cards\r\n \r\n"
                               "Wide\r\nNr: 1\r\nText: \r\n \r\n---------------\r\n");
  const int characters = database_.AddSet(QStringLiteral("Set"), 2);
  database_.AddCharacter(characters, 1, QStringLiteral("Hero"));
  EXPECT_TRUE(Export(characters).startsWith(kHead + "Set: Set\r\n \r\n1 Characters\r\n \r\nHero\r\n"));
}

TEST_F(ExportTest, AFileThatCanNotBeWrittenIsTold) {
  const int set = database_.AddSet(QStringLiteral("Set"), 2);
  database_.SelectSet(set);
  const QString read_only = database_.WriteFile(QStringLiteral("ro.txt"), "old");
  ASSERT_EQ(chmod(read_only.toUtf8().constData(), 0444), 0);
  const struct {
    QString path;
    const char* cause;
  } cases[] = {{database_.Path(QStringLiteral("none/out.txt")), "76, Path not found"},
               {database_.Path(QStringLiteral("a:b.txt")), "75, Bad file name"},
               {database_.Folder(), "75, Path/File access error"},
               {read_only, "75, Path/File access error"},
               {QString(), "75, Bad file name"}};
  for (const auto& one : cases) {
    ExportSet(one.path, set);
    EXPECT_EQ(dialogs_.LastPrompt(),
              QStringLiteral("The file is NOT saved due to an error.\r\n\r\n") + QString(one.cause));
    EXPECT_EQ(dialogs_.boxes.back().title, "Error");
    EXPECT_EQ(dialogs_.boxes.back().icon, Icon::Critical);
  }
  EXPECT_EQ(ReadWhole(read_only), "old");
}

TEST_F(ExportTest, WhatWasWrittenBeforeAFailureStays) {
  const int set = database_.AddSet(QStringLiteral("Set"), 2);
  for (int nr = 1; nr <= 50; ++nr) database_.AddCard(set, nr, QStringLiteral("Card %1").arg(nr));
  const QByteArray whole = Export(set);
  ASSERT_GT(whole.size(), 2000);
  // A disk that is full after 1000 bytes.
  rlimit former{};
  getrlimit(RLIMIT_FSIZE, &former);
  const auto former_handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1000, former.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  ExportSet(path_, set);
  setrlimit(RLIMIT_FSIZE, &former);
  std::signal(SIGXFSZ, former_handler);
  EXPECT_TRUE(dialogs_.LastPrompt().startsWith(QStringLiteral("The file is NOT saved due to an error.")));
  EXPECT_EQ(ReadWhole(path_), whole.left(1000));
}

}  // namespace
}  // namespace orv
