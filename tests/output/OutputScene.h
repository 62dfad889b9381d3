#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include "base/Files.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {

// A set whose files go to a folder of their own.
class OutputScene : public testing::Test {
 protected:
  explicit OutputScene(TestDatabase::Age age = TestDatabase::Age::kNew) : database_(age) {}

  // A new set of an edition, current, with cards "Magic Sword 1" and so on.
  void Open(int edition, int cards = 0) {
    set_ = database_.AddSet("Set", edition);
    for (int nr = 1; nr <= cards; ++nr) database_.AddCard(set_, nr, QString("Magic Sword %1").arg(nr));
    database_.SelectSet(set_);
    QDir(Out()).removeRecursively();
    QDir().mkpath(Out());
    Option("SaveTo", Out());
  }
  QString Out() const { return database_.Path("out"); }
  static void Option(const char* column, const Value& value) {
    modData::rsSet[column] = value;
    modData::rsSet.Update();
  }
  static void Card(const char* column, const Value& value) {
    modData::rsCard[column] = value;
    modData::rsCard.Update();
  }
  QStringList Files() const { return QDir(Out()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  Picture File(const QString& name) const { return LoadPicture(JoinPath(Out(), name)); }

  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_ = 0;
};

}  // namespace orv
