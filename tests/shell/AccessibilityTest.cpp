#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <algorithm>

#include "catalogues/frmCardBacks.h"
#include "catalogues/frmCardType.h"
#include "database/frmCR.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCardList.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "shell/frmCreate.h"
#include "shell/frmMaster.h"
#include "shell/frmPrint.h"
#include "shell/frmSetName.h"
#include "shell/inner/About.h"
#include "shell/inner/BringOverOldDatabase.h"
#include "shell/inner/SetMenu.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

QString NameOf(QWidget* widget) {
  QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(widget);
  return told != nullptr ? told->text(QAccessible::Name) : QString();
}

// What the keyboard reaches in a form by Tab.
std::vector<QWidget*> TabStops(const Form& form) {
  std::vector<QWidget*> stops;
  for (QWidget* widget : form.Handle()->window()->findChildren<QWidget*>()) {
    const bool inner = widget->focusProxy() != nullptr || qobject_cast<QMdiSubWindow*>(widget) != nullptr ||
                       widget->objectName().startsWith(QStringLiteral("qt_"));
    if (!inner && widget->focusPolicy() & Qt::TabFocus && widget->isVisibleTo(form.Handle()->window()))
      stops.push_back(widget);
  }
  return stops;
}

TEST(AccessibilityTest, WhateverTheKeyboardReachesHasAName) {
  TestDatabase database;
  const int set = database.AddSet(QStringLiteral("Set"), 2);
  database.AddCard(set, 1, QStringLiteral("Card"));
  database.AddCharacter(set, 1, QStringLiteral("Character"));
  database.AddLargeCard(set, 1, QStringLiteral("Large"));
  frmMaster->Show();
  frmMaster->InitialiseSet();
  frmCardList->FillList();
  frmCardBacks->InitBacks(2);
  frmSetName->Init(QStringLiteral("Set"), 1, 2);
  Form* const forms[] = {&*frmMaster,   &*frmCard2nd,  &*frmCard3rd,  &*frmCharacter2nd,
                         &*frmLarge2nd, &*frmCardList, &*frmCardType, &*frmCardBacks,
                         &*frmSetName,  &*frmCreate,   &*frmCR};
  for (Form* form : forms) {
    form->Show();
    const std::vector<QWidget*> stops = TabStops(*form);
    EXPECT_GE(stops.size(), 3u) << form->Caption().toStdString();
    for (QWidget* widget : stops) {
      EXPECT_NE(NameOf(widget), QString())
          << widget->metaObject()->className() << " in " << form->Caption().toStdString();
    }
  }
  for (const auto* button : frmMaster->tbar.Handle()->findChildren<QToolButton*>()) {
    if (!button->accessibleName().isEmpty()) {
      EXPECT_EQ(button->toolTip(),
                button->accessibleName() == u"Exit" ? QString() : button->accessibleName());
    }
  }
}

TEST(AccessibilityTest, WordsAndCountersOfTheBatchFit) {
  TestDatabase database;
  database.SelectSet(database.AddSet(QStringLiteral("Set"), 2));
  CreateForm& form = *frmCreate;
  form.Show();
  for (FormLabel* counter : {&form.lblNr2ndCards, &form.lblNr2ndChar, &form.lblNr2ndLarge}) {
    counter->SetCaption(QStringLiteral("999"));
  }
  for (const Control* control : std::initializer_list<const Control*>{
           &form.lblEdition, &form.chk2ndCard, &form.chk2ndChar, &form.chk2ndLarge, &form.lblNr2ndCards,
           &form.lblNr2ndChar, &form.lblNr2ndLarge}) {
    EXPECT_LE(control->Handle()->sizeHint().width(), control->Handle()->width())
        << NameOf(control->Handle()).toStdString();
  }
}

// Within one container a step of Tab leads to the right, or down, or to the top of what stands to the right.
TEST(AccessibilityTest, TabGoesAsOneReads) {
  TestDatabase database;
  database.SelectSet(database.AddSet(QStringLiteral("Set"), 2));
  frmCardBacks->InitBacks(2);
  frmSetName->Init(QStringLiteral("Set"), 1, 2);
  Form* const forms[] = {&*frmCardList, &*frmCardType, &*frmCardBacks, &*frmSetName, &*frmCreate, &*frmPrint};
  for (Form* form : forms) {
    form->Show();
    std::vector<QWidget*> stops = TabStops(*form);
    QWidget* const window = form->Handle();
    const QWidget* last = nullptr;
    for (QWidget* next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain()) {
      if (std::ranges::find(stops, next) == stops.end()) continue;
      if (last != nullptr && last->parentWidget() == next->parentWidget()) {
        const QPoint from = last->geometry().center(), to = next->geometry().center();
        const bool right = to.x() > from.x(), down = to.y() > from.y() + 8;
        EXPECT_TRUE(right || down) << form->Caption().toStdString() << ": "
                                   << NameOf(const_cast<QWidget*>(last)).toStdString() << " -> "
                                   << NameOf(next).toStdString();
      }
      last = next;
    }
  }
}

// Each word, at each size that a desktop may ask for.
TEST(AccessibilityTest, OurDialogsAreWholeAtEachSizeOfFont) {
  TestDatabase database;
  database.SelectSet(database.AddSet(QStringLiteral("Set"), 2));
  const QFont usual = QApplication::font();
  const auto look = [](Form& form, int points) {
    form.Show();
    for (QWidget* widget : form.Handle()->findChildren<QWidget*>()) {
      const QString where = QStringLiteral("%1: %2, %3").arg(form.Caption(), NameOf(widget)).arg(points);
      if (!widget->isVisibleTo(form.Handle())) continue;
      if (auto* const button = qobject_cast<QPushButton*>(widget)) {
        EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text().remove('&')) + 8, button->width())
            << where.toStdString();
      } else if (qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget)) {
        EXPECT_LE(widget->minimumSizeHint().width(), widget->width()) << where.toStdString();
      }
      if (!NameOf(widget).isEmpty()) {
        EXPECT_LE(widget->fontMetrics().height(), std::max(widget->height(), 15)) << where.toStdString();
      }
      if (widget->parentWidget() == form.Handle()) {
        EXPECT_TRUE(form.Handle()->rect().contains(widget->geometry())) << where.toStdString();
      }
    }
  };
  for (const int points : {8, 9, 12, 16}) {
    QFont font = usual;
    font.setPixelSize(points * 96 / 72);
    QApplication::setFont(font);
    look(*frmPrint, points);
    look(*frmChooseSet, points);
    look(*frmBringOver, points);
    look(*frmAbout, points);
    look(*frmSetName, points);
    look(*frmCreate, points);
    frmPrint.Unload();
    frmChooseSet.Unload();
    frmBringOver.Unload();
    frmAbout.Unload();
    frmSetName.Unload();
    frmCreate.Unload();
  }
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace orv
