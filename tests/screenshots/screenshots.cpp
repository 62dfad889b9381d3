// Makes a picture of each window, filled from a copy of the delivered database, without a display.
// Usage: screenshots DATABASE FOLDER [dark]
#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPalette>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
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
#include "shell/Manual.h"
#include "shell/frmCreate.h"
#include "shell/frmMaster.h"
#include "shell/frmPrint.h"
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

void Save(const QPixmap& picture, const char* name) {
  picture.save(folder + u'/' + QLatin1String(name) + QStringLiteral(".png"));
}

void Grab(const Form& form, const char* name) {
  Settle();
  Save(form.Handle()->window()->grab(), name);
}

// The question of a start beside a database of an older version, of which the beginning of a file is enough.
// It is answered with No.
void GrabQuestion(const char* name) {
  ReplaceFile(modData::DatabasePath(), QByteArray(4, '\0') + "Standard Jet DB");
  QTimer::singleShot(300, [name] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    Save(box->grab(), name);
    box->button(QMessageBox::No)->click();
  });
  Main();
}

// The upper part of the main window with the menu of its last tool open.
void GrabMenu(const char* name) {
  Settle();
  QWidget* const window = frmMaster->Handle()->window();
  for (QToolButton* tool : window->findChildren<QToolButton*>()) {
    if (tool->menu() == nullptr || tool->accessibleName() != u"More") continue;
    QPixmap menu = tool->menu()->grab();
    QPixmap picture = window->grab();
    const QPoint corner = tool->mapTo(window, QPoint(tool->width(), tool->height()));
    QPainter(&picture).drawPixmap(corner.x() - menu.width(), corner.y(), menu);
    Save(picture.copy(0, 0, picture.width(), 170), name);
  }
}

// A card with the menu that its picture has behind the right button.
void GrabPictureMenu(CardEditor& editor, const char* name) {
  editor.Show();
  Settle();
  QWidget* const window = frmMaster->Handle()->window();
  QWidget& card = *editor.viewCard.Handle();
  const QPoint at(90, 90);
  QContextMenuEvent asked(QContextMenuEvent::Mouse, at, card.mapToGlobal(at));
  QApplication::sendEvent(&card, &asked);
  Settle();
  QWidget* const menu = QApplication::activePopupWidget();
  if (menu == nullptr) return;
  QPixmap picture = window->grab();
  const QPoint corner = card.mapTo(window, QPoint());
  QPainter(&picture).drawPixmap(corner + at, menu->grab());
  menu->close();
  const QPoint first = corner - QPoint(12, 12);
  Save(picture.copy(QRect(first, QSize(420, 324)).intersected(picture.rect())), name);
  editor.Hide();
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

int GrabAll(const QString& database) {
  GrabQuestion("older_database");
  QFile::remove(modData::DatabasePath());
  QFile::copy(database, modData::DatabasePath());
  if (!Main()) return 1;
  frmMaster->SetWidth(930 * 15);
  frmMaster->SetHeight(720 * 15);
  GrabMenu("set_menu");
  GrabEditor(*frmCard2nd, 1, "card2nd");
  GrabPictureMenu(*frmCard2nd, "picture_menu");
  GrabEditor(*frmCharacter2nd, 0, "character2nd");
  GrabEditor(*frmLarge2nd, 1, "large2nd");
  frmSetName->Init(QStringLiteral("The Saltwind Coast"), 1, 2);
  GrabDialog(*frmSetName, "set");
  GrabDialog(*frmCreate, "create_cards");
  GrabDialog(*frmPrint, "print_sheets");
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
  ShowManual(frmCard2nd.operator->());
  Grab(*frmManual, "manual");
  frmManual->Hide();
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
  App::SetPath(home.path());
  folder = QString::fromLocal8Bit(argv[2]);
  return application.RunOnce([&] { return GrabAll(QString::fromLocal8Bit(argv[1])); });
}
