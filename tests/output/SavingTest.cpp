#include "output/Saving.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "base/Files.h"
#include "composition/CardPreview.h"
#include "composition/frmCard.h"
#include "editors/frmCard2nd.h"
#include "output/frmCreate.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Pixels.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class SavingTest : public testing::Test {
 protected:
  void Open(int edition, int cards = 1) {
    set_ = database_.AddSet(QStringLiteral("Set"), edition);
    for (int nr = 1; nr <= cards; ++nr) database_.AddCard(set_, nr, QStringLiteral("Magic Sword %1").arg(nr));
    database_.SelectSet(set_);
    QDir(database_.Folder()).mkdir(QStringLiteral("out"));
    Option("SaveTo", Out());
  }
  QString Out() const { return database_.Path(QStringLiteral("out")); }
  void Option(const char* column, const Value& value) {
    modData::rsSet[column] = value;
    modData::rsSet.Update();
  }
  void Card(const char* column, const Value& value) {
    modData::rsCard[column] = value;
    modData::rsCard.Update();
  }
  QStringList Files() const { return QDir(Out()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  void Create(bool second, bool third) {
    frmCreate->CreateAllCards(second, false, false, third, false, false);
  }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_ = 0;
};

TEST_F(SavingTest, NamesFollowTheOptions) {
  Open(2);
  const struct {
    bool number;
    const char* prefix;
    bool underline;
    int format;
    int nr;
    const char* name;
  } rows[] = {
      {false, "", false, 1, 7, "C2 Magic Sword.BMP"},
      {true, "My", false, 2, 7, "My C2 007 Magic Sword.JPG"},
      {true, "My", true, 2, 12, "My_C2_012_Magic_Sword.JPG"},
      {true, "", false, 3, 1234, "C2 234 Magic Sword.GIF"},
      {false, "", false, 4, 1, "C2 Magic Sword.XYZ"},
      {false, "", false, 99, 1, "C2 Magic Sword.BMP"},
  };
  for (const auto& row : rows) {
    Option("FileCardNr", row.number);
    Option("FilenamePrefix", row.prefix);
    Option("ReplaceSpace", row.underline);
    Option("PicFormatID", row.format);
    EXPECT_EQ(
        BuildFileName(QStringLiteral("Magic Sword"), static_cast<std::int16_t>(row.nr), QStringLiteral("C2")),
        row.name);
  }
  Option("FilenamePrefix", Value::Null());
  EXPECT_EQ(BuildFileName(QString(), 1, QStringLiteral("C2")), QStringLiteral("C2 .BMP"));
}

TEST_F(SavingTest, ASheetHasFrontAndBackEachInItsOutline) {
  const struct {
    int edition;
    int width, height;
    Colour back;
  } rows[] = {{2, 152, 256, Rgb(10, 0, 0)}, {3, 163, 247, Rgb(40, 0, 0)}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.edition);
    QDir(Out()).removeRecursively();
    Open(row.edition);
    Card("BGColour", Rgb(5, 6, 7));
    Card("UsePicture", false);
    frmCard2nd->InitCard2nd();
    Create(row.edition == 2, row.edition == 3);
    ASSERT_EQ(Files().size(), 1);
    const Picture sheet = LoadPicture(JoinPath(Out(), Files().constFirst()));
    EXPECT_EQ(sheet.Width(), 2 * row.width);
    EXPECT_EQ(sheet.Height(), row.height);
    for (const auto& [x, y] :
         {std::pair{0, 0}, {row.width - 1, row.height - 1}, {row.width, 5}, {2 * row.width - 1, 40}}) {
      EXPECT_EQ(PixelAt(sheet, x, y), kBlack) << x;
    }
    EXPECT_EQ(PixelAt(sheet, 1, row.height - 2), Rgb(5, 6, 7));
    // The sheet of the 3rd edition takes the back that the 2nd edition's editor shows.
    EXPECT_EQ(PixelAt(sheet, row.width + 1, 1), row.back);
    Option("NoBack", true);
    Create(row.edition == 2, row.edition == 3);
    EXPECT_EQ(LoadPicture(JoinPath(Out(), Files().constFirst())).Width(), row.width);
    frmCreate.Unload();
  }
}

TEST_F(SavingTest, TheThirdEditionsBackWithTheOtherEditorNeverOpenedAndClosed) {
  Open(3);
  Create(false, true);
  const Colour built_in = PixelAt(LoadPicture(JoinPath(Out(), Files().constFirst())), 163 + 60, 120);
  EXPECT_NE(built_in, Rgb(40, 0, 0));
  frmCard2nd->InitCard2nd();
  Create(false, true);
  EXPECT_EQ(PixelAt(LoadPicture(JoinPath(Out(), Files().constFirst())), 163 + 60, 120), Rgb(40, 0, 0));
  frmCard2nd.Unload();
  Create(false, true);
  EXPECT_EQ(PixelAt(LoadPicture(JoinPath(Out(), Files().constFirst())), 163 + 60, 120), built_in);
}

TEST_F(SavingTest, AFileNameIsFrozenByTheFirstSave) {
  Open(2);
  Create(true, false);
  Card("Title", "Renamed");
  Create(true, false);
  EXPECT_EQ(Files(), QStringList{QStringLiteral("C2 Magic Sword 1.BMP")});
  EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT FileName FROM tblCard")),
            QStringLiteral("Magic Sword 1"));
}

