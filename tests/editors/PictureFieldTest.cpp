// The picture fields of all editors: choosing, removing and, for those in a frame, placing.
#include "EditorScene.h"
#include "editors/CardEditor.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "support/Errors.h"
#include "support/Widgets.h"

namespace orv {
namespace {

struct PictureField {
  const char* column;
  const char* title;  // of the dialog
  CommandButton &select, &remove;
  Surface& surface;
  bool remembers_folder;  // the button starts where it was left
  // In a frame: what the columns of its offset begin with, and the offset that a new picture and its removal
  // leave where it was (45, 60) before.
  Surface* frame = nullptr;
  const char* offset = "";
  const char* after_choice = "";
  const char* after_removal = "";
};

using Fields = std::vector<PictureField>;

Fields FieldsOf(RecordEditor& editor) {
  if (auto* form = dynamic_cast<CardEditor*>(&editor)) {
    CardPreview& shown = form->Preview();
    return {PictureField("Picture", "Choose picture", form->cmdGetPic, form->cmdDelPic, shown.picImage, true,
                         &shown.picFrame, "Pic", "45|60", "0|0"),
            PictureField("Background", "Choose picture", form->cmdBackPic, form->cmdDelBackPic, shown.picCard,
                         false)};
  }
  if (auto* form = dynamic_cast<Large2ndForm*>(&editor)) {
    LargeCardPreview& shown = form->Preview();
    return {PictureField("Picture", "Choose picture", form->cmdGetPicLarge, form->cmdDelPicLarge,
                         shown.picImageLarge, true, &shown.picFrameLarge, "Pic", "45|60", "0|0"),
            PictureField("BGPicture", "Choose background picture", form->cmdBackPicLarge,
                         form->cmdDelBackPicLarge, shown.picCardLarge, false),
            PictureField("LargeCardBack", "Choose card back", form->cmdCardbackLarge,
                         form->cmdDelCardbackLarge, shown.picBackLarge, true)};
  }
  auto& form = dynamic_cast<Character2ndForm&>(editor);
  CharacterPreview& shown = form.Preview();
  return {PictureField("Picture", "Choose characterpicture", form.cmdGetCharPic, form.cmdDelCharPic,
                       shown.picImageCharacter, true, &shown.picFrameCharacter, "Pic", "45|60", "45|60"),
          PictureField("PlayingPiece", "Choose playing piece picture", form.cmdGetPlayingPiecePic,
                       form.cmdDelPlayingPiecePic, shown.picPlayingPieceImage, true,
                       &shown.picPlayingPieceFrame, "PP", "0|0", "0|0"),
          PictureField("Background", "Choose background picture", form.cmdBackCharPic, form.cmdDelBackCharPic,
                       shown.picBackgroundChar, true)};
}

class PictureFieldTest : public testing::TestWithParam<const EditorKind*>, protected EditorScene {
 protected:
  PictureFieldTest() : EditorScene(*GetParam()) { Open(1); }

