#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QMimeData>
#include <QTest>

#include "MasterScene.h"
#include "editors/Commands.h"
#include "editors/frmCard2nd.h"
#include "forms/ControlHelpers.h"
#include "platform/forms/TestWindow.h"

namespace orv {
namespace {

// Sends the key as the desktop does: fields are asked first whether it is theirs.
void Press(QWidget* widget, const QString& keys) {
  const QKeyCombination key = QKeySequence::fromString(keys)[0];
  QTest::keyClick(widget, key.key(), key.keyboardModifiers());
}

class ClaimingWindow : public TestWindow {
 public:
  bool Claims(const KeyEvent& key) const override { return key == claimed; }
  KeyEvent claimed;
};

TEST(CommandKeysTest, WhatAFormClaimsRunsFromEachKindOfFieldAndLeavesItAsItIs) {
  ClaimingWindow window;
  TextBox line(window), lines(window, TextBox::MultiLine), number(window);
  ComboBox list(window), free(window, ComboBox::DropDownCombo);
  UpDown arrows(window, number, 1, 99);
  CheckBox check(window, "&Check");
  OptionButton option(window, "&Option");
  CommandButton button(window, "&Button");
  ListView rows(window);
  Surface card;
  SurfaceView view(window, card);
  rows.AddColumn("Names", 900);
  for (const char* name : {"Avocet", "Curlew", "Dunlin", "Noddy"}) {
    ListItem row;
    row.Text = name;
    rows.Add(row);
    list.AddItem(name);
    free.AddItem(name);
  }
  window.Open();
  const auto state = [&] {
    return QStringList{line.Text(), lines.Text(), number.Text(), list.Text(), free.Text()}.join('|') +
           QString("%1%2%3").arg(check.Value()).arg(option.Value()).arg(rows.SelectedIndex());
  };
  QGuiApplication::clipboard()->setImage(QImage(9, 9, QImage::Format_RGB32));
  for (const QString& command : ProgramCommands()) {
    window.claimed = KeyOf(command);
    EXPECT_NE(window.claimed.KeyCode, 0) << command.toStdString();
    for (Control* control : std::initializer_list<Control*>{&line, &lines, &number, &list, &free, &check,
                                                            &option, &button, &rows, &view}) {
      SCOPED_TRACE(command.toStdString() + " in " + control->Handle()->metaObject()->className());
      for (TextBox* box : {&line, &lines}) box->SetText("some words");
      number.SetText("7");
      free.SetText("words");
      list.SetListIndex(1);
      for (TextBox* box : {&line, &lines}) box->SetSelLength(4);
      control->SetFocus();
      const QString before = state();
      window.keys.clear();
      Press(control->Handle(), command);
      ASSERT_EQ(window.keys.size(), 1u);
      EXPECT_EQ(window.keys[0], window.claimed);
      EXPECT_EQ(state(), before);
    }
  }
  // What nobody claims is the field's.
  window.claimed = {};
  line.SetText("some words");
  line.SetSelStart(4);
  Press(line.Handle(), "Ctrl+A");
  EXPECT_EQ(line.SelLength(), 10);
  // A list that is open closes for a command.
  window.claimed = KeyOf("Ctrl+D");
  auto* const box = static_cast<QComboBox*>(list.Handle());
  box->showPopup();
  window.keys.clear();
  Press(box->view(), "Ctrl+D");
  EXPECT_EQ(window.keys.size(), 1u);
  EXPECT_EQ(list.ListIndex(), 1);
  QGuiApplication::clipboard()->clear();
}

class EditorKeysTest : public testing::Test, protected MasterScene {
 protected:
  EditorKeysTest() {
    const int set = database_.AddSet("Set", 2);
    for (int nr = 1; nr <= 3; ++nr) database_.AddCard(set, nr, QString("Card %1").arg(nr));
    Start();
    frmMaster->tbar.ButtonClick("card2nd");
  }
  QString Cards() {
    return Scalar("SELECT group_concat(Title, '|') FROM (SELECT Title FROM tblCard ORDER BY Nr)");
  }
  QString Pictures() { return Scalar("SELECT count(*) FROM tblCard WHERE Picture IS NOT NULL"); }
};

TEST_F(EditorKeysTest, DuplicatesFromAFieldAndFromThePanel) {
  for (Control* control : std::initializer_list<Control*>{&frmCard2nd->txtTitle, &frmMaster->cboSet}) {
    control->SetFocus();
    Press(control->Handle(), "Ctrl+D");
  }
  EXPECT_EQ(Cards(), "Card 1|Card 1|Card 1|Card 2|Card 3");
}

TEST_F(EditorKeysTest, APictureIsPastedFromAnywhereAndEmptiesNoField) {
  CardEditor& form = *frmCard2nd;
  QImage image(30, 20, QImage::Format_RGB32);
  image.fill(Qt::red);
  for (Control* control : std::initializer_list<Control*>{
           &form.txtTitle, &form.txtInfo, &form.txtBold, &form.txtCopy, &form.cboNumber, &form.cboType,
           &form.chkFrame, &form.cmdGetPic, &form.viewCard, &form, &frmMaster->cboSet}) {
    for (const char* keys : {"Ctrl+V", "Shift+Ins"}) {
      SCOPED_TRACE(control->Handle()->accessibleName().toStdString() + keys);
      form.txtTitle.SetText("Card 1");
      form.cmdDelPic.Click();
      ASSERT_EQ(Pictures(), "0");
      QGuiApplication::clipboard()->setImage(image);
      SelectText(form.txtTitle);
      control->SetFocus();
      Press(control->Handle(), keys);
      EXPECT_EQ(Pictures(), "1");
      EXPECT_EQ(Cards(), "Card 1|Card 2|Card 3");
      EXPECT_EQ(Scalar("SELECT count(*) FROM tblOriginal"), "1") << "not twice";
    }
  }
  // Neither picture nor words.
  QGuiApplication::clipboard()->clear();
  form.txtTitle.SetFocus();
  SelectText(form.txtTitle);
  Press(form.txtTitle.Handle(), "Ctrl+V");
  EXPECT_EQ(form.txtTitle.Text(), "Card 1");
  // Words stay the field's, whatever else there is.
  auto* const data = new QMimeData;
  data->setText("Words");
  data->setImageData(image);
  QGuiApplication::clipboard()->setMimeData(data);
  Press(form.txtTitle.Handle(), "Ctrl+V");
  EXPECT_EQ(form.txtTitle.Text(), "Words");
  QGuiApplication::clipboard()->clear();
}

TEST_F(EditorKeysTest, AClickOnAnEmptyFrameTakesTheFocus) {
  CardEditor& form = *frmCard2nd;
  form.txtTitle.SetFocus();
  Surface& frame = form.Preview().picFrame;
  const double x = frame.Left() + 20, y = frame.Top() + 20;
  PressAt(form.viewCard, x, y);
  ReleaseAt(form.viewCard, x, y);
  EXPECT_TRUE(form.viewCard.HasFocus());
  EXPECT_TRUE(form.Preview().picImage.HasFocus());
}

TEST_F(EditorKeysTest, AfterDeletingTheFocusIsOnTheTitleShownAndEnterDeletesNoMore) {
  CardEditor& form = *frmCard2nd;
  form.cmdCardDelete.SetFocus();
  Press(form.cmdCardDelete.Handle(), "Return");
  EXPECT_EQ(Cards(), "Card 2|Card 3");
  EXPECT_TRUE(form.txtTitle.HasFocus());
  EXPECT_EQ(form.txtTitle.SelLength(), 6);
  for (int i = 0; i < 2; ++i) ClickOn(form.cmdCardDelete);
  EXPECT_TRUE(form.cmdCardAdd.HasFocus());
}

TEST_F(EditorKeysTest, AClickOnWhatShowsATextLeadsToItsField) {
  CardEditor& form = *frmCard2nd;
  CardPreview& preview = form.Preview();
  form.txtInfo.SetText("Roll a die.");
  const struct {
    Label& label;
    Control& field;
  } rows[] = {{preview.lblTitle, form.txtTitle},
              {*preview.lblType[0], form.cboType},
              {preview.lblInformation, form.txtInfo}};
  for (const auto& row : rows) {
    form.cmdGetPic.SetFocus();
    const double x = row.label.Left() + 5, y = row.label.Top() + 5;
    PressAt(form.viewCard, x, y);
    ReleaseAt(form.viewCard, x, y);
    EXPECT_TRUE(row.field.HasFocus()) << row.field.Handle()->accessibleName().toStdString();
  }
  EXPECT_EQ(form.txtInfo.SelLength(), 11);
}

// The menu has the release of the button that opened it.
TEST_F(EditorKeysTest, AfterAMenuTheNextDragIsOfWhatIsPressed) {
  CardEditor& form = *frmCard2nd;
  const double y = form.Preview().picFrame.Top() + 20;
  PressAt(form.viewCard, 60, y, 2);
  const Label& bar = form.Preview().lblPicSize;
  const double x = bar.Left() + 20, before = bar.Top();
  PressAt(form.viewCard, x, before + 2);
  DragTo(form.viewCard, x, before - 8);
  EXPECT_EQ(bar.Top(), before - 10);
}

TEST_F(EditorKeysTest, TheMenuDeletesEachKindAfterAQuestion) {
  const int set = database_.AddSet("Zoo", 2);
  database_.AddCard(set, 1, "Card");
  for (int nr = 1; nr <= 3; ++nr) database_.AddCharacter(set, nr, QString("Elf %1").arg(nr));
  database_.AddLargeCard(set, 1, "Large");
  database_.SelectSet(set);
  frmCard2nd->InitCard2nd();
  const struct {
    const char* button;
    const char* table;
    const char* noun;
    const char* left;
  } rows[] = {{"card2nd", "tblCard", "card", ""},
              {"character2nd", "tblCharacter", "character", "1 2"},
              {"large2nd", "tblLargeCard", "large card", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.noun);
    if (row.button != rows[0].button) frmMaster->tbar.ButtonClick(row.button);
    const auto numbers = [&] {
      return Scalar(QString("SELECT coalesce(group_concat(Nr, ' '), '') FROM %1 WHERE SetID = %2")
                        .arg(row.table)
                        .arg(set)
                        .toUtf8());
    };
    const QString before = numbers();
    frmMaster->tbar.ButtonClick("delete");
    EXPECT_EQ(numbers(), before) << "the answer was No";
    EXPECT_TRUE(dialogs_.LastPrompt().startsWith(QString("Delete this %1?").arg(row.noun)));
    dialogs_.answers = {Answer::Yes};
    frmMaster->tbar.ButtonClick("delete");
    EXPECT_EQ(numbers(), row.left);
  }
  // Nothing is left to be asked about.
  frmMaster->tbar.ButtonClick("delete");
  EXPECT_EQ(dialogs_.boxes.back().icon, Icon::Exclamation);
}

TEST_F(EditorKeysTest, AMillionLettersAreShownEverywhere) {
  CardEditor& form = *frmCard2nd;
  constexpr int kLetters = 2'000'000;
  for (const char* column : {"Information", "Title", "BoldText"}) {
    database_.Execute(
        QString("UPDATE tblCard SET %1 = replace(hex(zeroblob(%2)), '00', 'rolling ') WHERE Nr = 2")
            .arg(column)
            .arg(kLetters / 8));
  }
  frmCard2nd->InitCard2nd();
  ClickOn(form.cmdCardNav[2]);
  EXPECT_EQ(form.txtInfo.Text().size(), kLetters);
  dialogs_.modals = {[](Form& list) { list.Handle()->grab(); }};
  form.cmdSort.Click();
  EXPECT_TRUE(dialogs_.modals.empty());
  form.cmdStat.Click();
  frmMaster->tbar.ButtonClick("delete");
  EXPECT_LT(dialogs_.LastPrompt().size(), 300);
}

}  // namespace
}  // namespace orv
