#include "forms/Dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "base/RuntimeError.h"
#include "support/DialogScript.h"

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
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Varnholt Card Set Creator"));
    EXPECT_EQ(box.text(), QStringLiteral("<b>one</b>\n\ntwo"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  EXPECT_EQ(MsgBox(QStringLiteral("<b>one</b>\r\n\r\ntwo"), Icon::Critical, {}), Answer::Ok);

  const auto ask = [](auto action) {
    WhenShown<QMessageBox>(action);
    return MsgBox(QStringLiteral("Sure?"), Icon::Question, QStringLiteral("Ask"), Buttons::YesNo);
  };
  EXPECT_EQ(ask([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); }), Answer::Yes);
  EXPECT_EQ(ask([](QMessageBox& box) { box.button(QMessageBox::No)->click(); }), Answer::No);
  EXPECT_EQ(ask([](QMessageBox& box) { box.close(); }), Answer::No);
}

TEST(Dialogs, InputBoxes) {
  const auto ask = [](const QString& typed, bool accept) {
    WhenShown<QInputDialog>([=](QInputDialog& box) {
      EXPECT_EQ(box.textValue(), QStringLiteral("old"));
      box.setTextValue(typed);
      accept ? box.accept() : box.reject();
    });
    return InputBox(QStringLiteral("Name:"), QStringLiteral("Back"), QStringLiteral("old"));
  };
  EXPECT_EQ(ask(QStringLiteral("new"), true), QStringLiteral("new"));
  EXPECT_EQ(ask(QStringLiteral("new"), false), QString());
}

class FileDialogs : public testing::Test {
 protected:
  FileDialogs() {
    for (const char* name : {"a.JPG", "b.bmp", "c.txt", "bare"}) {
      QFile file(Path(name));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    dialog.Filter =
        QStringLiteral("All files(*.*)|*.*|Picture files (*.bmp;*.jpg;*.gif;*.wmf)|*.bmp;*.jpg;*.gif;*.wmf");
    dialog.FilterIndex = 2;
    dialog.InitDir = folder.path();
    dialog.CancelError = true;
    dialog.Flags = 0x281804;
  }
  QString Path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
  static void Accept(QFileDialog& box, const QString& name) {
    auto* const edit = box.findChild<QLineEdit*>();
    edit->setFocus();
    box.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
    edit->setText(name);
    QMetaObject::invokeMethod(&box, "accept");
  }
  static QStringList Names(QFileDialog& box) {
    const auto* const view = box.findChild<QAbstractItemView*>(QStringLiteral("listView"));
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
  QStringList pictures;
  QStringList all;
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Names(box).size() == 2; }));
    pictures = Names(box);
    box.selectNameFilter(box.nameFilters().first());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Names(box).size() == 4; }));
    all = Names(box);
    Accept(box, QStringLiteral("a.JPG"));
  });
  dialog.ShowOpen();
  EXPECT_EQ(pictures, QStringList({QStringLiteral("a.JPG"), QStringLiteral("b.bmp")}));
  EXPECT_EQ(all.size(), 4) << "names without a dot, too";
  EXPECT_EQ(dialog.FileName, QDir::toNativeSeparators(Path("a.JPG")));
  EXPECT_EQ(dialog.FilterIndex, 1) << "the one chosen in the dialog";
}

TEST_F(FileDialogs, CancelIsAnErrorWhereAskedFor) {
  const auto cancel = [] { WhenShown<QFileDialog>([](QFileDialog& box) { box.reject(); }); };
  dialog.FileName = QStringLiteral("kept");
  cancel();
  try {
    dialog.ShowOpen();
    ADD_FAILURE() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kErrCancel);
  }
  dialog.CancelError = false;
  cancel();
  dialog.ShowSave();
  EXPECT_EQ(dialog.FileName, QStringLiteral("kept"));
}

TEST_F(FileDialogs, SavingAddsTheExtensionAsksAndStaysInItsFolder) {
  dialog.Filter = QStringLiteral("All files(*.*)|*.*|Text file (*.txt)|*.txt");
  dialog.DefaultExt = QStringLiteral("txt");
  dialog.Flags = 0x280806;
  dialog.FileName = QStringLiteral("a/b.txt");
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    EXPECT_EQ(box.findChild<QLineEdit*>()->text(), QStringLiteral("a_b.txt"));
    Accept(box, QStringLiteral("list"));
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
    Accept(box, QStringLiteral("c.txt"));
    EXPECT_TRUE(box.isVisible());
    Accept(box, QStringLiteral("d.txt"));
  });
  dialog.FileName.clear();
  dialog.ShowSave();
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(dialog.FileName, Path("d.txt"));
  // A folder that does not exist is told of, and the dialog comes again.
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    WhenShown<QMessageBox>([&](QMessageBox& told) {
      EXPECT_TRUE(told.text().contains(QStringLiteral("Path does not exist.")));
      WhenShown<QFileDialog>([&](QFileDialog& again) { Accept(again, QStringLiteral("e.txt")); });
      told.accept();
    });
    Accept(box, QStringLiteral("missing/e.txt"));
  });
  dialog.ShowSave();
  EXPECT_EQ(dialog.FileName, Path("e.txt"));
}

TEST_F(FileDialogs, AResponderAnswersInTheirPlace) {
  DialogScript script;
  const DialogResponderScope scope(script);
  script.files = {QStringLiteral("/x/y.bmp")};
  dialog.ShowOpen();
  EXPECT_EQ(dialog.FileName, QStringLiteral("/x/y.bmp"));
  EXPECT_THROW(dialog.ShowOpen(), RuntimeError);
  script.colours = {Rgb(1, 2, 3)};
  dialog.ShowColor();
  EXPECT_EQ(dialog.Color, Rgb(1, 2, 3));
  EXPECT_THROW(dialog.ShowColor(), RuntimeError);
  EXPECT_EQ(dialog.Color, Rgb(1, 2, 3));
  {
    DialogScript inner;
    const DialogResponderScope inner_scope(inner);
    MsgBox(QStringLiteral("inner"), Icon::None, {});
    EXPECT_EQ(inner.LastPrompt(), QStringLiteral("inner"));
  }
  EXPECT_EQ(CurrentResponder(), &script);
  EXPECT_TRUE(script.boxes.empty());
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
  EXPECT_EQ(BrowseFolder(QStringLiteral("Choose"), nullptr), QDir::toNativeSeparators(folder.path() + u'/'));
  WhenShown<QFileDialog>([](QFileDialog& box) { box.reject(); });
  EXPECT_EQ(BrowseFolder(QStringLiteral("Choose"), nullptr), QString());
}

}  // namespace
}  // namespace orv
