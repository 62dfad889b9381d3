#include <gtest/gtest.h>

#include "composition/frmCard.h"
#include "editors/frmLarge2nd.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Pixels.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class LargeEditorTest : public testing::Test {
 protected:
  LargeEditorTest() : set_(database_.AddSet(QStringLiteral("Set"), 2)) {
    for (int nr = 1; nr <= 3; ++nr) database_.AddLargeCard(set_, nr, QStringLiteral("LAND %1").arg(nr));
    database_.SelectSet(set_);
  }

  Large2ndForm& Form() { return *frmLarge2nd; }
  QString Stored(const char* column, int nr = 1) {
    return database_.Scalar(
        QStringLiteral("SELECT %1 FROM tblLargeCard WHERE Nr = %2").arg(QLatin1String(column)).arg(nr));
  }
  QString Position() { return Form().lblCurrentCard.Caption(); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  LargeCardPreview& preview_ = TheLargeCardPreview();
  int set_;
};

TEST_F(LargeEditorTest, ANewCardIsTitledByItsOwnNumber) {
  Form();
  database_.Execute(QStringLiteral("UPDATE tblLargeCard SET Nr = 7 WHERE Nr = 3"));  // the tag still says 3
  Form().Form_KeyDown({kKeyN, kCtrl});
  EXPECT_EQ(Position(), "8 (8)");
  EXPECT_EQ(database_.Scalar(
                QStringLiteral("SELECT Title || '|' || Information || '|' || UsePicture || UseFrame || "
                               "Resize || '|' || PicWidth || '|' || BGColour || '|' || Copies "
                               "FROM tblLargeCard WHERE Nr = 8")),
            "LARGE CARD 8||-1-10|121.0|16777215|1");
}

TEST_F(LargeEditorTest, DeletingClosesTheGap) {
  ClickOn(Form().cmdCardDelete);
  EXPECT_EQ(Position(), "1 (2)");
  EXPECT_EQ(Form().txtTitleLarge.Text(), "LAND 2");
  EXPECT_EQ(Stored("Title", 2), "LAND 3");
  ClickOn(Form().cmdCardNav[3]);
  ClickOn(Form().cmdCardDelete);
  EXPECT_EQ(Position(), "1 (1)");
  ClickOn(Form().cmdCardDelete);
  EXPECT_EQ(Position(), "0 (0)");
  EXPECT_FALSE(Form().picLargeCard.Visible());
  EXPECT_FALSE(Form().pic2ndCardLarge.Visible());
  ClickOn(Form().cmdCardAdd);
  EXPECT_EQ(Stored("Title"), "LARGE CARD 1");
  EXPECT_TRUE(Form().picLargeCard.Visible());
}

TEST_F(LargeEditorTest, EachControlWritesItsFieldAtOnce) {
  Large2ndForm& form = Form();
  dialogs_.colours = {Rgb(1, 2, 3)};
  const struct {
    const char* column;
    std::function<void()> edit;
    const char* stored;
    std::function<QString()> shown;
    const char* preview;
  } rows[] = {
      {"Title", [&] { form.txtTitleLarge.SetText("A\r\nB"); }, "A\r\nB",
       [&] { return preview_.lblTitleLarge.Caption(); }, "A\r\nB"},
      {"Information", [&] { form.txtInfoLarge.SetText("C"); }, "C",
       [&] { return preview_.lblInformationLarge.Caption(); }, "C"},
      {"UseFrame", [&] { form.chkFrameLarge.SetValue(0); }, "0",
       [&] { return QString::number(preview_.picFrameLarge.BorderStyle()); }, "0"},
      {"UsePicture", [&] { form.chkShowPictureLarge.SetValue(0); }, "0",
       [&] { return QString::number(preview_.lblTitleLarge.Left()); }, "10"},
      {"Copies", [&] { form.udCopyLarge.SetValue(12); }, "12", [&] { return form.txtCopyLarge.Text(); },
       "12"},
      {"BGColour", [&] { form.picColourLarge.Click(); }, "197121",
       [&] { return QString::number(preview_.picCardLarge.BackColor()); }, "197121"},
  };
  for (const auto& row : rows) {
    row.edit();
    EXPECT_EQ(Stored(row.column), QString::fromLatin1(row.stored)) << row.column;
    EXPECT_EQ(row.shown(), QString::fromLatin1(row.preview)) << row.column;
  }
  ClickOn(form.cmdColourLarge);
  EXPECT_EQ(Stored("BGColour"), "197121") << "cancelled";
  EXPECT_EQ(Stored("Title", 2), "LAND 2");
}

