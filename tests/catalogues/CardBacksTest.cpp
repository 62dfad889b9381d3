#include "CatalogueScene.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>

#include "forms/Application.h"
#include "state/modData.h"
#include "support/Gestures.h"
#include "support/Pixels.h"

namespace orv {
namespace {

// Backs of the second edition in a set of the third.
class CardBacksTest : public testing::Test, protected CatalogueScene {
 protected:
  CardBacksTest() : CatalogueScene(kBacks, 3) {
    database_.Store("tblCardBack", 11, "Picture", TestDatabase::PlainPicture(60, 600, Rgb(1, 2, 3)));
    database_.Store("tblCardBack", 12, "Picture", "no picture at all");
    Form().InitBacks(2);
  }

  CardBacksForm& Form() { return *frmCardBacks; }
  QString EnabledButtons() {
    return Enabled(
        {&Form().cmdDelete, &Form().cmdDefault, &Form().cmdUpdate, &Form().cmdSavePicture, &Form().cmdOK});
  }
  void Load(const QString& path) {
    dialogs_.files.push_back(path);
    ClickOn(Form().cmdLoadPic);
  }
};

TEST_F(CardBacksTest, ListsTheBacksOfTheGivenEditionWhateverTheSet) {
  EXPECT_EQ(Listed(0), "Bright|Dark|Own|Zebra");
  EXPECT_EQ(Listed(1), "No|No|Yes|Yes");
  EXPECT_EQ(Form().lvCardBack.ColumnWidth(0), 212);
  EXPECT_EQ(Form().lvCardBack.ColumnWidth(1), 62);
  EXPECT_EQ(EnabledButtons(), "00010");
  EXPECT_EQ(Form().lblDimension.Caption(), "0W x 0H");
  Form().InitBacks(3);
  EXPECT_EQ(Listed(0), "Leaf|Stone");
}

TEST_F(CardBacksTest, AClickShowsTheBackAndFitsTheForm) {
  const struct {
    const char* text;
    const char* dimension;
    int id, width, height;  // pixels
    const char* buttons;
  } cases[] = {{"Dark", "150W x 254H", 1, 432 + 150 + 10, 455, "01011"},
               {"Own", "60W x 600H", 11, 432 + 60 + 10, 600 + 56 + 16, "11111"},
               {"Own", "60W x 600H", 11, 432 + 60 + 10, 600 + 56 + 16, "11111"},
               {"Bright", "150W x 254H", 2, 432 + 150 + 10, 455, "01011"}};
  for (const auto& one : cases) {
    Click(one.text);
    EXPECT_EQ(Form().lblDimension.Caption(), one.dimension);
    EXPECT_EQ(Form().SelectedBackID, one.id);
    EXPECT_EQ(Form().Width(), one.width * 15) << one.text;
    EXPECT_EQ(Form().Height(), one.height * 15) << one.text;
    EXPECT_EQ(EnabledButtons(), one.buttons) << one.text;
    EXPECT_TRUE(Form().picBack.Visible());
  }
  // A broken picture ends the click before anything is chosen.
  Click("Zebra");
  EXPECT_EQ(Form().SelectedBackID, 2);
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(CardBacksTest, AHugePictureKeepsTheFormOnTheScreen) {
  Load(database_.WriteFile("huge.bmp", TestDatabase::PlainPicture(3000, 2500, kWhite)));
  EXPECT_EQ(Form().lblDimension.Caption(), "3000W x 2500H");
  EXPECT_LE(Form().Left() + Form().Width(), Screen::Width());
  EXPECT_LE(Form().Top() + Form().Height(), Screen::Height());
}

TEST_F(CardBacksTest, AddsABackFromAFile) {
  ClickOn(Form().cmdNew);
  EXPECT_EQ(dialogs_.LastPrompt(), "You must enter a name for the new Card back.");
  EXPECT_TRUE(Form().txtBackText.HasFocus());
  Retype(Form().txtBackText, "dark");
  ClickOn(Form().cmdNew);
  EXPECT_EQ(dialogs_.LastPrompt(), "You must select a new picture for the Card back.");
  EXPECT_EQ(dialogs_.boxes.back().title, "Card back");
  EXPECT_TRUE(Form().cmdLoadPic.HasFocus());
  // Neither Cancel nor a file that is no picture is taken up.
  Load(QString());
  Load(database_.WriteFile("bad.bmp", "nothing"));
  EXPECT_EQ(Form().viewNewBack.Tag(), "");
  EXPECT_EQ(Count(), "7");

  const QByteArray bytes = TestDatabase::GradientPicture(40, 30);
  const QString path = database_.WriteFile("new.bmp", bytes);
  Load(path);
  EXPECT_EQ(dialogs_.file_dialogs.back().DialogTitle, "Choose picture for Card back");
  EXPECT_EQ(Form().lblDimension.Caption(), "40W x 30H");
  ClickOn(Form().cmdNew);
  ClickOn(Form().cmdNew);
  // The same file twice, under a name that differs in case alone.
  EXPECT_EQ(Listed(0), "Bright|Dark|dark|dark|Own|Zebra");
  const QString newest = "CardBackID = (SELECT MAX(CardBackID) FROM tblCardBack)";
  EXPECT_EQ(
      database_.Scalar(QStringLiteral("SELECT BackText || Original || LanguageID || EditionID AS t FROM "
                                      "tblCardBack WHERE ") +
                       newest),
      "dark012");
  const Recordset row = modData::OpenSnapshot("SELECT * FROM tblCardBack WHERE " + newest);
  EXPECT_TRUE(row["Picture"].Get().Bytes().startsWith(bytes));
  EXPECT_EQ(Form().txtBackText.Text(), "dark");

  // The list's back gives way to the new one again as the name is gone to, without a refit.
  Click("Bright");
  EXPECT_EQ(PixelAt(Form().picBack.Image(), 5, 5), Rgb(20, 0, 0));
  Form().txtBackText.SetFocus();
  EXPECT_EQ(PixelAt(Form().picBack.Image(), 39, 29), Rgb(39, 29, 77));
  EXPECT_EQ(Form().lblDimension.Caption(), "150W x 254H");

  QFile::remove(path);
  ClickOn(Form().cmdNew);
  EXPECT_EQ(Count(), "10");
}

// Dropped on the form, the thumbnail or the preview, or pasted, it comes to have the size of a card.
TEST_F(CardBacksTest, ADroppedOrPastedPictureFillsTheCard) {
  const QString file = database_.WriteFile("wide.bmp", TestDatabase::GradientPicture(250, 100));
  QMimeData broken;
  broken.setData("image/png", "no picture");
  EXPECT_TRUE(DropOn(Form(), 300, 20, broken));
  EXPECT_TRUE(dialogs_.LastPrompt().contains("no picture that can be read"));
  EXPECT_TRUE(Form().picNewBack.Picture().IsEmpty());
  auto* const copied = new QMimeData;
  copied->setUrls({QUrl::fromLocalFile(file)});
  QGuiApplication::clipboard()->setMimeData(copied);
  Click("Dark");
  const std::pair<const char*, std::function<bool()>> ways[] = {
      {"form", [&] { return DropFiles(Form(), 300, 20, {file}); }},
      {"thumbnail", [&] { return DropFiles(Form().viewNewBack, 9, 9, {file}); }},
      {"preview", [&] { return DropFiles(Form().viewBack, 9, 9, {file}); }},
      {"pasted", [&] { return ChooseFromMenu(Form().viewNewBack, 9, 9, "Paste"); }},
  };
  for (const auto& [name, take] : ways) {
    ASSERT_TRUE(take()) << name;
    EXPECT_EQ(Form().lblDimension.Caption(), "152W x 256H") << name;
    EXPECT_TRUE(Form().txtBackText.HasFocus()) << name;
    Retype(Form().txtBackText, name);
    ClickOn(Form().cmdNew);
    const Recordset row =
        modData::OpenSnapshot(QStringLiteral("SELECT * FROM tblCardBack WHERE BackText = '%1'").arg(name));
    ASSERT_FALSE(row.IsEmpty()) << name;
    const QImage stored = LoadPicture(row["Picture"].Bytes()).Image();
    EXPECT_EQ(stored, Form().picBack.Picture().Image()) << name;
    EXPECT_EQ(stored.size(), QSize(152, 256)) << name;
    EXPECT_NEAR(qRed(stored.pixel(75, 100)), 125, 3) << "cut evenly";
  }
  QGuiApplication::clipboard()->clear();
}

TEST_F(CardBacksTest, RenamesOnlyWhatAUserAdded) {
  Click("Own");
  ClickOn(Form().cmdUpdate);
  EXPECT_EQ(dialogs_.boxes.back().prompt, "New name:");
  EXPECT_EQ(dialogs_.boxes.back().title, "Rename Card back");
  EXPECT_EQ(Listed(0), "Bright|Dark|Own|Zebra");
  dialogs_.inputs = {"Aurora"};
  ClickOn(Form().cmdUpdate);
  EXPECT_EQ(Listed(0), "Aurora|Bright|Dark|Zebra");
  EXPECT_EQ(database_.Scalar("SELECT BackText FROM tblCardBack WHERE CardBackID = 11"), "Aurora");
  // Made original behind the form's back.
  Click("Aurora");
  database_.Execute("UPDATE tblCardBack SET Original = -1 WHERE CardBackID = 11");
  dialogs_.boxes.clear();
  ClickOn(Form().cmdUpdate);
  EXPECT_FALSE(Form().cmdUpdate.Enabled());
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(CardBacksTest, SavePictureAsksAndWritesNothing) {
  ClickOn(Form().cmdSavePicture);
  EXPECT_TRUE(dialogs_.file_dialogs.empty());
  Click("Dark");
  const QString path = database_.Path("saved.bmp");
  dialogs_.files = {path};
  ClickOn(Form().cmdSavePicture);
  ASSERT_EQ(dialogs_.file_dialogs.size(), 1U);
  EXPECT_EQ(dialogs_.file_dialogs[0].FileName, "Dark");
  EXPECT_EQ(dialogs_.file_dialogs[0].Filter, "BMP (*.bmp)|*.bmp|JPG (*.jpg)|*.jpg|GIF (*.gif)|*.gif|");
  EXPECT_FALSE(QFile::exists(path));
  ClickOn(Form().cmdOK);
  EXPECT_TRUE(Form().OK);
  EXPECT_FALSE(Form().IsShown());
}

}  // namespace
}  // namespace orv
