#include <gtest/gtest.h>

#include <QSet>

#include "DeliveredFile.h"
#include "base/CodePage.h"

namespace orv {
namespace {

struct Group {
  int language;
  int edition;
};

class EachGroup : public ::testing::TestWithParam<Group> {
 protected:
  QString Rows(const QString& table) const {
    return QString("SELECT * FROM %1 WHERE LanguageID = %2 AND EditionID = %3")
        .arg(table)
        .arg(GetParam().language)
        .arg(GetParam().edition);
  }
};

TEST_P(EachGroup, OffersWhatNewRecordsTake) {
  const std::pair<const char*, int> least[] = {
      {"tblCardType", 12}, {"tblCardBack", 5}, {"tblArea", 10}, {"tblCharacterBack", 3}};
  for (const auto& [table, count] : least) EXPECT_GE(Delivered(Rows(table)).RecordCount(), count) << table;
  for (const char* table : {"tblCardType", "tblCardBack"}) {
    EXPECT_TRUE(Delivered(Rows(table) + " AND Original = 0").IsEmpty()) << table;
  }
  // The first card of a set takes the key of the first type as that of its back.
  const Recordset types =
      Delivered(Rows("tblCardType") + " AND UsedInSet = 0 ORDER BY UpperLeft, Lowerleft, Number");
  const QString key = QString::number(types["CardTypeID"].Int32());
  EXPECT_FALSE(Delivered(Rows("tblCardBack") + " AND CardBackID = " + key).IsEmpty());
}

TEST_P(EachGroup, NamesAreFilledAndTellApart) {
  const QPair<QString, QStringList> lists[] = {{"tblCardType", {"UpperLeft", "UpperRight", "LowerLeft"}},
                                               {"tblCardBack", {"BackText"}},
                                               {"tblArea", {"Board", "Area"}},
                                               {"tblCharacterBack", {"BackText"}}};
  for (const auto& [table, columns] : lists) {
    QSet<QString> seen;
    ForEach(Delivered(Rows(table)), [&, &columns = columns](const Recordset& row) {
      QString name;
      for (const QString& column : columns) name += row[column].Text() + "/";
      EXPECT_FALSE(row[columns[0]].Text().trimmed().isEmpty()) << qPrintable(name);
      EXPECT_FALSE(seen.contains(name)) << qPrintable(name);
      seen << name;
    });
  }
}

TEST_P(EachGroup, BacksHaveTheSizeOfTheirCards) {
  const QSize card = GetParam().edition == 2 ? QSize(150, 254) : QSize(161, 245);
  for (const auto& [table, size] :
       {std::pair("tblCardBack", card), std::pair("tblCharacterBack", QSize(302, 254))}) {
    ForEach(Delivered(Rows(table)), [&, &size = size](const Recordset& row) {
      EXPECT_EQ(SizeOf(row["Picture"]), size) << qPrintable(row["BackText"].Text());
    });
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
  const auto text = [](const QString& sql, const char* column) { return Delivered(sql)[column].Text(); };
  EXPECT_EQ(Delivered("SELECT * FROM tblLanguage").RecordCount(), 4);
  const char* formats[] = {"BMP", "JPG", "GIF"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(text(QString("SELECT * FROM tblPicFormat WHERE PicFormatID = %1").arg(i + 1), "PicFormat"),
              formats[i]);
  }
  // A new character takes alignment 2, which must be one of the first language.
  EXPECT_EQ(text("SELECT * FROM tblAlignment WHERE AlignmentID = 2", "LanguageID"), "1");
  for (int language = 1; language <= 4; ++language) {
    const QString sql = QString("SELECT * FROM tblAlignment WHERE LanguageID = %1").arg(language);
    EXPECT_EQ(Delivered(sql).RecordCount(), 3);
  }
}

// Text files are written in the single-byte code page.
TEST(Catalogues, EveryTextIsInTheCodePage) {
  for (const char* table : {"tblCardType", "tblCardBack", "tblCharacterBack", "tblArea", "tblAlignment",
                            "tblLanguage", "tblSet", "tblCard", "tblCharacter", "tblLargeCard"}) {
    ForEach(Delivered(QString("SELECT * FROM %1").arg(table)), [](const Recordset& row) {
      for (const QString& column : row.ColumnNames()) {
        const Value value = row[column].Get();
        if (!std::holds_alternative<QString>(value.data())) continue;
        EXPECT_EQ(ToWindows1252(value.Text()).count('?'), value.Text().count('?'))
            << qPrintable(value.Text());
      }
    });
  }
}

}  // namespace
}  // namespace orv
