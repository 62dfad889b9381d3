// What an editor tells of its record on paper.
#include <QAbstractScrollArea>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <random>

#include "editors/frmCard2nd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Playing.h"
#include "print/PrintSheets.h"
#include "print/PrintedCards.h"
#include "shell/MasterScene.h"
#include "shell/frmPrint.h"
#include "shell/inner/CloseLook.h"

namespace orv {
namespace {

class PaperTest : public MasterScene, public testing::Test {
 protected:
  void SetUp() override {
    const int set = database_.AddSet("Set", 2);
    for (int nr = 1; nr <= 2; ++nr) database_.AddCard(set, nr, QString("Card %1").arg(nr));
    database_.AddCharacter(set, 1, "Character");
    database_.AddLargeCard(set, 1, "Large");
    Start();
  }
  // The lines of the mark, when they are settled.
  static QStringList Told(RecordEditor& editor) {
    QTest::qWait(45);
    return editor.ntcPaper.Visible() ? editor.ntcPaper.Lines() : QStringList();
  }
  // The same lines as print has them, of the record on show.
  static QStringList OnPrint(const RecordEditor& editor) {
    QStringList lines;
    for (const BadCard& bad : CheckSheets({}, [](int, int) { return true; })) {
      if (bad.column == nullptr || bad.kind != &editor.Output() || bad.id != editor.ShownKey()) continue;
      const QString line = bad.line.mid(bad.line.lastIndexOf(": ") + 2);
      lines += line.left(1).toUpper() + line.mid(1);
    }
    return lines;
  }
  static void Follow(const RecordEditor& editor, int line) {
    QLabel* const links = editor.ntcPaper.Handle()->findChildren<QLabel*>().last();
    emit links->linkActivated(QString::number(line));
  }
};

TEST_F(PaperTest, TheMarkAgreesWithPrintWhateverIsTyped) {
  frmMaster->tbar.ButtonClick("large2nd");
  frmMaster->tbar.ButtonClick("character2nd");
  frmMaster->tbar.ButtonClick("card2nd");
  const struct {
    RecordEditor& editor;
    TextBox& field;
    int most;  // words
  } fields[] = {{*frmCard2nd, frmCard2nd->txtTitle, 9},
                {*frmCard2nd, frmCard2nd->txtBold, 9},
                {*frmCard2nd, frmCard2nd->txtInfo, 70},
                {*frmLarge2nd, frmLarge2nd->txtTitleLarge, 20},
                {*frmLarge2nd, frmLarge2nd->txtInfoLarge, 150},
                {*frmCharacter2nd, frmCharacter2nd->txtCharName, 9},
                {*frmCharacter2nd, frmCharacter2nd->txtSpecialAbilities, 150}};
  const QStringList words = {"a",      "lantern", "of",  "Überfahrt", "WWW",
                             "(roll)", "two\r\n", "אבג", "and",       "1"};
  std::mt19937 random(7);
  int told = 0;
  for (int i = 0; i < 200; ++i) {
    const auto& field = fields[i % std::size(fields)];
    QStringList text;
    for (int n = static_cast<int>(random() % field.most); n >= 0; --n) text += words[random() % words.size()];
    field.editor.Show();
    field.field.SetText(text.join(' '));
    const QStringList lines = Told(field.editor);
    ASSERT_EQ(lines, OnPrint(field.editor)) << i << qPrintable(text.join(' '));
    told += lines.isEmpty() ? 0 : 1;
  }
  EXPECT_GT(told, 50);
  EXPECT_LT(told, 150) << "and many fit";
}

TEST_F(PaperTest, TheMarkFollowsAndLeadsToTheField) {
  frmMaster->tbar.ButtonClick("card2nd");
  Card2ndForm& editor = *frmCard2nd;
  const Picture preview = CardPreviewOf(2).picBack.Render();
  editor.txtTitle.SetText(QString("long ").repeated(20));
  EXPECT_TRUE(Told(editor).join(' ').startsWith("The title runs over its box by "));
  editor.cmdCardNav_Click(2);
  EXPECT_EQ(Told(editor), QStringList()) << "another card";
  editor.txtInfo.SetText(QString("many words ").repeated(60));
  EXPECT_TRUE(Told(editor).value(0).startsWith("The information runs over its box by "));
  Follow(editor, 0);
  EXPECT_TRUE(editor.txtInfo.HasFocus());
  database_.Execute("UPDATE tblFont SET Size = 2");
  EXPECT_EQ(Told(editor), QStringList()) << "the font of the set";
  EXPECT_EQ(modData::rsCard["Nr"].Int32(), 2);
  EXPECT_EQ(CardPreviewOf(2).picBack.Render().Image(), preview.Image());
  editor.ShowRecord(modData::rsCard["CardID"].Int32());
  database_.Execute("UPDATE tblFont SET Size = 9");
  EXPECT_NE(Told(editor), QStringList());
  for (const char* first : {"The title", ""}) {
    dialogs_.answers.push_back(Answer::Yes);
    editor.DeleteAfterQuestion();
    EXPECT_EQ(modData::rsCard.IsEmpty(), *first == 0);
    EXPECT_EQ(Told(editor).value(0).left(9), first);
  }
}

TEST_F(PaperTest, AFindingOfPrintShowsItsRecord) {
  database_.Execute("UPDATE tblLargeCard_rows SET Information = '" + QString("many words ").repeated(300) +
                    "'");
  frmMaster->tbar.ButtonClick("card2nd");
  dialogs_.modals.push_back([](Form&) {
    PrintForm& form = *frmPrint;
    auto& kinds = form.FieldOf("kinds").kinds;
    for (std::size_t i = 0; i < 3; ++i) ClickOn(*kinds[i]);
    EXPECT_EQ(form.FieldOf("kinds").Text(), "large");
    ClickOn(form.cmdCheck);
    const QString findings = form.txtFindings.Text();
    TypeInto(form.txtFindings, "x");
    EXPECT_EQ(form.txtFindings.Text(), findings) << "can only be read";
    const qsizetype line = findings.indexOf("\r\nLC2 1 Large: the information runs over its box by 79 lines");
    ASSERT_GT(line, 0) << qPrintable(findings);
    form.txtFindings.SetSelStart(static_cast<int>(line) + 9);
    PressKey(form.txtFindings, Qt::Key_Return);
    EXPECT_FALSE(form.IsShown());
  });
  frmMaster->tbar.ButtonClick("print");
  EXPECT_TRUE(frmLarge2nd->IsShown() && frmLarge2nd->IsActive());
  EXPECT_TRUE(frmLarge2nd->txtInfoLarge.HasFocus());
  dialogs_.modals.push_back([this](Form&) {
    auto& kinds = frmPrint->FieldOf("kinds").kinds;
    ClickOn(*kinds[3]);
    ClickOn(frmPrint->cmdCheck);
    EXPECT_EQ(dialogs_.LastPrompt(), "Tick at least one of the kinds.");
  });
  frmMaster->tbar.ButtonClick("print");
}

TEST_F(PaperTest, TheCloseLookIsWhatPrintDrawsAndFollows) {
  constexpr int kTimes = 3;
  constexpr int kGap = 12;
  frmMaster->tbar.ButtonClick("card2nd");
  Card2ndForm& editor = *frmCard2nd;
  editor.txtInfo.SetFocus();
  PressKey(editor.txtInfo, Qt::Key_F8);
  ASSERT_TRUE(frmCloseLook.IsVisible());
  EXPECT_TRUE(editor.txtInfo.HasFocus());
  auto& area = *static_cast<QAbstractScrollArea*>(frmCloseLook->view.Handle());
  const auto look = [&] {
    QTest::qWait(45);
    return area.viewport()->grab().toImage();
  };
  frmCloseLook->Handle()->resize(1100, 900);
  const QImage fitted = look();
  frmCloseLook->view.SetZoom(kTimes);
  QImage seen = look();
  EXPECT_NE(seen, fitted);
  const auto is_paper = [&] {
    const PrintedCard card = PrintedCardsOf(editor.Output(), editor.ShownKey()).front();
    const QSize size = card.front.size() * kTimes;
    const QImage paper =
        Enlarged(card.sheet, kTimes).Image().copy(QRect(card.front.topLeft() * kTimes, size));
    return seen.copy(QRect({kGap, kGap}, size)).convertToFormat(paper.format()) == paper;
  };
  EXPECT_TRUE(is_paper());
  for (const auto& change : std::initializer_list<std::function<void()>>{
           [&] { TypeInto(editor.txtInfo, "x"); }, [&] { editor.cmdCardNav_Click(2); },
           [&] { database_.Execute("UPDATE tblFont SET Size = 14"); },
           [&] { ClickOn(editor.chkShowPicture); }}) {
    const QImage before = seen;
    change();
    seen = look();
    EXPECT_NE(seen, before);
    EXPECT_TRUE(is_paper());
  }
  // What can't be drawn is told in the window, without a box at each key.
  database_.Store("tblCard", editor.ShownKey(), "Background", "no picture");
  database_.SelectSet(modData::CurrentSetID);
  dialogs_.boxes.clear();
  editor.txtTitle.SetText("Anew");
  look();
  EXPECT_TRUE(frmCloseLook->lblWords.Caption().startsWith("Print leaves this out: C2 2 Anew: "))
      << qPrintable(frmCloseLook->lblWords.Caption());
  EXPECT_TRUE(dialogs_.boxes.empty());
  frmMaster->tbar.ButtonClick("card2nd");
  look();
  EXPECT_EQ(frmCloseLook->lblWords.Caption(), "Open an editor on a record to look at it closely.");
  frmMaster->tbar.ButtonClick("character2nd");
  look();
  EXPECT_FALSE(frmCloseLook->lblWords.Visible());
  PressKey(frmCloseLook->view, Qt::Key_Escape);
  EXPECT_FALSE(frmCloseLook.IsVisible());
}

}  // namespace
}  // namespace orv
