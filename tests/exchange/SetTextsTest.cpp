#include "exchange/SetTexts.h"

#include <gtest/gtest.h>

#include "base/RuntimeError.h"
#include "state/modData.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

class SetTextsTest : public testing::Test {
 protected:
  SetTextsTest() {
    set_ = database_.AddSet("Harbour", 2);
    for (int nr : {1, 2}) database_.AddCard(set_, nr, nr == 1 ? "Eel" : "Net, \"torn\"");
    database_.Execute(
        "UPDATE tblCard SET Information = 'One' || char(13, 10) || 'Two', Artist = 'Zoë' WHERE Nr = 1");
  }
  QByteArray Table() { return TextsOfSet(modData::cn, set_); }
  // The failure's description, or how many cards have changed.
  QString BringIn(const QByteArray& table) {
    try {
      return QString::number(BringInTexts(modData::cn, set_, table));
    } catch (const RuntimeError& error) {
      return error.Description();
    }
  }
  TestDatabase database_;
  int set_ = 0;
};

TEST_F(SetTextsTest, OutAndInChangesNothing) {
  const QByteArray table = Table();
  EXPECT_EQ(table, QString("Nr,Title,Type,Number,Bold,Information,Copies,Artist,New title\r\n"
                           "1,Eel,EVENT (1),1,,\"One\r\nTwo\",1,Zoë,\r\n"
                           "2,\"Net, \"\"torn\"\"\",EVENT (1),1,,,1,,\r\n")
                       .toUtf8());
  EXPECT_EQ(BringIn(table), "0");
  EXPECT_EQ(BringIn("\xEF\xBB\xBF" + QByteArray(table).replace("\r\n", "\n")), "0");
}

TEST_F(SetTextsTest, WhatIsChangedIsStored) {
  EXPECT_EQ(BringIn("title,nr,information,New title,Copies\n\"Net, \"\"torn\"\"\",2,\"Eins\nZwei\",Netz,3\n"),
            "1");
  EXPECT_EQ(database_.Scalar("SELECT Title || Copies || Information FROM tblCard WHERE Nr = 2"),
            "Netz3Eins\r\nZwei");
}

TEST_F(SetTextsTest, AsASpreadsheetMayWriteIt) {
  EXPECT_EQ(BringIn("\xEF\xBB\xBFNr;Title;Information\r\n1;Eel;\"One; two, three\"\r\n"), "1");
  EXPECT_EQ(database_.Scalar("SELECT Information FROM tblCard WHERE Nr = 1"), "One; two, three");
  const QByteArray megabyte(1 << 20, 'x');
  EXPECT_EQ(BringIn("Nr,Title,Bold\r1,Eel,\"" + megabyte + "\""), "1");
  EXPECT_EQ(database_.Scalar("SELECT LENGTH(BoldText) FROM tblCard WHERE Nr = 1"), "1048576");
}

TEST_F(SetTextsTest, CardsOfOneNumberAndTitle) {
  database_.AddCard(set_, 1, "Eel");
  EXPECT_EQ(BringIn(Table()), "0");
  EXPECT_EQ(BringIn("Nr,Title,Bold\n1,Eel,first\n1,Eel,second\n"), "2");
  EXPECT_EQ(database_.Scalar("SELECT group_concat(BoldText, ' ') FROM tblCard WHERE Nr = 1"), "first second");
  EXPECT_EQ(BringIn("Nr,Title,Bold\n1,Eel,third\n"),
            "Line 2: the set has 2 such cards, so there must be a line for each.");
  EXPECT_EQ(BringIn("Nr,Title\n1,Eel\n1,Eel\n1,Eel\n"), "Line 4: card 1 stood in a line before.");
  EXPECT_EQ(database_.Scalar("SELECT group_concat(BoldText, ' ') FROM tblCard WHERE Nr = 1"), "first second");
}

TEST_F(SetTextsTest, ALineThatIsWrongIsToldAndNothingIsStored) {
  const QByteArray head = "Nr,Title,Type,Bold,Copies\n1,Eel,EVENT (1),New,2\n";
  const struct {
    QByteArray table;
    const char* told;
  } cases[] = {{head + "2,Other,EVENT (1),,1\n", "Line 3: the set has no card 2 with the title \"Other\"."},
               {head + "1,Eel,EVENT (1),,1\n", "Line 3: card 1 stood in a line before."},
               {head + "\n2,\"Net, \"\"torn\"\"\",NONE,,1\n", "Line 4: the set is offered no type \"NONE\"."},
               {head + "2,\"Net, \"\"torn\"\"\",EVENT (1),\"a\nb\",1\n3,x\n", "Line 5: 2 fields where"},
               {head + "2,\"Net, \"\"torn\"\"\",EVENT (1),,-1\n", "Line 3: \"-1\" is no number of copies."},
               {head + "2,\"Net\n", "Line 3: a field in quotes has no end."},
               {head + "2,Net\"\n", "Line 3: a quote stands where none may."},
               {head + "2,\xFF\n", "Line 3: the text is not UTF-8."},
               {head + QByteArray("2,\"N\0et\"\n", 9), "Line 3: a zero byte stands in the text."},
               {QByteArray("\xFF\xFEN\0r\0", 6), "Line 1: a zero byte"},
               {"Nr,Titel\n", "Line 1: \"Titel\" is no column of such a table."},
               {"Nr,Bold\n", "Line 1: there is no column Title."},
               {"", "Line 1: there is no table."}};
  for (const auto& [table, told] : cases) {
    EXPECT_TRUE(BringIn(table).startsWith(told)) << told << ": " << qPrintable(BringIn(table));
    EXPECT_EQ(database_.Scalar("SELECT BoldText FROM tblCard WHERE Nr = 1"), "") << told;
  }
}

}  // namespace
}  // namespace orv
