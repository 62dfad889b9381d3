#include <gtest/gtest.h>

#include <QImage>
#include <QSet>

#include "DeliveredFile.h"
#include "base/CodePage.h"

namespace orv {
namespace {

struct Group {
  int language;
  int edition;
  QString Where() const { return QString("LanguageID = %1 AND EditionID = %2").arg(language).arg(edition); }
};

class EachGroup : public ::testing::TestWithParam<Group> {};

TEST_P(EachGroup, OffersWhatNewRecordsTake) {
  const struct {
    const char* table;
    int least;
  } tables[] = {{"tblCardType", 12}, {"tblCardBack", 5}, {"tblArea", 10}, {"tblCharacterBack", 3}};
  for (const auto& [table, least] : tables) {
    EXPECT_GE(Delivered(QString("SELECT * FROM %1 WHERE %2").arg(table, GetParam().Where())).RecordCount(),
              least)
        << table;
  }
  for (const char* table : {"tblCardType", "tblCardBack"}) {
    EXPECT_TRUE(
        Delivered(QString("SELECT * FROM %1 WHERE %2 AND Original = 0").arg(table, GetParam().Where()))
            .IsEmpty());
  }
}

// The first card of a set takes the key of the first type as that of its back.
TEST_P(EachGroup, FirstTypesKeyIsABackToo) {
  const Recordset types = Delivered("SELECT * FROM tblCardType WHERE " + GetParam().Where() +
                                    " AND UsedInSet = 0 ORDER BY UpperLeft, Lowerleft, Number");
  const QString key = QString::number(types["CardTypeID"].Int32());
  EXPECT_EQ(Delivered("SELECT * FROM tblCardBack WHERE CardBackID = " + key + " AND " + GetParam().Where())
                .RecordCount(),
            1);
}

TEST_P(EachGroup, NamesAreFilledAndTellApart) {
  const QPair<QString, QStringList> lists[] = {{"tblCardType", {"UpperLeft", "UpperRight", "LowerLeft"}},
                                               {"tblCardBack", {"BackText"}},
                                               {"tblArea", {"Board", "Area"}},
                                               {"tblCharacterBack", {"BackText"}}};
  for (const auto& [table, columns] : lists) {
    QSet<QString> seen;
    for (Recordset rows = Delivered("SELECT * FROM " + table + " WHERE " + GetParam().Where()); !rows.IsEOF();
         rows.MoveNext()) {
      QString name;
      for (const QString& column : columns) name += rows[column].Text() + "/";
      EXPECT_FALSE(rows[columns[0]].Text().trimmed().isEmpty()) << qPrintable(table);
      EXPECT_FALSE(seen.contains(name)) << qPrintable(name);
      seen << name;
    }
  }
}

TEST_P(EachGroup, BacksHaveTheSizeOfTheirCards) {
  const QSize card = GetParam().edition == 2 ? QSize(150, 254) : QSize(161, 245);
  const QPair<QString, QSize> tables[] = {{"tblCardBack", card}, {"tblCharacterBack", {302, 254}}};
  for (const auto& [table, size] : tables) {
    for (Recordset rows = Delivered("SELECT * FROM " + table + " WHERE " + GetParam().Where()); !rows.IsEOF();
         rows.MoveNext()) {
      EXPECT_EQ(QImage::fromData(rows["Picture"].Get().Bytes()).size(), size)
          << qPrintable(rows["BackText"].Text());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(LanguagesAndEditions, EachGroup,
                         ::testing::Values(Group{1, 2}, Group{1, 3}, Group{2, 2}, Group{2, 3}, Group{3, 2},
                                           Group{3, 3}, Group{4, 2}, Group{4, 3}),
                         [](const auto& group) {
                           return "Language" + std::to_string(group.param.language) + "Edition" +
                                  std::to_string(group.param.edition);
                         });

TEST(Catalogues, LanguagesFormatsAndAlignments) {
  EXPECT_EQ(Delivered("SELECT * FROM tblLanguage").RecordCount(), 4);
  const char* formats[] = {"BMP", "JPG", "GIF"};
  for (int i = 0; i < 3; ++i) {
    const Recordset row = Delivered(QString("SELECT * FROM tblPicFormat WHERE PicFormatID = %1").arg(i + 1));
    EXPECT_EQ(row["PicFormat"].Text(), formats[i]);
  }
  // A new character takes alignment 2, which must be one of the first language.
  EXPECT_EQ(Delivered("SELECT * FROM tblAlignment WHERE AlignmentID = 2")["LanguageID"].Int32(), 1);
  for (int language = 1; language <= 4; ++language) {
    EXPECT_EQ(
        Delivered(QString("SELECT * FROM tblAlignment WHERE LanguageID = %1").arg(language)).RecordCount(),
        3);
  }
}

// Text files are written in the single-byte code page.
TEST(Catalogues, EveryTextIsInTheCodePage) {
  for (const char* table : {"tblCardType", "tblCardBack", "tblCharacterBack", "tblArea", "tblAlignment",
                            "tblLanguage", "tblSet", "tblCard", "tblCharacter", "tblLargeCard"}) {
    Recordset rows = Delivered(QString("SELECT * FROM %1").arg(table));
    const QStringList columns = rows.ColumnNames();
    for (; !rows.IsEOF(); rows.MoveNext()) {
      for (const QString& column : columns) {
        const Value value = rows[column].Get();
        if (!value.IsText()) continue;
        EXPECT_EQ(ToWindows1252(value.Text()).count('?'), value.Text().count('?'))
            << qPrintable(value.Text());
      }
    }
  }
}

}  // namespace
}  // namespace orv
