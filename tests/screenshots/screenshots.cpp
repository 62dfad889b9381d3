// Makes a picture of each window, filled from a copy of the delivered database, without a display.
// Usage: screenshots DATABASE FOLDER [dark]
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QPalette>
#include <QTemporaryDir>
#include <QWidget>

#include "base/App.h"
#include "base/Files.h"
#include "catalogues/frmCardBacks.h"
#include "catalogues/frmCardType.h"
#include "database/frmCR.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCardList.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Application.h"
#include "icons/Icons.h"
#include "shell/Main.h"
#include "shell/frmCreate.h"
#include "shell/frmMaster.h"
#include "shell/frmSetName.h"
#include "state/Product.h"
#include "state/modData.h"

namespace orv {
namespace {

QString folder;

void Settle() {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < 150) QApplication::processEvents();
}

void Grab(const Form& form, const char* name) {
  Settle();
  form.Handle()->window()->grab().save(folder + u'/' + QLatin1String(name) + QStringLiteral(".png"));
}

// Walks down a list as a user does.
void WalkDown(const ListView& list, int times) {
  list.Handle()->setFocus();
  for (int i = 0; i < times; ++i) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(list.Handle(), &press);
  }
}

void GrabDialog(Form& form, const char* name) {
  form.Show();
  Grab(form, name);
  form.Hide();
}

void GrabEditor(RecordEditor& editor, int moves, const char* name) {
  editor.Show();
  Settle();
  for (int i = 0; i < moves; ++i) editor.cmdCardNav_Click(2);
  Grab(*frmMaster, name);
  editor.Hide();
}

int GrabAll() {
  if (!Main()) return 1;
  frmMaster->SetWidth(930 * 15);
  frmMaster->SetHeight(720 * 15);
  GrabEditor(*frmCard2nd, 1, "card2nd");
  GrabEditor(*frmCharacter2nd, 0, "character2nd");
  GrabEditor(*frmLarge2nd, 1, "large2nd");
  frmSetName->Init(QStringLiteral("The Saltwind Coast"), 1, 2);
  GrabDialog(*frmSetName, "set");
  GrabDialog(*frmCreate, "create_cards");
  frmCardType->Show();
  WalkDown(frmCardType->lvEntries, 4);
  GrabDialog(*frmCardType, "card_type");
  frmCardBacks->InitBacks(2);
  frmCardBacks->Show();
  WalkDown(frmCardBacks->lvEntries, 2);
  GrabDialog(*frmCardBacks, "card_backs");
  frmCardList->FillList();
  frmCardList->Show();
  WalkDown(frmCardList->lvCard, 3);
  GrabDialog(*frmCardList, "card_list");
  GrabDialog(*frmCR, "compact");
  frmMaster->cboSet.SetListIndex(1);
  GrabEditor(*frmCard3rd, 1, "card3rd");
  return 0;
}

// As a desktop with light letters on dark ground has it.
QPalette DarkPalette() {
  QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
  palette.setColor(QPalette::Base, QColor(35, 35, 35));
  palette.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  return palette;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  if (argc < 3 || argc > 4) return 2;
  const QTemporaryDir home;
  qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
  Application application(argc, argv, Application::Offscreen, TheProgram());
  if (argc == 4) QApplication::setPalette(DarkPalette());
  InitIcons();
  QFile::copy(QString::fromLocal8Bit(argv[1]), home.filePath(QStringLiteral("orv.mdb")));
  App::SetPath(home.path());
  folder = QString::fromLocal8Bit(argv[2]);
  return application.RunOnce(GrabAll);
}
