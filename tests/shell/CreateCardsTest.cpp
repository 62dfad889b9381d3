// The dialog that writes out a set, and what the editors show behind a run.
#include "editors/frmCard2nd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "output/OutputScene.h"
#include "shell/frmCreate.h"
#include "support/Pixels.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CreateCardsTest : public OutputScene {
 protected:
  void Create() {
    const bool second = modData::CurrentEditionID == 2;
    frmCreate->CreateAllCards(second, second, second, !second, true, true);
  }
};

TEST_F(CreateCardsTest, ARunShowsItsProgressAndLeavesTheEditorsOnTheLastRecord) {
  Open(2, 3);
  database_.AddCharacter(set_, 4, "ADA");
  database_.AddCharacter(set_, 9, "BEN");
  database_.SelectSet(set_);
  Create();
  EXPECT_EQ(Files().size(), 3 + 2 * 2);
  EXPECT_EQ(frmCreate->lblNr2ndCards.Caption(), "3");
  EXPECT_EQ(frmCreate->lblNr2ndChar.Caption(), "2");
  EXPECT_EQ(frmCreate->lblNr2ndLarge.Caption(), "");
  EXPECT_EQ(frmCard2nd->lblCurrentCard.Caption(), "3 (3)");
  EXPECT_EQ(frmCharacter2nd->lblCurrentCardCharacter.Caption(), "2 (2)");
  EXPECT_FALSE(frmLarge2nd.IsLoaded());
  Retype(frmCard2nd->txtTitle, "typed");
  EXPECT_EQ(database_.Scalar("SELECT Title FROM tblCard WHERE Nr = 3"), "typed");
  ASSERT_EQ(dialogs_.boxes.size(), 1u);
  EXPECT_EQ(dialogs_.LastPrompt(), "Done creating cards.");
}

TEST_F(CreateCardsTest, TheThirdEditionsBackWithTheOtherEditorNeverOpenedAndClosed) {
  Open(3, 1);
  const auto back = [this] {
    Create();
    return PixelAt(File(Files().constFirst()), 163 + 60, 120);
  };
  const Colour built_in = back();
  EXPECT_NE(built_in, Rgb(40, 0, 0));
  frmCard2nd->InitCard2nd();
  EXPECT_EQ(back(), Rgb(40, 0, 0));
  frmCard2nd.Unload();
  EXPECT_EQ(back(), built_in);
}

TEST_F(CreateCardsTest, TheDialogStoresItsOptionsAtOnce) {
  Open(2, 1);
  frmCreate->Show();
  CreateForm& form = *frmCreate;
  const auto stored = [&](const char* columns) {
    return database_.Scalar(QString("SELECT %1 FROM tblSet").arg(columns));
  };
  EXPECT_EQ(form.txtSaveTo.Text(), Out());
  Retype(form.txtFilenamePrefix, "My");
  EXPECT_EQ(stored("FilenamePrefix"), "My");
  ClickOn(form.chkFileNr);
  ClickOn(form.chkNoBack);
  ClickOn(form.chkReplaceSpace);
  EXPECT_EQ(stored("FileCardNr || NoBack || ReplaceSpace"), "-1-1-1");
  Choose(form.cboSaveFormat, 2);
  EXPECT_EQ(stored("PicFormatID"), "3");
  dialogs_.folders = {"/tmp/"};
  ClickOn(form.cmdSaveTo);
  EXPECT_EQ(stored("SaveTo"), "/tmp/");
  EXPECT_FALSE(form.chk2ndLarge.Enabled());
  EXPECT_TRUE(form.chk2ndCard.Enabled());
  Retype(form.txtSaveTo, "");
  ClickOn(form.cmdCreate);
  EXPECT_EQ(dialogs_.LastPrompt(), "You must firstselect a folder to save your cards in.");
}

TEST_F(CreateCardsTest, FailuresAndNamesThatRecordsShareAreTold) {
  Open(2, 0);
  for (const char* title : {"A/B", "TWIN", "TWIN"}) database_.AddCard(set_, 1, title);
  database_.SelectSet(set_);
  Create();
  ASSERT_EQ(dialogs_.boxes.size(), 2u);
  const QString failure = dialogs_.boxes[0].beside;
  EXPECT_TRUE(failure.contains("C2 001 A/B")) << failure.toStdString();
  EXPECT_TRUE(failure.contains("\"/\"")) << failure.toStdString();
  const QString news = dialogs_.boxes[1].beside;
  EXPECT_TRUE(news.contains("No file for C2 001 A/B")) << news.toStdString();
  EXPECT_TRUE(news.contains("C2 003 TWIN has replaced the file of C2 002 TWIN")) << news.toStdString();
}

}  // namespace
}  // namespace orv