  // In twips.
  QString Offset(const PictureField& field) {
    return Stored(QStringLiteral("CAST(%1Left AS INT) || '|' || CAST(%1Top AS INT)").arg(field.offset));
  }
  static QString Place(const PictureField& field) {
    return QStringLiteral("%1|%2").arg(field.surface.Left()).arg(field.surface.Top());
  }
};

TEST_P(PictureFieldTest, IsChosenAndRemoved) {
  const QByteArray bytes = TestDatabase::PlainPicture(40, 30, Rgb(5, 6, 7));
  const QString file = database_.WriteFile("p.bmp", bytes);
  const QString broken = database_.WriteFile("no.bmp", "no picture");
  for (const PictureField& field : FieldsOf(Editor())) {
    SCOPED_TRACE(field.column);
    const auto length = [&] { return Stored(QStringLiteral("LENGTH(%1)").arg(field.column)); };
    if (field.frame != nullptr) {
      database_.Execute(
          QStringLiteral("UPDATE %1 SET %2Left = 45, %2Top = 60").arg(kind_.table, field.offset));
    }
    dialogs_.file_dialogs.clear();
    dialogs_.files = {file, broken};
    ClickOn(field.select);
    EXPECT_EQ(length(), QString::number(bytes.size() + 1 + bytes.size() / 32768));
    EXPECT_EQ(field.surface.GetPixel(0, 0), Rgb(5, 6, 7));
    if (field.frame != nullptr) {
      EXPECT_EQ(Place(field), "0|0") << "until it is placed anew";
      EXPECT_EQ(Offset(field), field.after_choice);
      Editor().UpdateDisplay();
      EXPECT_EQ(Place(field), field.after_choice);
    }
    ClickOn(field.select);
    EXPECT_EQ(length(), "11") << "stored, though it can't be shown";
    EXPECT_EQ(field.surface.GetPixel(0, 0), Rgb(5, 6, 7));
    ClickOn(field.select);
    EXPECT_EQ(length(), "11") << "cancelled";
    EXPECT_EQ(dialogs_.file_dialogs[0].DialogTitle, field.title);
    EXPECT_EQ(dialogs_.file_dialogs[0].InitDir, QString()) << "each button has a memory of its own";
    EXPECT_EQ(dialogs_.file_dialogs[1].InitDir,
              field.remembers_folder ? database_.Folder() + u'/' : QString());
    ClickOn(field.remove);
    EXPECT_EQ(length(), "~");
    EXPECT_TRUE(field.surface.Picture().IsEmpty());
    EXPECT_TRUE(field.frame == nullptr || Offset(field) == field.after_removal);
  }
  EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_P(PictureFieldTest, AFailureToStoreIsTold) {
  const QString table = QLatin1String(kind_.table);
  for (const char* what : {"INSERT ON %1_long", "UPDATE ON %1_long", "UPDATE ON %1_rows"}) {
    database_.Execute(
        QStringLiteral("CREATE TRIGGER \"refuse %2\" BEFORE %2 BEGIN SELECT RAISE(ABORT, 'refused'); END")
            .arg(QString(what).arg(table)));
  }
  const QString file = database_.WriteFile("p.bmp", TestDatabase::PlainPicture(40, 30, 0));
  for (const PictureField& field : FieldsOf(Editor())) {
    dialogs_.files = {file};
    EXPECT_EQ(ErrorOf([&] { field.select.Click(); }), kErrDatabase) << field.column;
    EXPECT_EQ(Stored(QString::fromLatin1(field.column)), "~");
  }
  CommandButton* colour = nullptr;
  if (auto* form = dynamic_cast<CardEditor*>(&Editor())) colour = &form->cmdColour;
  if (auto* form = dynamic_cast<Large2ndForm*>(&Editor())) colour = &form->cmdColourLarge;
  dialogs_.colours = {kBlack};
  if (colour == nullptr) return;
  EXPECT_EQ(ErrorOf([&] { colour->Click(); }), kErrDatabase);
}

TEST_P(PictureFieldTest, TheMouseDragsAndKeysNudge) {
  for (const PictureField& field : FieldsOf(Editor())) {
    if (field.frame == nullptr) continue;
    SCOPED_TRACE(field.column);
    database_.Store(kind_.table, 1, field.column, TestDatabase::PlainPicture(40, 30, 0));
    Editor().UpdateDisplay();
    Surface& image = field.surface;
    image.MouseDown({1, 0, 20, 40});
    image.MouseMove({1, 0, 320, -110});
    image.MouseMove({2, 0, 900, 900});
    image.KeyDown({kKeyRight, kShift});
    image.KeyDown({kKeyRight, kCtrl});
    EXPECT_EQ(Offset(field), "300|-150") << "other buttons and shift states move nothing";
    EXPECT_EQ(Place(field), "300|-150");
    const int end = (static_cast<int>(field.frame->Width()) - 1 - 40) * 15;
    const int page_down = (static_cast<int>(field.frame->Height()) - 3 - 30) * 15;
    const struct {
      int key, left, top;  // twips
    } keys[] = {{kKeyRight, 315, -150},   {kKeyUp, 315, -165},  {kKeyLeft, 300, -165},
                {kKeyDown, 300, -150},    {kKeyEnd, end, -150}, {kKeyPageDown, end, page_down},
                {kKeyHome, 0, page_down}, {kKeyPageUp, 0, 0}};
    for (const auto& row : keys) {
      image.KeyDown({row.key, 0});
      EXPECT_EQ(Offset(field), QStringLiteral("%1|%2").arg(row.left).arg(row.top)) << row.key;
      EXPECT_EQ(Place(field), Offset(field)) << row.key;
    }
    // Far from the corner of a photo.
    image.MouseDown({1, 0, 59000, 44000});
    image.MouseMove({1, 0, 59015, 43985});
    EXPECT_EQ(Offset(field), "15|-15");
  }
}

INSTANTIATE_TEST_SUITE_P(Of, PictureFieldTest,
                         testing::Values(&kCard2nd, &kCard3rd, &kCharacter, &kLargeCard), FormName);

}  // namespace
}  // namespace orv
