#include "base/TextOrder.h"
#include "records/inner/Dialect.h"

#include "platform/records/Sample.h"

namespace orv {
namespace {

struct QueryCase {
  const char* text;
  const char* columns;  // those that are looked at
  const char* rows;
};

// The queries of the program, each shape with its blanks.
const QueryCase kQueries[] = {
    {"SELECT * FROM tblSet ORDER BY SetName", "SetID SetName AutoNumber", "3|Oase|0 / 2|Öde|0 / 1|zeta|0"},
    {"SELECT * FROM tblCard WHERE SetID = 1 ORDER BY Nr", "CardID Nr Title",
     "2|1|Alpha / 1|2|Bravo / 3|2|alpha / 4|3|Delta / 5|4|"},
    {"SELECT * FROM tblCharacter WHERE SetID = 1 ORDER BY Nr", "Name", "Gamma / Beta / Nowhere"},
    {"SELECT * FROM tblLargeCard WHERE SetID = 1 ORDER BY Nr", "Title", "One / Two"},
    {"SELECT * FROM tblFont WHERE FontID = 2", "Font Size Bold", "Arial|9|0"},
    {"SELECT CardID FROM tblCard WHERE CardTypeID = 1", "CardID", "1 / 5 / 6"},
    {"SELECT * FROM tblLanguage", "LanguageID Language", "1|English / 2|Deutsch"},
    {"SELECT * FROM tblCardType WHERE EditionID = 2 AND LanguageID = 1 ORDER BY LanguageID, UpperLeft, "
     "LowerLeft, Number",
     "CardTypeID", "5 / 3 / 1 / 2 / 4"},
    {"SELECT * FROM tblCardBack WHERE EditionID = 2 AND LanguageID = 1 ORDER BY LanguageID, Original, "
     "BackText",
     "Backtext Original", "Älter|-1 / night|0 / Night|0"},
    {"SELECT * FROM tblCharacterBack WHERE EditionID = 2 AND LanguageID = 1 ORDER BY LanguageID, Original, "
     "BackText",
     "BackText", "C / a / b"},
    {"SELECT *, [Board] & \" : \" & [Area] AS StartArea FROM tblArea WHERE EditionID = 2 AND LanguageID = 1 "
     "ORDER BY LanguageID, Board, Area",
     "AreaID StartArea", "3| : Elan / 4|Inner :  / 2|outer : East / 1|Outer : Élan"},
    {"SELECT * FROM tblAlignment WHERE LanguageID = 1 ORDER BY LanguageID, AlignmentNr", "Alignment",
     "Kind / Wicked"},
    {"SELECT tblCard.Nr, tblCard.Title, tblCard.BoldText, tblCard.Information FROM tblCard WHERE "
     "tblCard.SetID = 1 ORDER BY tblCard.Nr",
     "Nr Title BoldText Information", "1|Alpha|| / 2|Bravo|bold|info / 2|alpha|| / 3|Delta|| / 4|||"},
    {"SELECT tblLargeCard.Nr, tblLargeCard.Title, tblLargeCard.Information FROM tblLargeCard WHERE "
     "tblLargeCard.SetID = 1 ORDER BY tblLargeCard.Nr",
     "Nr Title Information", "1|One| / 2|Two|x"},
    {"SELECT tblCharacter.Nr, tblCharacter.Name, tblCharacter.Strength, tblCharacter.Craft, "
     "tblCharacter.Gold, tblCharacter.Lives, tblAlignment.Alignment, tblArea.Board, tblArea.Area, "
     "tblCharacter.Abilities FROM tblArea INNER JOIN (tblAlignment INNER JOIN tblCharacter ON "
     "tblAlignment.AlignmentID = tblCharacter.AlignmentID) ON tblArea.AreaID = tblCharacter.StartingAreaID "
     "WHERE tblCharacter.SetID = 1 ORDER BY tblCharacter.Nr",
     "Nr Name Strength Alignment Board Area", "1|Gamma|2|Wicked|Inner|~ / 2|Beta|3|Kind|Outer|Élan"},
    {"SELECT tblCardType.CardTypeID, [UpperLeft] & [LowerLeft] & \" (\" & [Number] & \")\" AS DropText FROM "
     "tblCardType WHERE (tblCardType.LanguageID = 1) AND (tblCardType.EditionID = 2) AND "
     "((tblCardType.UsedInSet = 0) OR (tblCardType.UsedInSet = 1)) ORDER BY UpperLeft, Lowerleft, Number",
     "CardTypeID DropText", "5|atnalow (5) / 3|ÄtnaLow () / 1|Spirit (1) / 2|spirit (2)"},
    {"SELECT tblCardType.CardTypeID, [UpperLeft] & \" \" & [UpperRight] & \" (\" & [Number] & \")\" AS "
     "DropText FROM tblCardType WHERE (tblCardType.LanguageID = 1) AND (tblCardType.EditionID = 3) AND "
     "((tblCardType.UsedInSet = 0) OR (tblCardType.UsedInSet = 1)) ORDER BY UpperLeft, Lowerleft, Number",
     "DropText", "Third Side (6)"},
    {"SELECT tblCardBack.CardBackID, tblCardBack.BackText FROM tblCardBack WHERE tblCardBack.LanguageID = 1 "
     "AND tblCardBack.EditionID = 2 ORDER BY tblCardBack.BackText",
     "CardBackID BackText", "2|Älter / 1|night / 3|Night"},
    {"SELECT * FROM tblCardType ORDER BY LanguageID, UpperLeft, LowerLeft, Number", "CardTypeID",
     "5 / 3 / 1 / 2 / 6 / 4 / 7"},
    {"SELECT * FROM tblCardBack ORDER BY LanguageID, Original, BackText", "BackText",
     "Älter / Three / night / Night"},
    {"SELECT tblCard.CardID, tblCard.Nr, tblCard.Title, tblCardType.UpperLeft, tblCardType.LowerLeft, "
     "tblCardType.UpperRight, tblCardType.LowerRight, tblCard.Number, tblCardBack.BackText, "
     "tblCard.BoldText, tblCard.Information FROM tblCardBack INNER JOIN (tblCardType INNER JOIN tblCard ON "
     "tblCardType.CardTypeID = tblCard.CardTypeID) ON tblCardBack.CardBackID = tblCard.CardBackID WHERE "
     "tblCard.SetID=1 ORDER BY tblCard.Nr, tblCard.Title",
     "CardID Nr UpperLeft Number BackText",
     "2|1|spirit|2|Älter / 3|2|Ätna|~|night / 1|2|Spirit|1|night / 5|4|Spirit||Night"},
    {"SELECT Count(tblCardType.CardTypeID) AS NrSort, tblCardType.UpperLeft, tblCardType.LowerLeft FROM "
     "tblCardType INNER JOIN tblCard ON tblCardType.CardTypeID = tblCard.CardTypeID WHERE tblCard.SetID =  1 "
     "GROUP BY tblCardType.UpperLeft, tblCardType.LowerLeft ORDER BY Count(tblCardType.CardTypeID) DESC , "
     "tblCardType.UpperLeft, tblCardType.LowerLeft",
     "NrSort LowerLeft", "3|~ / 1|Low"},
    {"SELECT Count(tblCardType.CardTypeID) AS NrSort, tblCardType.UpperLeft, tblCardType.UpperRight FROM "
     "tblCardType INNER JOIN tblCard ON tblCardType.CardTypeID = tblCard.CardTypeID WHERE tblCard.SetID =  1 "
     "GROUP BY tblCardType.UpperLeft, tblCardType.UpperRight ORDER BY Count(tblCardType.CardTypeID) DESC , "
     "tblCardType.UpperLeft, tblCardType.UpperRight",
     "NrSort UpperLeft UpperRight", "2|Spirit|Spirit / 1|Ätna|Up / 1|spirit|x"},
    {"SELECT Count(tblCardBack.CardBackID) AS NrBack, tblCardBack.BackText FROM tblCardBack INNER JOIN "
     "tblCard ON tblCardBack.CardBackID = tblCard.CardBackID WHERE tblCard.SetID =  1 GROUP BY "
     "tblCardBack.BackText ORDER BY Count(tblCardBack.CardBackID) DESC , tblCardBack.BackText",
     "NrBack", "4 / 1"},
    // What queries may hold beyond these.
    {"  select Title from tblCard where Title = \"ALPHA\" and SetID=1 ; ", "Title", "Alpha / alpha"},
    {"SELECT CardID FROM tblCard WHERE \"brav\" & \"O\" = Title", "CardID", "1"},
    {"SELECT Area FROM tblArea WHERE Area = 'elan'", "Area", "Elan"},
    {"SELECT \"it's \"\"so\"\"\" & 1 + 1 AS t FROM tblLanguage WHERE LanguageID = 1", "t", "it's \"so\"2"},
    {"SELECT CardTypeID, [UpperLeft] & [Number] AS t FROM tblCardType WHERE EditionID = 2 ORDER BY t DESC, 1",
     "CardTypeID", "4 / 2 / 1 / 7 / 5 / 3"},
    {"SELECT CardID FROM tblCard WHERE CardTypeID IN (SELECT CardTypeID FROM tblCardType WHERE UpperLeft = "
     "\"SPIRIT\" ORDER BY UpperLeft) ORDER BY CardID DESC LIMIT 2",
     "CardID", "6 / 5"},
    {"SELECT Language FROM tblLanguage UNION SELECT PicFormat FROM tblPicFormat ORDER BY Language",
     "Language", "BMP / Deutsch / English / GIF / JPG"},
    {"SELECT DISTINCT SetID FROM tblCard -- all\n/* of */ ORDER BY SetID DESC", "SetID", "2 / 1"},
};

class DialectTest : public Sample {};

TEST_F(DialectTest, EachQueryGivesItsRowsAndAnEditableRecordsetTheSameOrder) {
  for (const QueryCase& query : kQueries) {
    const QString text = query.text;
    const QStringList columns = QString(query.columns).split(' ');
    EXPECT_EQ(Rows(Snapshot(text), columns).toStdString(), query.rows) << query.text;
    // A row that can be edited is that of one table, and its key stands among the columns.
    const bool has_key = !text.contains("tblCharacter.Name") && !text.startsWith("SELECT tblCard.Nr") &&
                         !text.startsWith("SELECT tblLargeCard.Nr");
    if (text.contains("ORDER BY") && Translate(text).plain && has_key) {
      EXPECT_EQ(Rows(Editable(text), columns).toStdString(), query.rows) << query.text;
    }
  }
}

TEST_F(DialectTest, WhatCantBeUnderstoodIsAnError) {
  const char* const texts[] = {"",
                               "UPDATE tblCard SET Nr = 1",
                               "SELECT",
                               "SELECT Nr FROM tblCard WHERE Title = \"x",
                               "SELECT [Nr FROM tblCard",
                               "SELECT (Nr FROM tblCard",
                               "SELECT Nr) FROM tblCard",
                               "SELECT Nr FROM tblCard ORDER BY Nr,",
                               "SELECT Nr FROM tblNowhere",
                               "SELECT [Nowhere] & \"x\" FROM tblCard",
                               "SELECT Nr /* FROM tblCard"};
  for (const char* text : texts) EXPECT_EQ(ErrorOf([&] { Snapshot(text); }), 3000) << text;
  // Without a key among its columns, or not a row of a table, nothing can be edited.
  for (const char* text : {"SELECT Nr FROM tblCard", "SELECT CardID FROM tblCard GROUP BY CardID",
                           "SELECT DISTINCT CardID FROM tblCard"}) {
    EXPECT_EQ(ErrorOf([&] { Editable(text); }), 3000) << text;
  }
}

TEST(CollationTest, SortsLettersBesideTheirBaseAndKeepsThemApart) {
  // Each before the next.
  const char* const ascending[] = {"",    " ",     "1",       "a",      "á",       "ä", "ä b c",
                                   "ab",  "äc",    "Az",      "B",      "E\u0301", "f", "Oase",
                                   "Öde", "ode z", "strasse", "straße", "strata",  "z", "я"};
  for (size_t i = 0; i < std::size(ascending); ++i) {
    for (size_t j = 0; j < std::size(ascending); ++j) {
      const int order = CompareText(QString::fromUtf8(ascending[i]), QString::fromUtf8(ascending[j]));
      EXPECT_EQ(order, (i > j) - (i < j)) << ascending[i] << " against " << ascending[j];
    }
  }
  const std::pair<const char*, const char*> equal[] = {
      {"aBc", "AbC"}, {"ÄÖÜ", "äöü"}, {"é", "e\u0301"}, {"ŁÓDŹ", "łódź"}};
  for (const auto& [a, b] : equal) EXPECT_EQ(CompareText(QString::fromUtf8(a), QString::fromUtf8(b)), 0) << a;
}

}  // namespace
}  // namespace orv
