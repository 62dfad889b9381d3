#include "shell/Manual.h"
#include "shell/inner/CloseLook.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWindow>

#include "MasterScene.h"
#include "base/Files.h"
#include "editors/Commands.h"
#include "editors/frmCard2nd.h"
#include "forms/HelpKey.h"
#include "shell/frmCreate.h"

namespace orv {
namespace {

const QString kSource = QStringLiteral(ORV_SOURCE_DIR);
const QString kPages = kSource + QStringLiteral("/docs/manual");

QStringList Captured(const QString& text, const char* pattern) {
  const QRegularExpression expression(QString::fromLatin1(pattern), QRegularExpression::MultilineOption);
  QStringList found;
  for (auto each = expression.globalMatch(text); each.hasNext();) found += each.next().captured(1);
  return found;
}

QString TextOfFile(const QString& path) {
  return QString::fromUtf8(ReadWhole(path));
}

// As a link names it.
QString AnchorOf(QString heading) {
  heading = heading.toLower().remove(QRegularExpression(QStringLiteral("[^\\w -]")));
  return heading.replace(u' ', u'-');
}

// A target of a link on a page: a page or picture beside it, with or without a heading.
void ExpectTarget(const QString& page, const QString& link) {
  const QString name = link.section(u'#', 0, 0), heading = link.section(u'#', 1);
  const QString file = name.isEmpty() ? page : QDir(kPages).filePath(name);
  ASSERT_TRUE(QFile::exists(file)) << qPrintable(page + ": " + link);
  if (heading.isEmpty()) return;
  QStringList anchors;
  for (const QString& each : Captured(TextOfFile(file), "^#+ (.*)$")) anchors += AnchorOf(each);
  EXPECT_TRUE(anchors.contains(heading)) << qPrintable(page + ": " + link);
}

TEST(ManualPagesTest, EachLinkAndPictureIsThereAndSmall) {
  const QStringList contents = Captured(TextOfFile(kPages + "/index.md"), "^- \\[[^]]+\\]\\(([^)]+)\\)");
  QStringList pictures;
  qsizetype size = 0;
  for (const QString& name : QDir(kPages).entryList({"*.md"}, QDir::Files)) {
    const QString page = QDir(kPages).filePath(name), text = TextOfFile(page);
    EXPECT_TRUE(name == u"index.md" || contents.contains(name)) << qPrintable(name);
    EXPECT_TRUE(text.startsWith(u"# ")) << qPrintable(name);
    for (const QString& link : Captured(text, "\\]\\(([^)]+)\\)")) ExpectTarget(page, link);
    pictures += Captured(text, "!\\[[^]]+\\]\\(([^)]+)\\)");
    size += text.size();
  }
  pictures.removeDuplicates();
  for (const QString& name : pictures) {
    const qsizetype bytes = QFileInfo(QDir(kPages).filePath(name)).size();
    EXPECT_LT(bytes, 150'000) << qPrintable(name);
    size += bytes;
  }
  EXPECT_LT(size, 2'500'000);
}

TEST(ManualPagesTest, EachFormOfTheProgramHasAPage) {
  const QString table = TextOfFile(kSource + "/src/shell/Manual.cpp");
  QStringList forms;
  QDirIterator headers(kSource + "/src", {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
  while (headers.hasNext()) forms += Captured(TextOfFile(headers.next()), "^inline FormInstance<(\\w+)>");
  EXPECT_GE(forms.size(), 15);
  for (const QString& form : forms) {
    const QStringList page = Captured(table, qPrintable(QStringLiteral("Is<%1>,\\s+\"([^\"]+)\"").arg(form)));
    ASSERT_EQ(page.size(), 1) << qPrintable(form);
    ExpectTarget({}, page.front());
  }
}

// What every program takes, and so needs no command of ours.
const QStringList kUsualKeys = {"Alt", "Tab", "Shift+Tab", "Esc", "Enter"};

TEST(ManualPagesTest, TheKeysAreThoseThatTheProgramTakes) {
  QStringList told;
  for (const QString& row : Captured(TextOfFile(kPages + "/keys.md"), "^\\| (\\*\\*[^|]*) \\|"))
    told += Captured(row, "\\*\\*([^*]+)\\*\\*");
  const QStringList taken =
      ProgramCommands() + ManualForm::Commands() + CloseLookForm::Commands() + QStringList{kHelpKeys};
  for (const QString& key : taken) EXPECT_TRUE(told.contains(key)) << "isn't told: " << qPrintable(key);
  for (const QString& key : told)
    EXPECT_TRUE(taken.contains(key) || kUsualKeys.contains(key)) << "isn't taken: " << qPrintable(key);
}

class ManualTest : public testing::Test, protected MasterScene {
 protected:
  void SetUp() override {
    const int set = database_.AddSet("Set", 2);
    database_.AddCard(set, 1, "Card");
    Start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frmMaster->Handle()));
  }
  void TearDown() override { frmManual.Unload(); }

  // As the desktop brings a click, which a window behind a modal one never sees.
  static QString PageAfterClickOn(int row) {
    auto& window = *frmManual->Handle();
    auto& list = *static_cast<QTreeWidget*>(frmManual->lvContents.Handle());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QPoint place = list.visualItemRect(list.topLevelItem(row)).center();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, list.viewport()->mapTo(&window, place));
    QApplication::processEvents();
    return frmManual->pages.Page().section(u'/', 1);
  }
};

TEST_F(ManualTest, F1OpensItFromEachKindOfField) {
  frmMaster->tbar.ButtonClick("card2nd");
  Card2ndForm& editor = *frmCard2nd;
  Control* const fields[] = {&editor.txtTitle,  &editor.txtInfo,  &editor.cboType,
                             &editor.cboNumber, &editor.chkFrame, &editor.cmdGetPic,
                             &editor.viewCard,  &editor.txtCopy,  &editor.cmdSort};
  for (const Control* field : fields) {
    PressKey(*field, Qt::Key_F1);
    ASSERT_TRUE(frmManual.IsVisible());
    EXPECT_EQ(frmManual->pages.Page(), "manual/cards.md");
    PressKey(frmManual->pages, Qt::Key_Escape);
    EXPECT_FALSE(frmManual.IsLoaded());
  }
  PressKey(frmMaster->cboSet, Qt::Key_F1);
  EXPECT_EQ(frmManual->pages.Page(), "manual/first_evening.md");
  frmMaster->tbar.ButtonClick("manual");
  EXPECT_EQ(frmManual->pages.Page(), "manual/index.md");
}

TEST_F(ManualTest, ItIsUsedWhileADialogOrABoxIsModal) {
  for (const bool open_before : {false, true}) {
    if (open_before) ShowManual(nullptr);
    dialogs_.modals = {[](Form& form) {
      PressKey(frmCreate->txtSaveTo, Qt::Key_F1);
      EXPECT_EQ(frmManual->pages.Page(), "manual/picture_files.md");
      EXPECT_EQ(PageAfterClickOn(0), "index.md");
      QMessageBox box(QMessageBox::Information, "Box", "Words", QMessageBox::Ok, form.Handle());
      box.setModal(true);
      box.show();
      QTest::keyClick(&box, Qt::Key_F1);
      EXPECT_EQ(frmManual->pages.Page(), "manual/picture_files.md") << "of the form under the box";
      EXPECT_EQ(PageAfterClickOn(0), "index.md");
      box.close();
      EXPECT_EQ(PageAfterClickOn(1), "first_evening.md");
    }};
    frmMaster->tbar.ButtonClick("createall");
    EXPECT_TRUE(frmManual.IsVisible());
    EXPECT_EQ(PageAfterClickOn(0), "index.md");
    frmManual.Unload();
  }
}

TEST_F(ManualTest, TheSearchGoesThroughAllPagesAndRound) {
  ShowManual(nullptr);
  ManualForm& manual = *frmManual;
  Retype(manual.txtFind, "duplex");
  PressKey(manual.txtFind, Qt::Key_Return);
  EXPECT_EQ(manual.pages.Page(), "manual/print_at_home.md");
  EXPECT_EQ(manual.lvContents.SelectedItem().Key, manual.pages.Page());
  auto& browser = *static_cast<QTextBrowser*>(manual.pages.Handle());
  const int first = browser.textCursor().position();
  for (int i = 0; i < 50; ++i) ClickOn(manual.cmdFind);
  ClickOn(manual.cmdFind);
  EXPECT_EQ(browser.textCursor().selectedText().toLower(), "duplex");
  EXPECT_GT(first, 0);
  Retype(manual.txtFind, "no such words");
  ClickOn(manual.cmdFind);
  EXPECT_EQ(manual.lblFound.Caption(), "Not found");
  PressKey(manual.pages, Qt::Key_Left, Qt::AltModifier);
  EXPECT_NE(manual.pages.Page(), QString());
  manual.pages.Open("manual/no_such_page.md");
  EXPECT_NE(manual.pages.Page(), "manual/no_such_page.md");
}

TEST_F(ManualTest, PicturesNeverNeedAScrollBar) {
  ShowManual(nullptr);
  frmManual->pages.Open("manual/cards.md");
  for (const int width : {900, 500}) {
    frmManual->SetWidth(width * 15);
    QApplication::processEvents();
    const auto& browser = *static_cast<QTextBrowser*>(frmManual->pages.Handle());
    EXPECT_LE(browser.document()->size().width(), browser.viewport()->width()) << width;
  }
}

}  // namespace
}  // namespace orv