TEST_F(SavingTest, ARunNumbersTheRecordsForGood) {
  Open(2, 3);
  database_.Execute(QStringLiteral("UPDATE tblCard_rows SET Nr = Nr * 3"));
  database_.SelectSet(set_);
  Option("FileCardNr", true);
  Create(true, false);
  EXPECT_EQ(Files().join(u','),
            QStringLiteral("C2 001 Magic Sword 1.BMP,C2 002 Magic Sword 2.BMP,C2 003 Magic Sword 3.BMP"));
  EXPECT_EQ(frmCard2nd->lblCurrentCard.Caption(), QStringLiteral("3 (3)"));
  EXPECT_EQ(dialogs_.LastPrompt(), QStringLiteral("Done creating cards."));
}

TEST_F(SavingTest, AFailureIsABoxAndTheOtherCardsAreSaved) {
  const struct {
    const char* title;
    int format;
    const char* prompt;
    const char* box_title;
  } rows[] = {
      {"a/b", 1, "Something went wrong.", "Saving the card 2nd."},
      {"../b", 2, "Something went wrong.", "Saving the card 2nd."},
      {"say \"x\"", 2, "Something went wrong.", "Saving the card 2nd."},
      {"a:b", 3, "Something went wrong.\r\n\r\n", "Saving the card"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.title);
    QDir(Out()).removeRecursively();
    Open(2, 3);
    Option("PicFormatID", row.format);
    modData::rsCard.MoveNext();
    Card("Title", row.title);
    dialogs_.boxes.clear();
    Create(true, false);
    ASSERT_EQ(dialogs_.boxes.size(), 2u);
    EXPECT_TRUE(dialogs_.boxes[0].prompt.startsWith(QLatin1String(row.prompt)));
    EXPECT_EQ(dialogs_.boxes[0].title, row.box_title);
    EXPECT_EQ(Files().size(), 2);
    frmCreate.Unload();
  }
  EXPECT_FALSE(FileExists(database_.Path(QStringLiteral("b.JPG"))));
}

TEST_F(SavingTest, AFormatThatWritesNothingAlsoSaysNothing) {
  Open(2);
  Option("PicFormatID", 4);
  Card("Title", "a/b");
  Create(true, false);
  EXPECT_EQ(dialogs_.boxes.size(), 1u);
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(SavingTest, AFolderThatIsMissingAndAReadOnlyFileAreBoxes) {
  Open(2);
  Option("SaveTo", database_.Path(QStringLiteral("none")));
  Create(true, false);
  EXPECT_EQ(dialogs_.boxes.size(), 2u);
  Option("SaveTo", Out());
  for (const int format : {1, 2, 3}) {
    Option("PicFormatID", format);
    Create(true, false);
    const QString path =
        JoinPath(Out(), BuildFileName(QStringLiteral("Magic Sword 1"), 1, QStringLiteral("C2")));
    QFile::setPermissions(path, QFile::ReadOwner);
    const QByteArray before = ReadWhole(path);
    Card("BGColour", format);
    dialogs_.boxes.clear();
    Create(true, false);
    EXPECT_EQ(dialogs_.boxes.size(), 2u) << format;
    EXPECT_EQ(ReadWhole(path), before);
  }
  EXPECT_EQ(Files().size(), 3) << "no temporary file is left";
}

TEST_F(SavingTest, AReplacedJpgKeepsTheTimesOfTheOldOne) {
  Open(2);
  Option("PicFormatID", 2);
  Create(true, false);
  const QString path = JoinPath(Out(), Files().constFirst());
  const QDateTime time = QDateTime::currentDateTime().addYears(-3);
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(time, QFileDevice::FileModificationTime);
  }
  const QByteArray before = ReadWhole(path);
  Card("BGColour", Rgb(200, 10, 10));
  Create(true, false);
  EXPECT_NE(ReadWhole(path), before);
  EXPECT_EQ(QFileInfo(path).lastModified().toSecsSinceEpoch(), time.toSecsSinceEpoch());
}

TEST_F(SavingTest, TheDialogStoresItsOptionsAtOnce) {
  Open(2);
  frmCreate->Show();
  CreateForm& form = *frmCreate;
  const auto stored = [&](const char* column) {
    return database_.Scalar(QStringLiteral("SELECT %1 FROM tblSet").arg(QLatin1String(column)));
  };
  EXPECT_EQ(form.txtSaveTo.Text(), Out());
  Retype(form.txtFilenamePrefix, QStringLiteral("My"));
  EXPECT_EQ(stored("FilenamePrefix"), QStringLiteral("My"));
  ClickOn(form.chkFileNr);
  ClickOn(form.chkNoBack);
  ClickOn(form.chkReplaceSpace);
  EXPECT_EQ(stored("FileCardNr || NoBack || ReplaceSpace"), QStringLiteral("-1-1-1"));
  Choose(form.cboSaveFormat, 2);
  EXPECT_EQ(stored("PicFormatID"), QStringLiteral("3"));
  dialogs_.folders = {QStringLiteral("/tmp/")};
  ClickOn(form.cmdSaveTo);
  EXPECT_EQ(stored("SaveTo"), QStringLiteral("/tmp/"));
  EXPECT_FALSE(form.chk2ndLarge.Enabled());
  EXPECT_TRUE(form.chk2ndCard.Enabled());
  Retype(form.txtSaveTo, QString());
  ClickOn(form.cmdCreate);
  EXPECT_EQ(dialogs_.LastPrompt(), QStringLiteral("You must firstselect a folder to save your cards in."));
}

}  // namespace
}  // namespace orv
