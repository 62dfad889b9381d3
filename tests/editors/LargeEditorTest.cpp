#include "EditorScene.h"
#include "composition/frmCard.h"
#include "editors/frmLarge2nd.h"
#include "support/Pixels.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class LargeEditorTest : public testing::Test, protected EditorScene {
 protected:
  LargeEditorTest() : EditorScene(kLargeCard) { Open(3); }

  Large2ndForm& Form() { return *frmLarge2nd; }

  LargeCardPreview& preview_ = TheLargeCardPreview();
};

TEST_F(LargeEditorTest, EachControlWritesItsFieldAtOnce) {
  Large2ndForm& form = Form();
  dialogs_.colours = {Rgb(1, 2, 3)};
  ExpectEdits({
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
      {"BGColour", [&] { ClickOn(form.cmdColourLarge); }, "197121"},  // cancelled
  });
}

TEST_F(LargeEditorTest, TheHandleStopsAtItsLimits) {
  Label& handle = preview_.lblPicSizeLarge;
  const struct {
    double by, handle;  // pixels
  } rows[] = {{-9, 120}, {-500, 30}, {500, 180}};
  for (const auto& row : rows) {
    DragHandle(handle, 1, row.by);
    EXPECT_EQ(handle.Left(), row.handle);
    EXPECT_EQ(preview_.lblInformationLarge.Left(), row.handle + 5);
    EXPECT_EQ(preview_.lblInformationLarge.Width(), 291 - row.handle);
    EXPECT_EQ(Stored("CAST(PicWidth AS INT)"), QString::number(row.handle - 8));
  }
  EXPECT_EQ(Form().lblPicDimLarge.Caption(), "172W * 238H");
}

TEST_F(LargeEditorTest, ResizeClosesTheFrameAroundThePicture) {
  database_.Store("tblLargeCard", 1, "Picture", TestDatabase::PlainPicture(40, 30, 0));
  database_.Execute("UPDATE tblLargeCard SET PicTop = 300 WHERE Nr = 1");
  Form().UpdateDisplay();
  const struct {
    int resize, frame_top, frame_height, image_top;
  } rows[] = {{1, 28, 30, 0}, {0, 8, 238, 300}};
  for (const auto& row : rows) {
    Form().chkResizeLarge.SetValue(row.resize);
    EXPECT_EQ(Stored("Resize || '|' || PicLeft || '|' || PicTop"),
              QStringLiteral("%1|0.0|300.0").arg(-row.resize))
        << "nothing is centred";
    EXPECT_EQ(preview_.picFrameLarge.Top(), row.frame_top);
    EXPECT_EQ(preview_.picFrameLarge.Height(), row.frame_height);
    EXPECT_EQ(preview_.picImageLarge.Top(), row.image_top);
  }
}

TEST_F(LargeEditorTest, TheCardOnShowIsComposedAndABrokenOneIsABox) {
  database_.Store("tblLargeCard", 2, "BGPicture", "no picture");
  Form().UpdateDisplay();
  ClickOn(Form().cmdCardbackLarge);
  EXPECT_EQ(dialogs_.file_dialogs[0].DialogTitle, "Choose card back");
  const Picture first = frmCard->picACard.Image();
  ClickOn(Form().cmdCardNav[2]);
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_FALSE(Difference(first, frmCard->picACard.Image()).isEmpty());
  EXPECT_EQ(Position(), "2 (3)");
}

}  // namespace
}  // namespace orv
