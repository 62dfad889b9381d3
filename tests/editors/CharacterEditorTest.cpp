#include <gtest/gtest.h>

#include "editors/frmCharacter2nd.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/Pixels.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {
namespace {

class CharacterEditorTest : public testing::Test {
 protected:
  CharacterEditorTest() : set_(database_.AddSet(QStringLiteral("Set"), 2)) {
    for (int nr = 1; nr <= 3; ++nr) database_.AddCharacter(set_, nr, QStringLiteral("HERO %1").arg(nr));
    database_.SelectSet(set_);
  }

  Character2ndForm& Form() { return *frmCharacter2nd; }
  // What the file holds for the character with a number, not what waits in the recordset.
  QString Stored(const char* column, int nr = 1) {
    return database_.Scalar(
        QStringLiteral("SELECT %1 FROM tblCharacter WHERE Nr = %2").arg(QLatin1String(column)).arg(nr));
  }
  QString Position() { return Form().lblCurrentCardCharacter.Caption(); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  CharacterPreview& preview_ = TheCharacterPreview();
  int set_;
};

TEST_F(CharacterEditorTest, WalksWithoutWrappingAround) {
  EXPECT_EQ(Position(), "1 (3)");
  EXPECT_EQ(Form().Caption(), "Character (2nd)");
  const struct {
    int button;
    const char* position;
  } steps[] = {{1, "1 (3)"}, {2, "2 (3)"}, {3, "3 (3)"}, {2, "3 (3)"}, {1, "2 (3)"}, {0, "1 (3)"}};
  for (const auto& step : steps) {
    ClickOn(Form().cmdCharNav[step.button]);
    EXPECT_EQ(Position(), step.position);
  }
  EXPECT_EQ(Form().txtCharName.Text(), "HERO 1");
  EXPECT_EQ(Form().cboStartArea.Text(), "Plains : Village");
  EXPECT_EQ(Form().cboAlignment.Text(), "Neutral");
  EXPECT_EQ(Form().cboCharacterCardback.Text(), "Shield");
  EXPECT_EQ(Form().lblPicDimChar.Caption(), "(121W*218H)");
  EXPECT_EQ(Form().lblPicDimPlay.Caption(), "(132W*222H)");
  EXPECT_EQ(preview_.lblWatermark[1].Caption(), "ORV 1.2");
}

TEST_F(CharacterEditorTest, AddsBehindTheLastOne) {
  Form().Form_KeyDown({kKeyN, kCtrl});
  EXPECT_EQ(Position(), "4 (4)");
  EXPECT_EQ(database_.Scalar(QStringLiteral(
                "SELECT Name || '|' || StartingAreaID || AlignmentID || Strength || Craft || Gold || Lives "
                "|| '|' || "
                "PicWidth || '|' || UsePicture || UseFrame || IncludeBoard || '|' || Abilities || '|' || "
                "CharacterBackID || PPTop FROM tblCharacter WHERE Nr = 4")),
            // The first area and the first back in the order of the loaded lists.
            QStringLiteral("CHARACTER 4|223314|121.0|-1-10||10.0"));
  Form().Form_KeyDown({kKeyN, 0});
  EXPECT_EQ(Position(), "4 (4)") << "only with Ctrl";
  modData::CurrentSetID = 0;
  ClickOn(Form().cmdCharacterAdd);
  EXPECT_EQ(Position(), "4 (4)") << "no set, no character";
}

TEST_F(CharacterEditorTest, AnEmptySetOffersOnlyAdding) {
  database_.Execute(QStringLiteral("DELETE FROM tblCharacter"));
  EXPECT_EQ(Position(), "0 (0)");
  EXPECT_FALSE(Form().picCharacterRest.Visible());
  EXPECT_FALSE(Form().pic2ndCharacter.Visible());
  EXPECT_FALSE(Form().cmdCharacterDelete.Enabled());
  EXPECT_FALSE(Form().cmdSortCharacter.Enabled());
  EXPECT_FALSE(Form().cmdCharNav[2].Enabled());
  ClickOn(Form().cmdCharacterAdd);
  EXPECT_EQ(Position(), "1 (1)");
  EXPECT_EQ(Stored("Name"), "CHARACTER 1");
  EXPECT_TRUE(Form().picCharacterRest.Visible());
  EXPECT_TRUE(Form().cmdSortCharacter.Enabled());
}

TEST_F(CharacterEditorTest, TheDeleteAndListButtonsDoNothing) {
  EXPECT_TRUE(Form().cmdCharacterDelete.Enabled());
  ClickOn(Form().cmdCharacterDelete);
  ClickOn(Form().cmdSortCharacter);
  EXPECT_EQ(database_.Scalar(QStringLiteral("SELECT COUNT(*) FROM tblCharacter")), "3");
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(CharacterEditorTest, EachControlWritesItsFieldAtOnce) {
  Character2ndForm& form = Form();
  const struct {
    const char* column;
    std::function<void()> edit;
    const char* stored;
    std::function<QString()> shown;
    const char* preview;
  } rows[] = {
      {"Name", [&] { form.txtCharName.SetText("ADA"); }, "ADA",
       [&] { return preview_.lblPlayingPieceName.Caption(); }, "ADA"},
      {"IncludeBoard", [&] { form.chkIncludeBoard.SetValue(1); }, "-1",
       [&] { return preview_.lblStart.Caption(); }, "Village (Plains)"},
      {"AlignmentID", [&] { Choose(form.cboAlignment, 2); }, "3",
       [&] { return preview_.lblAlignment.Caption(); }, "Evil"},
      {"Abilities", [&] { form.txtSpecialAbilities.SetText("A\r\nB"); }, "A\r\nB",
       [&] { return preview_.lblSpecial.Caption(); }, "A\r\nB"},
      {"Strength", [&] { form.cboCharAttr[0].SetText("2d6"); }, "2d6", [] { return QString(); }, ""},
      {"Lives", [&] { Choose(form.cboCharAttr[3], 9); }, "---", [] { return QString(); }, ""},
      {"UsePicture", [&] { form.chkShowPictureCharacter.SetValue(0); }, "0",
       [&] { return QString::number(preview_.lblSpecial.Left()); }, "6"},
      {"UseFrame", [&] { form.chkFrameCharacter.SetValue(0); }, "0",
       [&] { return QString::number(preview_.picFrameCharacter.BorderStyle()); }, "0"},
      // Both backs of the list are there; the second one by text is the first key.
      {"CharacterBackID", [&] { Choose(form.cboCharacterCardback, 0); }, "2",
       [&] { return QString::number(preview_.picCharacterBack.GetPixel(9, 9)); }, "5120"},
  };
  for (const auto& row : rows) {
    row.edit();
    EXPECT_EQ(Stored(row.column), QString::fromLatin1(row.stored)) << row.column;
    EXPECT_EQ(row.shown(), QString::fromLatin1(row.preview)) << row.column;
  }
  EXPECT_EQ(Stored("Name", 2), "HERO 2") << "showing a record writes nothing into another";
}

TEST_F(CharacterEditorTest, AttributesAreChosenOrTyped) {
  const ComboBox& list = Form().cboCharAttr[2];
  ASSERT_EQ(list.ListCount(), 19);
  EXPECT_EQ(list.List(0), "+9");
  EXPECT_EQ(list.List(9), "---");
  EXPECT_EQ(list.List(10), "1");
  const Picture before = preview_.picCharAttrDisp[2].Image();
  Choose(Form().cboCharAttr[2], 0);
  EXPECT_EQ(Stored("Gold"), "+9");
  EXPECT_FALSE(Difference(before, preview_.picCharAttrDisp[2].Image()).isEmpty());
}

TEST_F(CharacterEditorTest, TheStartAreaWaitsForTheNextUpdateOrMove) {
  Choose(Form().cboStartArea, 0);
  EXPECT_EQ(preview_.lblStart.Caption(), "Chapel");
  EXPECT_EQ(Stored("StartingAreaID"), "1");
  ClickOn(Form().cmdCharNav[2]);
  EXPECT_EQ(Stored("StartingAreaID"), "2") << "a move posts it";
  Choose(Form().cboStartArea, 0);
  Form().chkIncludeBoard.SetValue(1);
  EXPECT_EQ(Stored("StartingAreaID", 2), "2") << "an update posts it";
  EXPECT_EQ(preview_.lblStart.Caption(), "Chapel (Hills)");
  Choose(Form().cboStartArea, 1);
  EXPECT_EQ(preview_.lblStart.Caption(), "Village") << "without the board until the next drawing";
  modData::rsCharacter = Recordset();
  EXPECT_EQ(Stored("StartingAreaID", 2), "2") << "a release drops it";
}

TEST_F(CharacterEditorTest, TheHandleStopsAtItsLimits) {
  Label& handle = (Form(), preview_.lblPicSizeCharacter);
  const struct {
    int button;
    double by;  // pixels
    double handle, frame, text;
    const char* stored;
  } rows[] = {{1, 10, 132, 131, 138, "131"},
              {1, 300, 154, 153, 160, "153"},
              {1, -300, 15, 14, 21, "14"},
              {3, 50, 15, 14, 21, "14"},
              {2, 50, 15, 14, 21, "14"}};
  for (const auto& row : rows) {
    handle.MouseDown({row.button, 0, 30, 75});
    handle.MouseMove({row.button, 0, 30 + row.by * 15, 900});
    EXPECT_EQ(handle.Left(), row.handle);
    EXPECT_EQ(preview_.picFrameCharacter.Width(), row.frame);
    EXPECT_EQ(preview_.lblSpecial.Left(), row.text);
    EXPECT_EQ(Stored("PicWidth"), row.stored);
  }
  EXPECT_EQ(Form().lblPicDimChar.Caption(), "(14W*218H)");
}

TEST_F(CharacterEditorTest, PictureAndPieceAreDraggedAndNudged) {
  for (const char* column : {"Picture", "PlayingPiece"}) {
    database_.Store(QStringLiteral("tblCharacter"), 1, QString::fromLatin1(column),
                    TestDatabase::PlainPicture(40, 30, 0));
  }
  Form();
  const struct {
    Surface& image;
    const char *left, *top;
    double end, page_down;  // twips
  } rows[] = {{preview_.picImageCharacter, "PicLeft", "PicTop", (121 - 1 - 40) * 15, (218 - 3 - 30) * 15},
              {preview_.picPlayingPieceImage, "PPLeft", "PPTop", (132 - 1 - 40) * 15, (222 - 3 - 30) * 15}};
  for (const auto& row : rows) {
    row.image.MouseDown({1, 0, 20, 40});
    row.image.MouseMove({1, 0, 320, -110});
    EXPECT_EQ(Stored(row.left), "300");
    EXPECT_EQ(Stored(row.top), "-150");
    EXPECT_EQ(row.image.Left(), 300);
    row.image.MouseMove({2, 0, 900, 900});
    row.image.KeyDown({kKeyRight, kShift});
    row.image.KeyDown({kKeyRight, kCtrl});
    EXPECT_EQ(Stored(row.left), "300") << "other buttons and shift states move nothing";
    row.image.KeyDown({kKeyRight, 0});
    row.image.KeyDown({kKeyUp, 0});
    EXPECT_EQ(Stored(row.left), "315");
    EXPECT_EQ(Stored(row.top), "-165");
    row.image.KeyDown({kKeyEnd, 0});
    row.image.KeyDown({kKeyPageDown, 0});
    EXPECT_EQ(row.image.Left(), row.end);
    EXPECT_EQ(row.image.Top(), row.page_down);
    row.image.KeyDown({kKeyHome, 0});
    row.image.KeyDown({kKeyPageUp, 0});
    EXPECT_EQ(row.image.Left(), 0);
    EXPECT_EQ(Stored(row.top), "0");
  }
}

TEST_F(CharacterEditorTest, PicturesAreChosenAndRemoved) {
  const QString file =
      database_.WriteFile(QStringLiteral("hero.bmp"), TestDatabase::PlainPicture(40, 30, Rgb(5, 6, 7)));
  database_.Execute(
      QStringLiteral("UPDATE tblCharacter SET PicLeft = 45, PPLeft = 45, PPTop = 60 WHERE Nr = 1"));
  dialogs_.files = {file, file, file, file};
  ClickOn(Form().cmdGetCharPic);
  EXPECT_EQ(preview_.picImageCharacter.Left(), 0) << "until it is placed anew";
  EXPECT_EQ(Stored("PicLeft"), "45");
  EXPECT_EQ(Stored("LENGTH(Picture) > 3600"), "1");
  ClickOn(Form().cmdGetCharPic);
  EXPECT_EQ(dialogs_.file_dialogs[1].InitDir, database_.Folder() + u'/');
  ClickOn(Form().cmdGetPlayingPiecePic);
  EXPECT_EQ(dialogs_.file_dialogs[2].InitDir, QString()) << "a memory of its own";
  EXPECT_EQ(Stored("PPLeft || PPTop"), "0.00.0") << "a new piece starts at the corner";
  ClickOn(Form().cmdBackCharPic);
  EXPECT_EQ(preview_.picBackgroundChar.GetPixel(0, 0), Rgb(5, 6, 7));
  ClickOn(Form().cmdGetCharPic);
  EXPECT_EQ(Stored("LENGTH(Picture) > 3600"), "1") << "cancelled";
  ClickOn(Form().cmdDelCharPic);
  ClickOn(Form().cmdDelPlayingPiecePic);
  ClickOn(Form().cmdDelBackCharPic);
  EXPECT_EQ(Stored("Picture IS NULL AND PlayingPiece IS NULL AND Background IS NULL"), "1");
  EXPECT_EQ(Stored("PicLeft"), "45") << "stays for the next picture";
  EXPECT_TRUE(preview_.picImageCharacter.Picture().IsEmpty());
  EXPECT_TRUE(preview_.picBackgroundChar.Picture().IsEmpty());
}

TEST_F(CharacterEditorTest, BrokenPicturesAndMissingRowsEndNoHandler) {
  const QString text = database_.WriteFile(QStringLiteral("text.bmp"), "no picture at all");
  dialogs_.files = {text};
  ClickOn(Form().cmdGetPlayingPiecePic);
  EXPECT_TRUE(dialogs_.boxes.empty()) << "ends silently, and the file is stored";
  EXPECT_EQ(Stored("LENGTH(PlayingPiece)"), "18");
  ClickOn(Form().cmdCharNav[0]);
  EXPECT_EQ(dialogs_.boxes.size(), 1U);
  ClickOn(Form().cmdCharNav[2]);
  EXPECT_EQ(dialogs_.boxes.size(), 1U) << "the next character is whole";
  EXPECT_EQ(Form().txtCharName.Text(), "HERO 2");
  database_.Execute(
      QStringLiteral("UPDATE tblCharacter SET CharacterBackID = 99, AlignmentID = NULL WHERE Nr = 3"));
  ClickOn(Form().cmdCharNav[3]);
  EXPECT_EQ(dialogs_.boxes.size(), 2U);
  EXPECT_EQ(Position(), "3 (3)");
  for (Recordset* list : {&modData::rsArea, &modData::rsCharacterBack})
    list->SetFilter(QStringLiteral("LanguageID = 9"));
  ClickOn(Form().cmdCharacterAdd);
  EXPECT_EQ(Stored("StartingAreaID || CharacterBackID", 4), "00") << "no lists, no key";
}

TEST_F(CharacterEditorTest, FollowsTheSetAndComesBackAnew) {
  ClickOn(Form().cmdCharNav[3]);
  Form().UpdateDisplay();
  EXPECT_EQ(Position(), "3 (3)");
  QString closed;
  EditorClosed = [&](const QString& name) { closed = name; };
  frmCharacter2nd.Unload();
  EditorClosed = nullptr;
  EXPECT_EQ(closed, "frmCharacter2nd");
  EXPECT_EQ(Position(), "1 (3)");
  const int other = database_.AddSet(QStringLiteral("Other"), 2, 2);
  database_.AddCharacter(other, 1, QStringLiteral("ANDERER"));
  database_.SelectSet(other);
  Form().Initialise();
  EXPECT_EQ(Position(), "1 (1)");
  EXPECT_EQ(Form().cboStartArea.ListCount(), 1);
  EXPECT_EQ(Form().cboAlignment.List(0), "Gut");
}

}  // namespace
}  // namespace orv
