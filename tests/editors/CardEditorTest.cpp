#include <gtest/gtest.h>

#include <QWidget>

#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

// The editor of each edition through the same tests, with real events on its widgets.
class CardEditorTest : public testing::TestWithParam<int> {
 protected:
  CardEditorTest() { set_ = database_.AddSet(QStringLiteral("Set"), GetParam()); }

  void Open(int cards) {
    for (int nr = 1; nr <= cards; ++nr) database_.AddCard(set_, nr, QStringLiteral("Card %1").arg(nr));
    database_.SelectSet(set_);
    Editor().Show();
  }
  CardEditor& Editor() {
    if (GetParam() == 2) return *frmCard2nd;
    return *frmCard3rd;
  }
  QString Column(const QString& column, int nr = 1) {
    return database_.Scalar(
        QStringLiteral("SELECT %1 FROM tblCard WHERE SetID = %2 AND Nr = %3").arg(column).arg(set_).arg(nr));
  }
  // The numbers and titles of the set in their order.
  QString Cards() {
    return database_.Scalar(
        QStringLiteral("SELECT group_concat(t, ' ') FROM (SELECT Nr || ':' || Title AS t FROM tblCard "
                       "WHERE SetID = %1 ORDER BY Nr, CardID)")
            .arg(set_));
  }
  QString Position() { return Editor().lblCurrentCard.Caption() + u'|' + Editor().lblCurrentCard.Tag(); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_ = 0;
};

TEST_P(CardEditorTest, AnEmptySetHasOnlyAddAndStatistics) {
  Open(0);
  CardEditor& editor = Editor();
  EXPECT_EQ(Position(), QStringLiteral("0 (0)|0"));
  EXPECT_FALSE(editor.pic2ndCard.Visible());
  EXPECT_FALSE(editor.picCardRest.Visible());
  for (const Control* control :
       {static_cast<Control*>(&editor.cmdCardDelete), static_cast<Control*>(&editor.cmdSort),
        static_cast<Control*>(&editor.cmdCardNav[0])}) {
    EXPECT_FALSE(control->Enabled());
  }
  EXPECT_TRUE(editor.cmdStat.Enabled());
  ClickOn(editor.cmdCardAdd);
  EXPECT_EQ(Position(), QStringLiteral("1 (1)|1"));
  EXPECT_TRUE(editor.picCardRest.Visible());
  EXPECT_EQ(Cards(), QStringLiteral("1:CARD 1"));
  const int first = GetParam() == 2 ? 1 : 4;
  EXPECT_EQ(Column(QStringLiteral("CardTypeID || ',' || CardBackID || ',' || Number || ',' || CAST(PicHeight "
                                  "AS INT) || ',' || Copies")),
            QStringLiteral("%1,%1,%1,105,1").arg(first))
      << "type and back both from the list of types";
  EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT DefaultCardBackID FROM tblSet")), QString::number(first));
  EXPECT_TRUE(editor.txtTitle.HasFocus());
  EXPECT_EQ(editor.txtTitle.SelLength(), 6);
}

TEST_P(CardEditorTest, AddingWithoutASetDoesNothing) {
  Open(0);
  modData::CurrentSetID = 0;
  ClickOn(Editor().cmdCardAdd);
  EXPECT_EQ(Cards(), QStringLiteral("~"));
}

TEST_P(CardEditorTest, EveryEditIsStoredAtOnceAndShownOnThePreview) {
  Open(2);
  CardEditor& editor = Editor();
  Retype(editor.txtTitle, QStringLiteral("Wände"));
  EXPECT_EQ(Column(QStringLiteral("Title")), QStringLiteral("Wände"));
  EXPECT_EQ(editor.Preview().lblTitle.Caption(), QStringLiteral("Wände"));
  TypeInto(editor.txtInfo, QStringLiteral("one"));
  PressKey(editor.txtInfo, 0x01000004);  // Return
  TypeInto(editor.txtInfo, QStringLiteral("two"));
  EXPECT_EQ(Column(QStringLiteral("Information")), QStringLiteral("one\r\ntwo"));
  Retype(editor.txtArtist, QStringLiteral("Ann"));
  EXPECT_EQ(Column(QStringLiteral("Artist")), QStringLiteral("Ann"));
  Retype(editor.txtCopy, QStringLiteral("12"));
  EXPECT_EQ(Column(QStringLiteral("Copies")), QStringLiteral("12"));
  ClickOn(editor.chkOneLine);
  ClickOn(editor.chkShowPicture);
  ClickOn(editor.chkFrame);
  EXPECT_EQ(Column(QStringLiteral("OneLine || UsePicture || UseFrame")), QStringLiteral("-100"));
  EXPECT_FALSE(editor.Preview().picFrame.Visible());
  dialogs_.colours = {Rgb(9, 8, 7)};
  ClickOn(editor.cmdColour);
  ClickOn(editor.cmdColour);  // cancelled
  EXPECT_EQ(Column(QStringLiteral("BGColour")), QString::number(Rgb(9, 8, 7)));
  ClickOn(editor.cmdCardNav[2]);
  EXPECT_EQ(editor.txtTitle.Text(), QStringLiteral("Card 2")) << "and the other card is untouched";
  EXPECT_EQ(Column(QStringLiteral("Information"), 2), QString());
}

TEST_P(CardEditorTest, OneLetterBecomesTheWordThatIsWanted) {
  Open(1);
  TextBox& bold = Editor().txtBold;
  TypeInto(bold, QStringLiteral("s"));
  EXPECT_EQ(bold.Text(), QStringLiteral("s"));
  Retype(bold, QStringLiteral("S"));
  EXPECT_EQ(bold.Text(), QStringLiteral("STRENGTH "));
  EXPECT_EQ(bold.SelStart(), 1);
  EXPECT_EQ(bold.SelLength(), 8);
  TypeInto(bold, QStringLiteral("ix"));
  EXPECT_EQ(Column(QStringLiteral("BoldText")), QStringLiteral("Six")) << "typing replaces the rest";
  Retype(bold, QStringLiteral("C"));
  EXPECT_EQ(Column(QStringLiteral("BoldText")), QStringLiteral("CRAFT "));
  EXPECT_EQ(Editor().Preview().lblBold.Height(), Editor().Preview().Layout().bold_height);
  Retype(bold, QString());
  EXPECT_EQ(Editor().Preview().lblBold.Height(), 1);
}

TEST_P(CardEditorTest, NavigationStopsAtTheEnds) {
  Open(3);
  CardEditor& editor = Editor();
  EXPECT_EQ(Position(), QStringLiteral("1 (3)|3"));
  ClickOn(editor.cmdCardNav[1]);
  EXPECT_EQ(editor.txtTitle.Text(), QStringLiteral("Card 1"));
  ClickOn(editor.cmdCardNav[3]);
  ClickOn(editor.cmdCardNav[2]);
  EXPECT_EQ(Position(), QStringLiteral("3 (3)|3"));
  ClickOn(editor.cmdCardNav[1]);
  EXPECT_EQ(editor.txtTitle.Text(), QStringLiteral("Card 2"));
  ClickOn(editor.cmdCardNav[0]);
  EXPECT_EQ(editor.txtTitle.Text(), QStringLiteral("Card 1"));
}

TEST_P(CardEditorTest, DeletingClosesTheGapAsFarAsNumbersFollowEachOther) {
  const struct {
    const char* numbers;  // of the cards before
    int moves;            // to the card that is deleted
    const char* cards;
    const char* position;
  } rows[] = {
      {"12345", 2, "1:c1 2:c2 3:c4 4:c5", "3 (4)|4"},
      {"12345", 4, "1:c1 2:c2 3:c3 4:c4", "4 (4)|4"},
      {"12345", 0, "1:c2 2:c3 3:c4 4:c5", "1 (4)|4"},
      {"1245", 0, "1:c2 4:c4 5:c5", "1 (5)|5"},
      {"1", 0, "~", "0 (0)|0"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.cards);
    database_.Execute(QStringLiteral("DELETE FROM tblCard_rows"));
    for (const char* nr = row.numbers; *nr != 0; ++nr)
      database_.AddCard(set_, *nr - '0', QStringLiteral("c%1").arg(*nr - '0'));
    database_.SelectSet(set_);
    if (GetParam() == 2)
      frmCard2nd->InitCard2nd();
    else
      frmCard3rd->InitCard3rd();
    Editor().Show();
    for (int i = 0; i < row.moves; ++i) ClickOn(Editor().cmdCardNav[2]);
    ClickOn(Editor().cmdCardDelete);
    EXPECT_EQ(Cards(), QString::fromLatin1(row.cards));
    EXPECT_EQ(Position(), QString::fromLatin1(row.position));
  }
}

TEST_P(CardEditorTest, TypeAndNumber) {
  Open(1);
  CardEditor& editor = Editor();
  EXPECT_EQ(editor.cboType.ListCount(), 2) << "a type that another set has locked is left out";
  Choose(editor.cboType, 1);
  const int second = GetParam() == 2 ? 2 : 5;
  EXPECT_EQ(Column(QStringLiteral("CardTypeID || ',' || Number")), QStringLiteral("%1,%1").arg(second));
  EXPECT_EQ(editor.cboNumber.Text(), QString::number(second));
  editor.cboNumber.SetFocus();
  PressKey(editor.cboNumber, 'A', 0x04000000);
  TypeInto(editor.cboNumber, QStringLiteral("X"));
  EXPECT_EQ(Column(QStringLiteral("Number")), QStringLiteral("X"));
  EXPECT_EQ(editor.Preview().lblNumber.Caption(), QStringLiteral("X"));
  Choose(editor.cboCardBack, 0);
  EXPECT_EQ(editor.Preview().picBack.GetPixel(3, 3), GetParam() == 2 ? Rgb(20, 0, 0) : Rgb(40, 0, 0));
}

TEST_P(CardEditorTest, PicturesAreStoredAsTheyAreAndRemoved) {
  Open(1);
  CardEditor& editor = Editor();
  const QByteArray bytes = TestDatabase::PlainPicture(60, 40, Rgb(1, 2, 3));
  const QString path = database_.WriteFile(QStringLiteral("p.bmp"), bytes);
  database_.Execute(QStringLiteral("UPDATE tblCard_rows SET PicLeft = 300"));
  editor.UpdateDisplay();
  dialogs_.files = {path};
  ClickOn(editor.cmdGetPic);
  EXPECT_EQ(Column(QStringLiteral("length(Picture)")),
            QString::number(bytes.size() + 1 + bytes.size() / 32768));
  EXPECT_EQ(editor.Preview().picImage.Left(), 0) << "until the next redraw";
  editor.UpdateDisplay();
  EXPECT_EQ(editor.Preview().picImage.Left(), 300);
  ClickOn(editor.cmdGetPic);  // cancelled
  EXPECT_EQ(dialogs_.file_dialogs.back().InitDir, database_.Folder() + u'/');
  dialogs_.files = {database_.WriteFile(QStringLiteral("no.bmp"), "no picture")};
  ClickOn(editor.cmdGetPic);
  EXPECT_EQ(Column(QStringLiteral("length(Picture)")), QStringLiteral("11"))
      << "stored, though it can't be shown";
  EXPECT_TRUE(dialogs_.boxes.empty());
  ClickOn(editor.cmdDelPic);
  EXPECT_EQ(Column(QStringLiteral("Picture IS NULL")), QStringLiteral("1"));
  EXPECT_EQ(Column(QStringLiteral("CAST(PicLeft AS INT)")), QStringLiteral("0"));
  ClickOn(editor.cmdLastBackPic);
  EXPECT_EQ(Column(QStringLiteral("Background IS NULL")), QStringLiteral("1")) << "none was chosen yet";
  dialogs_.files = {path};
  ClickOn(editor.cmdBackPic);
  ClickOn(editor.cmdDelBackPic);
  EXPECT_EQ(Column(QStringLiteral("Background IS NULL")), QStringLiteral("1"));
  ClickOn(editor.cmdLastBackPic);
  EXPECT_EQ(Column(QStringLiteral("Background IS NULL")), QStringLiteral("0"));
}

TEST_P(CardEditorTest, DraggingAndKeysPlaceThePicture) {
  Open(1);
  CardEditor& editor = Editor();
  database_.Store(QStringLiteral("tblCard"), Column(QStringLiteral("CardID")).toInt(),
                  QStringLiteral("Picture"), TestDatabase::PlainPicture(60, 40, Rgb(1, 2, 3)));
  editor.UpdateDisplay();
  const CardLayout& layout = editor.Preview().Layout();
  const double x = layout.frame.left + 12;
  const double y = layout.frame.top + 12;
  PressAt(editor.viewCard, x, y);
  DragTo(editor.viewCard, x + 10, y + 5);
  DragTo(editor.viewCard, x - 500, y + 8);
  ReleaseAt(editor.viewCard, x - 500, y + 8);
  EXPECT_EQ(Column(QStringLiteral("CAST(PicLeft AS INT) || ',' || CAST(PicTop AS INT)")),
            QStringLiteral("-7500,120"));
  const struct {
    int key, shift;
    int left, top, height;  // afterwards; pixels
  } keys[] = {
      {0x01000016, 0, -500, 0, 105},                                // Page Up
      {0x01000010, 0, 0, 0, 105},                                   // Home
      {0x01000014, 0, 1, 0, 105},                                   // Right
      {0x01000015, 0, 1, 1, 105},                                   // Down
      {0x01000012, 0, 0, 1, 105},                                   // Left
      {0x01000013, 0, 0, 0, 105},                                   // Up
      {0x01000011, 0, layout.frame.width - 1 - 60, 0, 105},         // End
      {0x01000017, 0, layout.frame.width - 61, 105 - 3 - 40, 105},  // Page Down
      {0x01000013, 0x02000000, layout.frame.width - 61, 62, 104},   // Shift+Up
      {0x01000015, 0x02000000, layout.frame.width - 61, 62, 105},   // Shift+Down
      {0x01000010, 0x02000000, layout.frame.width - 61, 62, layout.handle_lowest - layout.frame.top},
      {0x01000013, 0x02000000, layout.frame.width - 61, 62, layout.handle_lowest - layout.frame.top},
      {0x01000011, 0x02000000, layout.frame.width - 61, 62, layout.handle_highest - layout.frame.top},
      {0x01000014, 0x04000000, layout.frame.width - 61, 62,
       layout.handle_highest - layout.frame.top},  // Ctrl
  };
  for (const auto& row : keys) {
    PressKey(editor.viewCard, row.key, row.shift);
    EXPECT_EQ(Column(QStringLiteral(
                  "CAST(PicLeft AS INT) || ',' || CAST(PicTop AS INT) || ',' || CAST(PicHeight AS INT)")),
              QStringLiteral("%1,%2,%3").arg(row.left * 15).arg(row.top * 15).arg(row.height))
        << std::hex << row.key << ' ' << row.shift;
  }
}

TEST_P(CardEditorTest, TheHandleStopsAtItsLimitsAndTheTextFollows) {
  Open(1);
  CardEditor& editor = Editor();
  CardPreview& preview = editor.Preview();
  const CardLayout& layout = preview.Layout();
  const double x = layout.handle.left + 40;
  PressAt(editor.viewCard, x, preview.lblPicSize.Top() + 2);
  DragTo(editor.viewCard, x, layout.card.height - 2);
  EXPECT_EQ(preview.lblPicSize.Top(), layout.handle_highest);
  EXPECT_EQ(Column(QStringLiteral("CAST(PicHeight AS INT)")),
            QString::number(layout.handle_highest - layout.frame.top));
  EXPECT_EQ(preview.lblBold.Top(), layout.handle_highest + 3);
  DragTo(editor.viewCard, x, 2);
  ReleaseAt(editor.viewCard, x, 2);
  EXPECT_EQ(Column(QStringLiteral("CAST(PicHeight AS INT)")),
            QString::number(layout.handle_lowest - layout.frame.top));
  EXPECT_EQ(editor.lblPicDim.Caption(),
            QStringLiteral("%1W * %2H").arg(layout.frame.width).arg(layout.handle_lowest - layout.frame.top));
}

TEST_P(CardEditorTest, ClosedByItsFrameItComesAnewAtTheFirstCard) {
  Open(2);
  ClickOn(Editor().cmdCardNav[2]);
  QString closed;
  EditorClosed = [&closed](const QString& name) { closed = name; };
  Editor().Handle()->window()->close();
  EXPECT_EQ(closed, GetParam() == 2 ? QStringLiteral("frmCard2nd") : QStringLiteral("frmCard3rd"));
  EditorClosed = nullptr;
  EXPECT_EQ(Editor().txtTitle.Text(), QStringLiteral("Card 1"));
}

TEST_P(CardEditorTest, TheCatalogueAndTheListWorkInTheSecondEditionOnly) {
  Open(1);
  int shown = 0;
  dialogs_.modals = {[&](Form&) { ++shown; }, [&](Form&) { ++shown; }};
  ClickOn(Editor().cmdGetType);
  ClickOn(Editor().cmdSort);
  EXPECT_EQ(shown, GetParam() == 2 ? 2 : 0);
}

INSTANTIATE_TEST_SUITE_P(Editions, CardEditorTest, testing::Values(2, 3));

}  // namespace
}  // namespace orv
