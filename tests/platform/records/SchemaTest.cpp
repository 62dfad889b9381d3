#include <QRegularExpression>
#include <map>

#include "platform/records/Sample.h"
#include "schema/Schema.h"

namespace orv {
namespace {

class SchemaTest : public Sample {
 protected:
  QString Plan(const QString& query) const {
    sqlite3_stmt* statement = nullptr;
    QString plan;
    EXPECT_EQ(sqlite3_prepare_v2(other_, ("EXPLAIN QUERY PLAN " + query).toUtf8().constData(), -1, &statement,
                                 nullptr),
              SQLITE_OK);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      plan += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3))) + '\n';
    }
    sqlite3_finalize(statement);
    return plan;
  }
};

TEST_F(SchemaTest, TheFileHoldsTheObjectsThatAreTold) {
  QString told;
  for (const auto& objects : {schema::Objects(), schema::OriginalObjects()}) {
    for (const schema::Object& object : objects) told += object.type + object.name + object.sql;
  }
  EXPECT_EQ(
      Raw("SELECT group_concat(type || name || sql, '') FROM (SELECT * FROM sqlite_schema WHERE name NOT "
          "LIKE 'sqlite_%' ORDER BY rowid)"),
      told);
}

// What another program reads and writes by the tables' names.
TEST_F(SchemaTest, ARecordsetSeesWhatIsWrittenToAViewByItsName) {
  Recordset cards = Cards();
  Raw("UPDATE tblCard SET Title = upper(Title), Copies = 3 WHERE SetID = 1 AND Nr = 2");
  EXPECT_EQ(Raw("SELECT group_concat(Title) FROM tblCard WHERE Copies = 3"), "BRAVO,ALPHA");
  EXPECT_EQ(Raw("SELECT hex(Picture) FROM tblCard WHERE CardID = 1"), "AABBCC");
  Raw("UPDATE tblCard SET Picture = NULL, Background = x'01', Title = 'both' WHERE CardID = 1");
  cards.MoveNext();
  EXPECT_EQ(cards["Title"].Text(), "both");
  EXPECT_TRUE(cards["Picture"].IsNull());
  EXPECT_EQ(cards["Background"].Bytes().toHex(), "01");
}

// Every column, long or short, goes through the views' triggers under its own name.
TEST_F(SchemaTest, EachColumnOfAViewIsWrittenToItself) {
  for (const QString name :
       {"tblSet", "tblCard", "tblCharacter", "tblLargeCard", "tblCardBack", "tblCharacterBack"}) {
    const QString key = name.mid(3) + "ID";
    const auto columns_of = [&](const QString& table) {
      return Raw(QString("SELECT group_concat(name) FROM pragma_table_info('%1') WHERE name <> '%2'")
                     .arg(table, key))
          .split(',');
    };
    const QStringList columns = columns_of(name);
    EXPECT_EQ(columns.size(), columns_of(name + "_rows").size() + columns_of(name + "_long").size());
    QStringList values, changes;
    for (int i = 0; i < columns.size(); ++i) {
      values.append(QString::number(100 + i));
      changes.append(QString("%1 = %2").arg(columns[i]).arg(200 + i));
    }
    const auto row = [&] {
      return Raw(QString("SELECT CAST(%1 AS INTEGER) FROM %2 ORDER BY %3 DESC LIMIT 1")
                     .arg(columns.join(" AS INTEGER) || ',' || CAST("), name, key));
    };
    const auto last_key = [&] { return Raw(QString("SELECT MAX(%2) FROM %1").arg(name, key)); };
    Raw(QString("INSERT INTO %1 (%2) VALUES (%3)").arg(name, columns.join(','), values.join(',')));
    EXPECT_EQ(row(), values.join(','));
    const QString id = last_key();
    Raw(QString("UPDATE %1 SET %2 WHERE %3 = %4").arg(name, changes.join(','), key, id));
    EXPECT_EQ(row(), values.join(',').replace(QRegularExpression("\\b1"), "2"));
    Raw(QString("DELETE FROM %1 WHERE %2 = %3").arg(name, key, id));
    EXPECT_EQ(Raw(QString("SELECT COUNT(*) FROM %1_long WHERE %2 = %3").arg(name, key, id)), "0");
    Raw(QString("INSERT INTO %1 DEFAULT VALUES").arg(name));
    EXPECT_GT(last_key().toInt(), id.toInt()) << "a key given out twice";
  }
  EXPECT_EQ(Raw("SELECT UseSymbol || IFNULL(SaveTo, 'null') FROM tblSet ORDER BY SetID DESC LIMIT 1"),
            "0null");
}