TEST_F(LargeEditorTest, TheHandleStopsAtItsLimits) {
  Label& handle = (Form(), preview_.lblPicSizeLarge);
  const struct {
    double by;  // pixels
    double handle, text;
    const char* stored;
  } rows[] = {{-9, 120, 125, "112"}, {-500, 30, 35, "22"}, {500, 180, 185, "172"}};
  for (const auto& row : rows) {
    handle.MouseDown({1, 0, 30, 75});
    handle.MouseMove({1, 0, 30 + row.by * 15, 75});
    EXPECT_EQ(handle.Left(), row.handle);
    EXPECT_EQ(preview_.lblInformationLarge.Left(), row.text);
    EXPECT_EQ(preview_.lblInformationLarge.Width(), 296 - row.text);
    EXPECT_EQ(Stored("PicWidth"), row.stored);
  }
  EXPECT_EQ(Form().lblPicDimLarge.Caption(), "172W * 238H");
}

TEST_F(LargeEditorTest, KeysAndResize) {
  database_.Store(QStringLiteral("tblLargeCard"), 1, QStringLiteral("Picture"),
                  TestDatabase::PlainPicture(40, 30, 0));
  Form();
  Surface& image = preview_.picImageLarge;
  image.KeyDown({kKeyEnd, 0});
  image.KeyDown({kKeyPageDown, 0});
  EXPECT_EQ(Stored("PicLeft || '|' || PicTop"), "1200.0|3075.0");
  image.KeyDown({kKeyHome, kShift});
  EXPECT_EQ(Stored("PicWidth || '|' || PicLeft"), "121.0|1200.0") << "no keys with a shift state";
  image.MouseDown({1, 0, 10, 10});
  image.MouseMove({1, 0, -1190, -2765});
  EXPECT_EQ(Stored("PicLeft || '|' || PicTop"), "0.0|300.0");
  Form().chkResizeLarge.SetValue(1);
  EXPECT_EQ(Stored("Resize || '|' || PicLeft"), "-1|0.0") << "nothing is centred";
  EXPECT_EQ(preview_.picFrameLarge.Top(), 28);
  EXPECT_EQ(preview_.picFrameLarge.Height(), 30);
  EXPECT_EQ(image.Top(), 0);
  Form().chkResizeLarge.SetValue(0);
  EXPECT_EQ(preview_.picFrameLarge.Top(), 8);
  EXPECT_EQ(preview_.picFrameLarge.Height(), 238);
  EXPECT_EQ(image.Top(), 300);
}

TEST_F(LargeEditorTest, PicturesAreChosenAndRemoved) {
  const QString file =
      database_.WriteFile(QStringLiteral("land.bmp"), TestDatabase::PlainPicture(302, 254, Rgb(5, 6, 7)));
  database_.Execute(QStringLiteral("UPDATE tblLargeCard SET PicTop = 45 WHERE Nr = 1"));
  dialogs_.files = {file, file, file, file};
  ClickOn(Form().cmdGetPicLarge);
  EXPECT_EQ(Stored("PicTop"), "45");
  ClickOn(Form().cmdBackPicLarge);
  EXPECT_EQ(preview_.picCardLarge.GetPixel(0, 0), Rgb(5, 6, 7));
  ClickOn(Form().cmdCardbackLarge);
  ClickOn(Form().cmdCardbackLarge);
  EXPECT_EQ(dialogs_.file_dialogs[2].DialogTitle, "Choose card back");
  EXPECT_EQ(dialogs_.file_dialogs[2].InitDir, QString());
  EXPECT_EQ(dialogs_.file_dialogs[3].InitDir, database_.Folder() + u'/');
  EXPECT_EQ(preview_.picBackLarge.GetPixel(0, 0), Rgb(5, 6, 7));
  EXPECT_EQ(Stored("Picture IS NULL OR BGPicture IS NULL OR LargeCardBack IS NULL"), "0");
  for (CommandButton* button :
       {&Form().cmdDelPicLarge, &Form().cmdDelBackPicLarge, &Form().cmdDelCardbackLarge}) {
    ClickOn(*button);
  }
  EXPECT_EQ(Stored("Picture IS NULL AND BGPicture IS NULL AND LargeCardBack IS NULL AND PicTop = 0"), "1");
  for (Surface* surface : {&preview_.picImageLarge, &preview_.picCardLarge, &preview_.picBackLarge}) {
    EXPECT_TRUE(surface->Picture().IsEmpty());
  }
}

TEST_F(LargeEditorTest, TheCardOnShowIsComposedAndABrokenOneIsABox) {
  database_.Store(QStringLiteral("tblLargeCard"), 2, QStringLiteral("BGPicture"), "no picture");
  Form();
  const Picture first = frmCard->picACard.Image();
  ClickOn(Form().cmdCardNav[2]);
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_FALSE(Difference(first, frmCard->picACard.Image()).isEmpty());
  EXPECT_EQ(Position(), "2 (3)");
  QString closed;
  EditorClosed = [&](const QString& name) { closed = name; };
  frmLarge2nd.Unload();
  EditorClosed = nullptr;
  EXPECT_EQ(closed, "frmLarge2nd");
}

}  // namespace
}  // namespace orv
