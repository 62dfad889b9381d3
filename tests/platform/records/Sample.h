#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QTemporaryDir>

#include "records/Recordset.h"
#include "support/Errors.h"

namespace orv {

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
  // The title of the first card of Cards() in the file.
  QString StoredTitle() const { return Raw("SELECT Title FROM tblCard WHERE CardID = 2"); }

  QTemporaryDir folder_;
  sqlite3* other_ = nullptr;
  Connection connection_;
};

// The values of the columns from the current row on, "|" between columns and " / " between rows, "~" for
// Null.
QString Rows(Recordset recordset, const QStringList& columns);

}  // namespace orv
