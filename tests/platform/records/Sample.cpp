#include "platform/records/Sample.h"

#include "schema/Schema.h"

namespace orv {
namespace {

const char* const kRows = R"(
INSERT INTO tblLanguage VALUES (1, 'English'), (2, 'Deutsch');
INSERT INTO tblPicFormat VALUES (1, 'BMP'), (2, 'JPG'), (3, 'GIF');
INSERT INTO tblAlignment VALUES (1, 'Wicked', 2, 1), (2, 'Kind', 1, 1), (3, 'Gut', 1, 2);
INSERT INTO tblArea VALUES (1, 'Outer', 'Élan', 1, 2), (2, 'outer', 'East', 1, 2), (3, NULL, 'Elan', 1, 2),
                           (4, 'Inner', NULL, 1, 2), (5, 'Inner', 'Third', 1, 3);
INSERT INTO tblCardType VALUES
  (1, 'Spirit', NULL, 'Spirit', NULL, '1', 1, 2, -1, 0), (2, 'spirit', NULL, 'x', '', '2', 1, 2, 0, 0),
  (3, 'Ätna', 'Low', 'Up', '', NULL, 1, 2, -1, 0), (4, 'Zeal', 'Low', NULL, NULL, '4', 1, 2, 0, 7),
  (5, 'atna', 'low', 'Up', '', '5', 1, 2, 0, 1), (6, 'Third', '', 'Side', '', '6', 1, 3, -1, 0),
  (7, 'Deutsch', '', 'D', '', '1', 2, 2, -1, 0);
INSERT INTO tblCardBack VALUES (1, 'night', x'0102', 0, 1, 2), (2, 'Älter', NULL, -1, 1, 2),
  (3, 'Night', NULL, 0, 1, 2), (4, 'Three', NULL, -1, 1, 3);
INSERT INTO tblCharacterBack VALUES (1, 'b', x'01', 0, 1, 2), (2, 'C', NULL, -1, 1, 2), (3, 'a', NULL, 0, 1, 2);
INSERT INTO tblFont (Font, Size, Bold) VALUES ('Small Fonts', 7, -1), ('Arial', 9, 0), ('Arial', 5, 0);
INSERT INTO tblSet (SetID, SetName, LanguageID, EditionID, CardTypeFontID, CharacterPieceFontID)
  VALUES (1, 'zeta', 1, 2, 1, 2), (2, 'Öde', 1, 3, 3, NULL), (3, 'Oase', 2, 2, NULL, NULL);
INSERT INTO tblCard (SetID, Nr, Title, CardTypeID, CardBackID, Number, BoldText, Information, Picture) VALUES
  (1, 2, 'Bravo', 1, 1, '1', 'bold', 'info', x'AABBCC'), (1, 1, 'Alpha', 2, 2, '2', '', NULL, NULL),
  (1, 2, 'alpha', 3, 1, NULL, NULL, '', NULL), (1, 3, 'Delta', 99, 1, '', '', '', NULL),
  (1, 4, NULL, 1, 3, '', '', '', NULL), (2, 1, 'Other', 1, 1, '', '', '', NULL);
INSERT INTO tblCharacter (SetID, Nr, Name, StartingAreaID, AlignmentID, Strength, Picture) VALUES
  (1, 2, 'Beta', 1, 2, '3', x'01'), (1, 1, 'Gamma', 4, 1, '2', NULL), (1, 3, 'Nowhere', 77, 1, '2', NULL);
INSERT INTO tblLargeCard (SetID, Nr, Title, Information) VALUES (1, 2, 'Two', 'x'), (1, 1, 'One', NULL);
)";

}  // namespace

Sample::Sample() {
  EXPECT_EQ(sqlite3_open(Path().toUtf8().constData(), &other_), SQLITE_OK);
  Raw("PRAGMA synchronous = OFF");
  Raw(schema::Script());
  Raw(QString::fromUtf8(kRows));
  connection_ = Open();
}

Sample::~Sample() {
  sqlite3_close(other_);
}

QString Sample::Raw(const QString& sql) const {
  QString result;
  char* message = nullptr;
  const auto first = [](void* to, int, char** values, char**) {
    if (static_cast<QString*>(to)->isEmpty())
      *static_cast<QString*>(to) = QString::fromUtf8(values[0] == nullptr ? "~" : values[0]);
    return 0;
  };
  const int code = sqlite3_exec(other_, sql.toUtf8().constData(), first, &result, &message);
  EXPECT_EQ(code, SQLITE_OK) << (message != nullptr ? message : "") << " in " << sql.toStdString();
  sqlite3_free(message);
  return result;
}

QString Rows(Recordset recordset, const QStringList& columns) {
  QStringList rows;
  for (; !recordset.IsEOF(); recordset.MoveNext()) {
    QStringList row;
    for (const QString& column : columns)
      row.append(recordset[column].IsNull() ? "~" : recordset[column].Text());
    rows.append(row.join('|'));
  }
  return rows.join(" / ");
}

}  // namespace orv
