#include <QFile>

#include "output/OutputScene.h"
#include "output/modFile.h"
#include "support/SmallDisk.h"

namespace orv {
namespace {

const QByteArray kHead =
    "Created with Varnholt Card Set Creator 2.0\r\nhttps://varnholt.example/cards\r\n \r\n";

class ExportTest : public OutputScene {
 protected:
  using OutputScene::OutputScene;

  // What is exported of the current set.
  QByteArray Export() {
    database_.SelectSet(set_);
    ExportSet(path_, set_);
    return ReadWhole(path_);
  }

  const QString path_ = database_.Path("out.txt");
};

TEST_F(ExportTest, AnEmptySetIsFiveLines) {
  ReplaceFile(path_, QByteArray(5000, 'x'));
  set_ = database_.AddSet("Höhle — ł", 3);
  EXPECT_EQ(Export(), kHead + "Set: H\xF6hle \x97 ?\r\n \r\n");
  EXPECT_EQ(dialogs_.LastPrompt(), "The card set text is exported.");
  EXPECT_EQ(dialogs_.boxes[0].title, "Save text");
  EXPECT_EQ(dialogs_.boxes[0].icon, Icon::Information);
}

class OlderFile : public ExportTest {
 protected:
  OlderFile() : ExportTest(TestDatabase::Age::kOlder) {}
};

TEST_F(OlderFile, ListsCardsLargeCardsAndCharacters) {
  database_.AddCard(database_.AddSet("Other", 2), 1, "Foreign");
  set_ = database_.AddSet("Set", 2);
  database_.AddCard(set_, 2, "Zwölf € 龍");
  database_.AddCard(set_, 1, "Null");
  database_.Execute(
      "UPDATE tblCard SET Title = NULL, BoldText = NULL, Information = NULL WHERE Title = 'Null'; "
      "UPDATE tblCard SET BoldText = 'Bold' || char(13, 10) || 'words', Information = 'one' || "
      "char(13, 10) || 'two' WHERE Nr = 2");
  database_.AddLargeCard(set_, 7, "Wide");
  database_.AddCharacter(set_, 1, "Hero");
  database_.AddCharacter(set_, 2, "Nobody");
  database_.AddCharacter(set_, 3, "Homeless");
  database_.Execute(
      "UPDATE tblCharacter SET Strength = '---', Craft = '-- -', Gold = NULL, Abilities = '---' WHERE Nr = "
      "1; "
      "UPDATE tblCharacter SET Name = NULL, AlignmentID = 1, StartingAreaID = 2, Abilities = 'Flies.' WHERE "
      "Nr = 2; UPDATE tblCharacter SET StartingAreaID = 77 WHERE Nr = 3");
  EXPECT_EQ(Export(), kHead +
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
  set_ = database_.AddSet("Set", 2);
  database_.AddLargeCard(set_, 1, "Wide");
  EXPECT_EQ(Export(), kHead +
                          "Set: Set\r\n \r\n \r\n1 Large Cards\r\n \r\n"
                          "Wide\r\nNr: 1\r\nText: \r\n \r\n---------------\r\n");
  set_ = database_.AddSet("Set", 2);
  database_.AddCharacter(set_, 1, "Hero");
  EXPECT_TRUE(Export().startsWith(kHead + "Set: Set\r\n \r\n1 Characters\r\n \r\nHero\r\n"));
}

TEST_F(ExportTest, AFileThatCanNotBeWrittenIsTold) {
  Open(2);
  const QString read_only = database_.WriteFile("ro.txt", "old");
  QFile::setPermissions(read_only, QFile::ReadOwner);
  using Row = std::pair<QString, const char*>;
  for (const auto& [path, cause] :
       {Row(database_.Path("none/out.txt"), "76, Path not found"),
        Row(database_.Path("a:b.txt"), "75, Bad file name"),
        Row(database_.Folder(), "75, Path/File access error"), Row(read_only, "75, Path/File access error"),
        Row("", "75, Bad file name")}) {
    ExportSet(path, set_);
    EXPECT_EQ(dialogs_.LastPrompt(), QString("The file is NOT saved due to an error.\r\n\r\n") + cause);
    EXPECT_EQ(dialogs_.boxes.back().title, "Error");
    EXPECT_EQ(dialogs_.boxes.back().icon, Icon::Critical);
  }
  EXPECT_EQ(ReadWhole(read_only), "old");
}

TEST_F(ExportTest, WhatWasWrittenBeforeAFailureStays) {
  Open(2, 50);
  const QByteArray whole = Export();
  ASSERT_GT(whole.size(), 2000);
  {
    const SmallDisk full(1000);
    ExportSet(path_, set_);
  }
  EXPECT_TRUE(dialogs_.LastPrompt().startsWith("The file is NOT saved due to an error."));
  EXPECT_EQ(ReadWhole(path_), whole.left(1000));
}

}  // namespace
}  // namespace orv
