#include "output/Saving.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include "composition/CardPreview.h"
#include "output/OutputScene.h"
#include "output/WriteRecords.h"
#include "support/Pixels.h"

namespace orv {
namespace {

class SavingTest : public OutputScene {
 protected:
  // Creates the cards of the set anew; the boxes told meanwhile are the only ones then.
  void Create() {
    dialogs_.boxes.clear();
    WriteRecords(modData::CurrentEditionID == 2 ? kCards2nd : kCards3rd, FormatOfSet(), [](int) {});
  }
  Picture FirstFile() const { return File(Files().constFirst()); }
};

TEST_F(SavingTest, NamesFollowTheOptions) {
  Open(2);
  const auto name = [](const char* title, std::int16_t nr) { return BuildFileName(title, nr, "C2"); };
  const struct {
    bool number;
    const char* prefix;
    bool underline;
    int format;
    std::int16_t nr;
    const char* name;
  } rows[] = {{false, "", false, 1, 7, "C2 Magic Sword.BMP"},
              {true, "My", false, 2, 7, "My C2 007 Magic Sword.JPG"},
              {true, "My", true, 2, 12, "My_C2_012_Magic_Sword.JPG"},
              {true, "", false, 3, 1234, "C2 234 Magic Sword.GIF"},
              {false, "", false, 4, 1, "C2 Magic Sword.XYZ"},
              {false, "", false, 99, 1, "C2 Magic Sword.BMP"}};
  for (const auto& row : rows) {
    Option("FileCardNr", row.number);
    Option("FilenamePrefix", row.prefix);
    Option("ReplaceSpace", row.underline);
    Option("PicFormatID", row.format);
    EXPECT_EQ(name("Magic Sword", row.nr), row.name);
  }
  Option("FilenamePrefix", Value::Null());
  EXPECT_EQ(name("", 1), "C2 .BMP");
}

TEST_F(SavingTest, ASheetHasFrontAndBackEachInItsOutline) {
  const struct {
    int edition;
    int width, height;
    Colour back;
  } rows[] = {{2, 152, 256, Rgb(10, 0, 0)}, {3, 163, 247, Rgb(40, 0, 0)}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.edition);
    Open(row.edition, 1);
    Card("BGColour", Rgb(5, 6, 7));
    Card("UsePicture", false);
    CardPreviewOf(2).DrawCard();
    Create();
    ASSERT_EQ(Files().size(), 1);
    const Picture sheet = FirstFile();
    EXPECT_EQ(sheet.Image().size(), QSize(2 * row.width, row.height));
    for (const auto& [x, y] :
         {std::pair{0, 0}, {row.width - 1, row.height - 1}, {row.width, 5}, {2 * row.width - 1, 40}}) {
      EXPECT_EQ(PixelAt(sheet, x, y), kBlack) << x;
    }
    EXPECT_EQ(PixelAt(sheet, 1, row.height - 2), Rgb(5, 6, 7));
    // The sheet of the 3rd edition takes the back that the 2nd edition's editor shows.
    EXPECT_EQ(PixelAt(sheet, row.width + 1, 1), row.back);
    Option("NoBack", true);
    Create();
    EXPECT_EQ(FirstFile().Width(), row.width);
  }
}

TEST_F(SavingTest, ARunNumbersTheRecordsForGoodAndFreezesTheirFileNames) {
  Open(2, 3);
  database_.Execute("UPDATE tblCard_rows SET Nr = Nr * 3");
  database_.SelectSet(set_);
  Option("FileCardNr", true);
  const QString names = "C2 001 Magic Sword 1.BMP,C2 002 Magic Sword 2.BMP,C2 003 Magic Sword 3.BMP";
  for (const char* title : {"Renamed", "Renamed again"}) {
    Create();
    EXPECT_EQ(Files().join(','), names);
    EXPECT_TRUE(dialogs_.boxes.empty());
    EXPECT_TRUE(QApplication::allWidgets().empty()) << "nothing on the way needs a widget";
    EXPECT_EQ(modData::rsCard["Nr"].Int32(), 3) << "the run stays on the last record";
    modData::rsCard.MoveFirst();
    Card("Title", title);
  }
  EXPECT_EQ(database_.Scalar("SELECT FileName FROM tblCard WHERE Nr = 1"), "Magic Sword 1");
}

TEST_F(SavingTest, AFailureIsABoxAndTheOtherCardsAreSaved) {
  const struct {
    const char* title;
    int format;
    const char* prompt;
    const char* box_title;
  } rows[] = {{"a/b", 1, "Something went wrong.", "Saving the card 2nd."},
              {"a/b", 2, "Something went wrong.", "Saving the card 2nd."},
              {"say \"x\"", 2, "Something went wrong.", "Saving the card 2nd."},
              {"a:b", 3, "Something went wrong.\r\n\r\n", "Saving the card"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.title);
    Open(2, 3);
    QDir(Out()).mkdir("C2 a");  // no title leads into a folder
    Option("PicFormatID", row.format);
    modData::rsCard.MoveNext();
    Card("Title", row.title);
    Create();
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_TRUE(dialogs_.boxes[0].prompt.startsWith(row.prompt));
    EXPECT_EQ(dialogs_.boxes[0].title, row.box_title);
    EXPECT_EQ(Files().size(), 2);
  }
}

TEST_F(SavingTest, AFormatThatWritesNothingAlsoSaysNothing) {
  Open(2, 1);
  Option("PicFormatID", 4);
  Card("Title", "a/b");
  Create();
  EXPECT_TRUE(dialogs_.boxes.empty());
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(SavingTest, AFolderThatIsMissingAndAReadOnlyFileAreBoxes) {
  Open(2, 1);
  Option("SaveTo", database_.Path("none"));
  Create();
  EXPECT_EQ(dialogs_.boxes.size(), 1u);
  Option("SaveTo", Out());
  for (const int format : {1, 2, 3}) {
    Option("PicFormatID", format);
    Create();
    const QString path = JoinPath(Out(), BuildFileName("Magic Sword 1", 1, "C2"));
    QFile::setPermissions(path, QFile::ReadOwner);
    const QByteArray before = ReadWhole(path);
    Card("BGColour", format);
    Create();
    EXPECT_EQ(dialogs_.boxes.size(), 1u) << format;
    EXPECT_EQ(ReadWhole(path), before);
  }
  EXPECT_EQ(Files().size(), 3) << "no temporary file is left";
}

TEST_F(SavingTest, FolderAndNameMayHoldAnyLetterInEachFormat) {
  Open(2, 1);
  const QString folder = JoinPath(Out(), "Łódź 火");
  ASSERT_TRUE(QDir().mkpath(folder));
  Option("SaveTo", folder);
  Card("Title", "Ñandú ж 火");
  for (const int format : {1, 2, 3}) {
    Option("PicFormatID", format);
    Create();
    EXPECT_EQ(LoadPicture(JoinPath(folder, BuildFileName("Ñandú ж 火", 1, "C2"))).Width(), 304) << format;
  }
}

TEST_F(SavingTest, AReplacedJpgKeepsTheTimesOfTheOldOne) {
  Open(2, 1);
  Option("PicFormatID", 2);
  Create();
  const QString path = JoinPath(Out(), Files().constFirst());
  const QDateTime time = QDateTime::currentDateTime().addYears(-3);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.setFileTime(time, QFileDevice::FileModificationTime);
  file.close();
  const QByteArray before = ReadWhole(path);
  Card("BGColour", Rgb(200, 10, 10));
  Create();
  EXPECT_NE(ReadWhole(path), before);
  EXPECT_EQ(QFileInfo(path).lastModified().toSecsSinceEpoch(), time.toSecsSinceEpoch());
}

}  // namespace
}  // namespace orv
