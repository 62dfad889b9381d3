#include "forms/Dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "base/Files.h"
#include "support/Errors.h"

namespace orv {
namespace {

// Does something with the next dialog of a kind, when it has come up.
template <class Dialog, class Action>
void WhenShown(Action action) {
  auto* const timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, action] {
    auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible()) return;
    timer->deleteLater();
    timer->stop();
    action(*dialog);
  });
  timer->start(5);
}

TEST(Dialogs, MessageBoxes) {
  WhenShown<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), "Varnholt Card Set Creator");
    EXPECT_EQ(box.text(), "<b>one</b>\n\ntwo");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  EXPECT_EQ(MsgBox("<b>one</b>\r\n\r\ntwo", Icon::Critical, {}), Answer::Ok);

  const auto ask = [](auto action) {
    WhenShown<QMessageBox>(action);
    return MsgBox("Sure?", Icon::Question, "Ask", Buttons::YesNo);
  };
  EXPECT_EQ(ask([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); }), Answer::Yes);
  EXPECT_EQ(ask([](QMessageBox& box) { box.button(QMessageBox::No)->click(); }), Answer::No);
  EXPECT_EQ(ask([](QMessageBox& box) { box.close(); }), Answer::No);
  const auto enter = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); };
  EXPECT_EQ(ask(enter), Answer::Yes);
  WhenShown<QMessageBox>(enter);
  EXPECT_EQ(MsgBox("Sure?", Icon::Question, "Ask", Buttons::NoYes), Answer::No);
}

TEST(Dialogs, InputBoxes) {
  const auto ask = [](const QString& typed, bool accept) {
    WhenShown<QInputDialog>([=](QInputDialog& box) {
      EXPECT_EQ(box.textValue(), "old");
      box.setTextValue(typed);
      accept ? box.accept() : box.reject();
    });
    return InputBox("Name:", "Back", "old");
  };
  EXPECT_EQ(ask("new", true), "new");
  EXPECT_EQ(ask("new", false), QString());
}

class FileDialogs : public testing::Test {
 protected:
  FileDialogs() {
    for (const char* name : {"a.JPG", "b.bmp", "c.txt", "bare"}) ReplaceFile(Path(name), QByteArray());
    dialog.Filter = "All files(*.*)|*.*|Picture files (*.bmp;*.jpg;*.gif;*.wmf)|*.bmp;*.jpg;*.gif;*.wmf";
    dialog.FilterIndex = 2;
    dialog.InitDir = folder.path();
    dialog.CancelError = true;
    dialog.Flags = 0x281804;
  }
  QString Path(const char* name) const { return folder.filePath(name); }
  static void Accept(QFileDialog& box, const QString& name) {
    auto* const edit = box.findChild<QLineEdit*>();
    edit->setFocus();
    box.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
    edit->setText(name);
    QMetaObject::invokeMethod(&box, "accept");
  }
  static QStringList Names(QFileDialog& box) {
    const auto* const view = box.findChild<QAbstractItemView*>("listView");
    QStringList names;
    for (int i = 0; i < view->model()->rowCount(view->rootIndex()); ++i) {
      names += view->model()->index(i, 0, view->rootIndex()).data().toString();
    }
    names.sort();
    return names;
  }
  QTemporaryDir folder;
  CommonDialog dialog;
};

TEST_F(FileDialogs, TheFilterCountsFromOneAndKnowsNoCase) {
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    const QStringList pictures{"a.JPG", "b.bmp"}, all{"a.JPG", "b.bmp", "bare", "c.txt"};
    EXPECT_TRUE(QTest::qWaitFor([&] { return Names(box) == pictures; }));
    const auto* const types = box.findChild<QComboBox*>("fileTypeCombo");
    EXPECT_EQ(types->itemText(0), "All files(*.*)");
    EXPECT_EQ(types->currentText(), "Picture files (*.bmp;*.jpg;*.gif;*.wmf)");
    box.selectNameFilter(box.nameFilters().first());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Names(box) == all; })) << "names without a dot, too";
    Accept(box, "a.JPG");
  });
  dialog.ShowOpen();
  EXPECT_EQ(dialog.FileName, QDir::toNativeSeparators(Path("a.JPG")));
  EXPECT_EQ(dialog.FilterIndex, 1) << "the one chosen in the dialog";
}

TEST_F(FileDialogs, CancelIsAnErrorWhereAskedFor) {
  const auto cancel = [] { WhenShown<QFileDialog>([](QFileDialog& box) { box.reject(); }); };
  dialog.FileName = "kept";
  cancel();
  EXPECT_EQ(ErrorOf([&] { dialog.ShowOpen(); }), kErrCancel);
  dialog.CancelError = false;
  cancel();
  dialog.ShowSave();
  EXPECT_EQ(dialog.FileName, "kept");
}

TEST_F(FileDialogs, SavingAddsTheExtensionAsksAndStaysInItsFolder) {
  dialog.Filter = "All files(*.*)|*.*|Text file (*.txt)|*.txt";
  dialog.DefaultExt = "txt";
  dialog.Flags = 0x280806;
  dialog.FileName = "a/b.txt";
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    EXPECT_EQ(box.findChild<QLineEdit*>()->text(), "a_b.txt");
    Accept(box, "list");
  });
  dialog.ShowSave();
  EXPECT_EQ(dialog.FileName, Path("list.txt"));
  // An existing file is asked about; No goes back to the dialog.
  int asked = 0;
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    WhenShown<QMessageBox>([&](QMessageBox& question) {
      ++asked;
      question.button(QMessageBox::No)->click();
    });
    Accept(box, "c.txt");
    EXPECT_TRUE(box.isVisible());
    Accept(box, "d.txt");
  });
  dialog.FileName.clear();
  dialog.ShowSave();
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(dialog.FileName, Path("d.txt"));
  // A folder that does not exist is told of, and the dialog comes again.
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    WhenShown<QMessageBox>([&](QMessageBox& told) {
      EXPECT_TRUE(told.text().contains("Path does not exist."));
      WhenShown<QFileDialog>([&](QFileDialog& again) { Accept(again, "e.txt"); });
      told.accept();
    });
    Accept(box, "missing/e.txt");
  });
  dialog.ShowSave();
  EXPECT_EQ(dialog.FileName, Path("e.txt"));
}

TEST_F(FileDialogs, ColoursHaveRedInTheLowByte) {
  dialog.Color = Rgb(0x7F, 0x10, 0x20);
  WhenShown<QColorDialog>([](QColorDialog& box) {
    EXPECT_EQ(box.currentColor(), QColor(0x7F, 0x10, 0x20));
    box.setCurrentColor(QColor(1, 2, 3));
    box.accept();
  });
  dialog.ShowColor();
  EXPECT_EQ(dialog.Color, 0x030201);
}

TEST_F(FileDialogs, AFolderEndsInASeparator) {
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    box.setDirectory(folder.path());
    Accept(box, folder.path());
  });
  EXPECT_EQ(BrowseFolder("Choose", nullptr), QDir::toNativeSeparators(folder.path() + u'/'));
  WhenShown<QFileDialog>([](QFileDialog& box) { box.reject(); });
  EXPECT_EQ(BrowseFolder("Choose", nullptr), QString());
}

}  // namespace
}  // namespace orv