// The program takes a Null in these for an error.
TEST_F(SchemaTest, ANullOfAnotherProgramInATextThatIsPrintedIsEmptyText) {
  for (const auto& [table, columns] :
       std::map<QString, QStringList>{{"tblCard", {"Title", "BoldText", "Information"}},
                                      {"tblLargeCard", {"Title", "Information"}},
                                      {"tblCharacter", {"Name"}}}) {
    const QString empty =
        "SELECT COUNT(*) FROM " + table + " WHERE SetID = 9 AND " + columns.join(" || ") + " = ''";
    const QString nulls = columns.join(" = NULL, ") + " = NULL";
    Raw(QString("INSERT INTO %1 (SetID, %2) VALUES (9, %3)")
            .arg(table, columns.join(','), QStringList(columns.size(), "NULL").join(',')));
    Raw(QString("INSERT INTO %1_rows (SetID) VALUES (9)").arg(table));
    EXPECT_EQ(Raw(empty), "2") << table.toStdString();
    Raw(QString("UPDATE %1 SET %2 = 'x'").arg(table, columns.join(" = 'x', ")));
    Raw(QString("UPDATE %1 SET %2").arg(table, nulls));
    EXPECT_EQ(Raw(empty), "2") << table.toStdString();
  }
}

TEST_F(SchemaTest, ADeletedSetTakesItsRowsAndFontsAlong) {
  Recordset sets = Editable("SELECT * FROM tblSet ORDER BY SetName");
  sets.Find("SetID=1");
  sets["Symbol"] = QByteArray("symbol");
  sets.Update();
  sets.Delete();
  EXPECT_EQ(Raw("SELECT group_concat(SetID) FROM tblCard"), "2");
  for (const char* table :
       {"tblCharacter", "tblCharacter_long", "tblLargeCard", "tblSet_long", "tblCard_long"}) {
    EXPECT_EQ(Raw(QString("SELECT COUNT(*) FROM %1").arg(table)), "0") << table;
  }
  EXPECT_EQ(Raw("SELECT group_concat(FontID) FROM tblFont"), "3");
  Raw("PRAGMA foreign_keys = ON; DELETE FROM tblSet");
  EXPECT_EQ(Raw("SELECT (SELECT COUNT(*) FROM tblFont) + (SELECT COUNT(*) FROM tblCard)"), "0");
}

// Whatever deletes the record; and one without originals deletes as well.
TEST_F(SchemaTest, AnOriginalGoesWithItsRecord) {
  const QString original =
      "INSERT INTO tblOriginal (TableName, RecordID, ColumnName, File) VALUES ('%1', %2, 'Picture', x'01')";
  Raw(original.arg("tblCard", "1") + ";" + original.arg("tblCard", "2") + ";" + original.arg("tblSet", "1") +
      ";" + original.arg("tblLargeCard", "1"));
  Raw("DELETE FROM tblCard WHERE CardID = 1");
  const QString left = "SELECT group_concat(TableName || RecordID) FROM tblOriginal";
  EXPECT_EQ(Raw(left), "tblCard2,tblLargeCard1,tblSet1");
  Raw("DELETE FROM tblSet");
  EXPECT_EQ(Raw(left), "~");
  EXPECT_EQ(Raw("SELECT COUNT(*) FROM tblOriginal_long"), "0");
}

TEST_F(SchemaTest, LookupsAreSearchesInAnIndexAndReadNoPictures) {
  const std::pair<const char*, const char*> searches[] = {
      {"SELECT CardID FROM tblCard WHERE SetID = 1 ORDER BY Nr", "COVERING INDEX tblCard_bySet (SetID=?)"},
      {"SELECT CardID FROM tblCard WHERE (SetID = 1) AND (Nr = 5)",
       "COVERING INDEX tblCard_bySet (SetID=? AND Nr=?)"},
      {"SELECT CardID FROM tblCard WHERE (SetID = 1) AND (CardID = 5)", "INTEGER PRIMARY KEY (rowid=?)"},
      {"SELECT CardID FROM tblCard WHERE CardTypeID = 1", "COVERING INDEX tblCard_byType"},
      {"SELECT CardID FROM tblCard WHERE CardBackID = 1", "COVERING INDEX tblCard_byBack"},
      {"SELECT CharacterID FROM tblCharacter WHERE (SetID = 1) AND (Nr = 5)", "(SetID=? AND Nr=?)"},
      {"SELECT LargeCardID FROM tblLargeCard WHERE (SetID = 1) AND (Nr = 5)", "(SetID=? AND Nr=?)"},
      {"SELECT tblCard.Title, tblCardType.UpperLeft FROM tblCardBack INNER JOIN (tblCardType INNER JOIN "
       "tblCard ON tblCardType.CardTypeID = tblCard.CardTypeID) ON tblCardBack.CardBackID = "
       "tblCard.CardBackID WHERE tblCard.SetID=1",
       "tblCard_bySet (SetID=?)"}};
  for (const auto& [query, expected] : searches) {
    const QString plan = Plan(query);
    EXPECT_TRUE(plan.contains(expected)) << query << "\n" << plan.toStdString();
    for (const char* bad : {"SCAN", "MATERIALIZE", "CO-ROUTINE", "LEFT-JOIN"})
      EXPECT_FALSE(plan.contains(bad)) << query << "\n" << plan.toStdString();
  }
}

}  // namespace
}  // namespace orv
