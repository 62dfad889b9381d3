#pragma once

#include <gtest/gtest.h>

#include "catalogues/frmCardBacks.h"
#include "catalogues/frmCardType.h"
#include "support/DialogScript.h"
#include "support/Lists.h"
#include "support/TestDatabase.h"
#include "support/Widgets.h"

namespace orv {

// A catalogue as the tests of both know it.
struct Catalogue {
  const char* table;
  CatalogueForm& (*form)();  // loads it with its rows if it isn't
  const char* own_entries;   // to insert, of a user; the one with key 11 is the first "Own" of the list
  const char* used_message;
  int letter, letter_id;  // a key, and the entry that it jumps to
};

inline const Catalogue kTypes(
    "tblCardType", []() -> CatalogueForm& { return *frmCardType; },
    "(10, 'Own', 'b', NULL, '', '10', 1, 2, 0, 0), "
    "(11, 'Own', 'a', '', '', '2', 1, 2, 0, 0)",
    "This type can not be deleted. There are cards using it.", Qt::Key_T, 5);
// Of the second edition.
inline const Catalogue kBacks(
    "tblCardBack",
    []() -> CatalogueForm& {
      if (!frmCardBacks.IsLoaded()) frmCardBacks->InitBacks(2);
      return *frmCardBacks;
    },
    "(11, 'Own', NULL, 0, 1, 2), (12, 'Zebra', NULL, 0, 1, 2)",
    "This Card back can not be deleted. There are cards using is.", Qt::Key_B, 2);

// The catalogue on show for a set of an edition, with two entries of a user.
class CatalogueScene {
 protected:
  CatalogueScene(const Catalogue& catalogue, int edition)
      : catalogue_(catalogue), set_(database_.AddSet("Set", edition)) {
    database_.Execute(QStringLiteral("INSERT INTO %1 VALUES %2").arg(catalogue.table, catalogue.own_entries));
    database_.SelectSet(set_);
    catalogue.form().Show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(catalogue.form().Handle()));
  }

  const ListView& Entries() { return catalogue_.form().lvEntries; }
  void Click(const char* text) { ClickEntry(Entries(), text); }
  // A column of the list from top to bottom.
  QString Listed(int column) { return Column(Entries(), column).join('|'); }
  QString Count() {
    return database_.Scalar(QStringLiteral("SELECT COUNT(*) FROM %1").arg(catalogue_.table));
  }
  // The enabled ones of some buttons as 1, the others as 0.
  static QString Enabled(std::initializer_list<const CommandButton*> buttons) {
    QString text;
    for (const CommandButton* button : buttons) text += button->Enabled() ? '1' : '0';
    return text;
  }

  const Catalogue& catalogue_;
  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_;
};

}  // namespace orv
