#pragma once

#include <QByteArray>
#include <QMap>
#include <QTemporaryDir>

#include "forms/Types.h"

namespace orv {

// A database of its own in a temporary folder, opened as the program's, with a few reference rows in two
// languages and both editions, and no set. The user's settings lie in the folder too. One at a time.
//
// Card types: 1 to 3 of edition 2, 4 and 5 of edition 3, 6 of edition 2 in German. Card backs: 1 and 2 of
// edition 2, 4 and 5 of edition 3, 6 in German. Type 1 is "EVENT" with the words EVENT and number 1; type 2
// has four words and number 2; type 3 is locked to set 999.
class TestDatabase {
 public:
  // An older file lets each text be Null.
  enum class Age { kNew, kOlder };

  explicit TestDatabase(Age age = Age::kNew);
  // Unloads all forms and clears the shared state.
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  // A file with the same rows elsewhere.
  static void MakeFile(const QString& path, Age age = Age::kNew);

  QString Folder() const { return folder_.path(); }
  QString Path(const QString& name) const;

  // The keys of new rows. A set has its thirteen fonts and saves to the folder as BMP.
  int AddSet(const QString& name, int edition, int language = 1);
  int AddCard(int set, int nr, const QString& title);
  int AddLargeCard(int set, int nr, const QString& title);
  int AddCharacter(int set, int nr, const QString& name);
  // Makes a set the current one, as the main window does, and opens the recordsets of its records.
  void SelectSet(int set);

  // A statement in the database's own dialect.
  void Execute(const QString& statement);
  // The first value of a query, as text; "~" for Null and "" without rows.
  QString Scalar(const QString& query);
  // Puts bytes into a long binary column of a table's row.
  void Store(const QString& table, int id, const QString& column, const QByteArray& bytes);

  // The bytes of a picture file (BMP) of one colour.
  static QByteArray PlainPicture(int width, int height, Colour colour);
  // One whose pixel (x, y) is RGB(x, y, 77), for checks of what lies where.
  static QByteArray GradientPicture(int width, int height);
  // Writes a file into the folder; its path.
  QString WriteFile(const QString& name, const QByteArray& bytes);

 private:
  // Adds a row with these values (SQL) and 0 or an empty text in the other short columns; its key.
  int AddRow(const QString& table, QMap<QString, QString> values);

  QTemporaryDir folder_;
};

}  // namespace orv
