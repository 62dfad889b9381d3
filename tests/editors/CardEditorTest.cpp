#include <ctime>

#include "EditorScene.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCardList.h"
#include "support/Widgets.h"

namespace orv {
namespace {

// The editor of each edition through the same tests, with real events on its widgets.
class CardEditorTest : public testing::TestWithParam<int>, protected EditorScene {
 protected:
  CardEditorTest() : EditorScene(GetParam() == 2 ? kCard2nd : kCard3rd) { Open(2); }

  CardEditor& Editor() { return static_cast<CardEditor&>(EditorScene::Editor()); }
  QString Height() { return Stored("CAST(PicHeight AS INT)"); }
};

TEST_P(CardEditorTest, EveryEditIsStoredAtOnceAndShownOnThePreview) {
  CardEditor& editor = Editor();
  EXPECT_TRUE(editor.cmdStat.Enabled());
  CardPreview& preview = editor.Preview();
  dialogs_.colours = {Rgb(9, 8, 7)};
  ExpectEdits({
      {"Title", [&] { Retype(editor.txtTitle, "Wände"); }, "Wände",
       [&] { return preview.lblTitle.Caption(); }, "Wände"},
      {"Information",
       [&] {
         TypeInto(editor.txtInfo, "one");
         PressKey(editor.txtInfo, 0x01000004);  // Return
         TypeInto(editor.txtInfo, "two");
       },
       "one\r\ntwo", [&] { return preview.lblInformation.Caption(); }, "one\r\ntwo"},
      {"Artist", [&] { Retype(editor.txtArtist, "Ann"); }, "Ann"},
      {"Copies", [&] { Retype(editor.txtCopy, "12"); }, "12"},
      {"OneLine", [&] { ClickOn(editor.chkOneLine); }, "-1"},
      {"UsePicture", [&] { ClickOn(editor.chkShowPicture); }, "0",
       [&] { return QString::number(preview.picFrame.Visible()); }, "0"},
      {"UseFrame", [&] { ClickOn(editor.chkFrame); }, "0",
       [&] { return QString::number(preview.picFrame.BorderStyle()); }, "0"},
      {"BGColour", [&] { ClickOn(editor.cmdColour); }, "460809",
       [&] { return QString::number(preview.picCard.BackColor()); }, "460809"},
      {"BGColour", [&] { ClickOn(editor.cmdColour); }, "460809"},  // cancelled
  });
  ClickOn(editor.cmdCardNav[2]);
  EXPECT_EQ(editor.txtInfo.Text(), QString()) << "the other card is shown as it is";
}

TEST_P(CardEditorTest, AVeryLongTextHoldsNoKeyUpAndIsShownClipped) {
  CardEditor& editor = Editor();
  const struct {
    const char* column;
    TextBox& box;
    const char* piece;  // of two letters
  } rows[] = {{"Title", editor.txtTitle, "ii"},
              {"Information", editor.txtInfo, "ii"},
              {"Information", editor.txtInfo, "W "},
              {"Information", editor.txtInfo, "\r\n"}};
  for (const auto& [column, box, piece] : rows) {
    SCOPED_TRACE(std::string(column) + " of " + piece);
    ClickOn(editor.cmdCardNav[2]);
    database_.Execute(
        QStringLiteral("UPDATE tblCard SET %1 = replace(hex(zeroblob(250000)), '00', '%2') WHERE Nr = 1")
            .arg(column, piece));
    const std::clock_t start = std::clock();
    ClickOn(editor.cmdCardNav[1]);
    TypeInto(box, "x");
    dialogs_.modals = {[](Form&) { ClickOn(frmCardList->cmdGoTo); }};
    ClickOn(editor.cmdSort);
    ClickOn(editor.cmdStat);
    EXPECT_LT(std::clock() - start, 8 * CLOCKS_PER_SEC) << "also under sanitizers";
    EXPECT_EQ(Stored(QStringLiteral("length(%1)").arg(column)), "500001");
  }
}

TEST_P(CardEditorTest, OneLetterBecomesTheWordThatIsWanted) {
  TextBox& bold = Editor().txtBold;
  TypeInto(bold, "s");
  EXPECT_EQ(bold.Text(), "s");
  Retype(bold, "S");
  EXPECT_EQ(bold.Text(), "STRENGTH ");
  EXPECT_EQ(bold.SelStart(), 1);
  EXPECT_EQ(bold.SelLength(), 8);
  TypeInto(bold, "ix");
  EXPECT_EQ(Stored("BoldText"), "Six") << "typing replaces the rest";
  Retype(bold, "C");
  EXPECT_EQ(Stored("BoldText"), "CRAFT ");
  EXPECT_EQ(Editor().Preview().lblBold.Height(), Editor().Preview().Layout().bold_height);
  Retype(bold, QString());
  EXPECT_EQ(Editor().Preview().lblBold.Height(), 1);
}

TEST_P(CardEditorTest, TypeAndNumber) {
  CardEditor& editor = Editor();
  EXPECT_EQ(editor.cboType.ListCount(), 2) << "a type that another set has locked is left out";
  Choose(editor.cboType, 1);
  const int second = GetParam() == 2 ? 2 : 5;
  EXPECT_EQ(Stored("CardTypeID || ',' || Number"), QStringLiteral("%1,%1").arg(second));
  EXPECT_EQ(editor.cboNumber.Text(), QString::number(second));
  editor.cboNumber.SetFocus();
  PressKey(editor.cboNumber, 'A', 0x04000000);
  TypeInto(editor.cboNumber, "X");
  EXPECT_EQ(Stored("Number"), "X");
  EXPECT_EQ(editor.Preview().lblNumber.Caption(), "X");
  Choose(editor.cboCardBack, 0);
  EXPECT_EQ(editor.Preview().picBack.GetPixel(3, 3), GetParam() == 2 ? Rgb(20, 0, 0) : Rgb(40, 0, 0));
}

TEST_P(CardEditorTest, TheHandleStopsAtItsLimitsAndTheTextFollows) {
  CardEditor& editor = Editor();
  CardPreview& preview = editor.Preview();
  const CardLayout& layout = preview.Layout();
  const double x = layout.handle.left + 40;
  PressAt(editor.viewCard, x, preview.lblPicSize.Top() + 2);
  DragTo(editor.viewCard, x, layout.card.height - 2);
  EXPECT_EQ(preview.lblPicSize.Top(), layout.handle_highest);
  EXPECT_EQ(Height(), QString::number(layout.handle_highest - layout.frame.top));
  EXPECT_EQ(preview.lblBold.Top(), layout.handle_highest + 3);
  DragTo(editor.viewCard, x, 2);
  ReleaseAt(editor.viewCard, x, 2);
  EXPECT_EQ(Height(), QString::number(layout.handle_lowest - layout.frame.top));
  EXPECT_EQ(editor.lblPicDim.Caption(),
            QStringLiteral("%1W * %2H").arg(layout.frame.width).arg(layout.handle_lowest - layout.frame.top));
}

TEST_P(CardEditorTest, TheBackgroundChosenLastServesOtherCards) {
  CardEditor& editor = Editor();
  const auto has_background = [&](int nr) { return Stored("Background IS NOT NULL", nr); };
  ClickOn(editor.cmdLastBackPic);
  EXPECT_EQ(has_background(1), "0") << "none was chosen yet";
  dialogs_.files = {database_.WriteFile("p.bmp", TestDatabase::PlainPicture(60, 40, Rgb(1, 2, 3)))};
  ClickOn(editor.cmdBackPic);
  dialogs_.files = {database_.WriteFile("no.bmp", "no picture")};
  ClickOn(editor.cmdBackPic);
  ClickOn(editor.cmdDelBackPic);
  EXPECT_EQ(has_background(1), "0");
  ClickOn(editor.cmdCardNav[2]);
  ClickOn(editor.cmdLastBackPic);
  EXPECT_EQ(has_background(1) + has_background(2), "01");
  EXPECT_EQ(editor.Preview().picCard.GetPixel(0, 0), Rgb(1, 2, 3));
}

TEST_P(CardEditorTest, TheMouseDragsThePictureAndShiftedKeysSizeItsFrame) {
  CardEditor& editor = Editor();
  database_.Store("tblCard", 1, "Picture", TestDatabase::PlainPicture(60, 40, Rgb(1, 2, 3)));
  editor.UpdateDisplay();
  const CardLayout& layout = editor.Preview().Layout();
  const double x = layout.frame.left + 12;
  const double y = layout.frame.top + 12;
  const QString offset = "CAST(PicLeft AS INT) || ',' || CAST(PicTop AS INT)";
  PressAt(editor.viewCard, x, y);
  DragTo(editor.viewCard, x + 10, y + 5);
  DragTo(editor.viewCard, x - 500, y + 8);
  ReleaseAt(editor.viewCard, x - 500, y + 8);
  EXPECT_EQ(Stored(offset), "-7500,120");
  PressKey(editor.viewCard, 0x01000016);  // Page Up
  PressKey(editor.viewCard, 0x01000010);  // Home
  EXPECT_EQ(Stored(offset), "0,0") << "the view's keys go to the picture";
  const int lowest = layout.handle_lowest - layout.frame.top;
  const int highest = layout.handle_highest - layout.frame.top;
  const struct {
    int key, modifier, height;
  } keys[] = {{0x01000013, 0x02000000, 104},       // Shift+Up
              {0x01000015, 0x02000000, 105},       // Shift+Down
              {0x01000010, 0x02000000, lowest},    // Shift+Home
              {0x01000013, 0x02000000, lowest},    // Shift+Up
              {0x01000011, 0x02000000, highest},   // Shift+End
              {0x01000015, 0x02000000, highest},   // Shift+Down
              {0x01000013, 0x04000000, highest}};  // Ctrl+Up
  for (const auto& row : keys) {
    PressKey(editor.viewCard, row.key, row.modifier);
    EXPECT_EQ(Height(), QString::number(row.height)) << std::hex << row.key << ' ' << row.modifier;
    EXPECT_EQ(Stored(offset), "0,0");
  }
}

TEST_P(CardEditorTest, TheCatalogueAndTheListWorkInTheSecondEditionOnly) {
  int shown = 0;
  dialogs_.modals = {[&](Form&) { ++shown; }, [&](Form&) { ++shown; }};
  ClickOn(Editor().cmdGetType);
  ClickOn(Editor().cmdSort);
  EXPECT_EQ(shown, GetParam() == 2 ? 2 : 0);
}

INSTANTIATE_TEST_SUITE_P(Editions, CardEditorTest, testing::Values(2, 3));

}  // namespace
}  // namespace orv
