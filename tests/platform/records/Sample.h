#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QTemporaryDir>
#include <memory>

#include "base/RuntimeError.h"
#include "records/Recordset.h"

namespace orv {

// Number of the RuntimeError that an action ends with, 0 if it ends well.
template <class Action>
int ErrorOf(Action action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

// A database of the delivered schema with a few rows, in a folder of its own.
class Sample : public testing::Test {
 protected:
  Sample();
  ~Sample() override;

  QString Path() const { return folder_.filePath("orv.mdb"); }
  Connection Open() const { return Connection::Open(Path()); }
  Recordset Snapshot(const QString& sql) const { return Recordset::OpenSnapshot(connection_, sql); }
  Recordset Editable(const QString& sql) const { return Recordset::OpenEditable(connection_, sql); }
  Recordset Cards() const { return Editable("SELECT * FROM tblCard WHERE SetID = 1 ORDER BY Nr"); }

  // What another program does with the file, and its first result as a text ("~" for Null).
  QString Raw(const QString& sql) const;

  QTemporaryDir folder_;
  sqlite3* other_ = nullptr;
  Connection connection_;
};

// The values of the columns from the current row on, "|" between columns and " / " between rows, "~" for
// Null.
QString Rows(Recordset recordset, const QStringList& columns);

}  // namespace orv
