// What is composed, kept as operations: played on a raster it gives the very pixels.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <random>

#include "database/CurrentSet.h"
#include "forms/Playing.h"
#include "imaging/Drawing.h"
#include "output/OutputKinds.h"
#include "print/PrintedCards.h"
#include "state/modData.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

class DrawingTest : public testing::Test {
 protected:
  // How many sheets of the current set are played, each to the pixels that the surface has.
  static int PlayAll() {
    int sheets = 0;
    ForEachPrintedCard({}, [&](const PrintedCard& card) {
      EXPECT_EQ(card.failure, "") << qPrintable(card.record);
      if (card.sheet.HowDrawn() == nullptr) {
        ADD_FAILURE() << qPrintable(card.record);
        return false;
      }
      EXPECT_EQ(PlayDrawing(*card.sheet.HowDrawn()).Image(), card.sheet.Image()) << qPrintable(card.record);
      ++sheets;
      return true;
    });
    return sheets;
  }

  TestDatabase database_;
};

TEST_F(DrawingTest, OfTheSampleSets) {
  const QString file = database_.Path("delivered.mdb");
  ASSERT_TRUE(QFile::copy(ORV_DELIVERED_DATABASE, file));
  modData::cn = Connection();
  modData::OpenDatabase([] {}, file);
  ASSERT_TRUE(modData::DatabaseFound);
  modData::OpenEditable("SELECT * FROM tblSet ORDER BY SetName", modData::rsSet);
  for (const char* name : {"The Saltwind Coast", "The Winter Roads"}) {
    modData::rsSet.FindFirst(QString("SetName = '%1'").arg(name));
    database_.SelectSet(modData::rsSet["SetID"].Int16());
    EXPECT_GT(PlayAll(), 5) << name;
  }
}

TEST_F(DrawingTest, OfRandomSets) {
  std::mt19937 random(7);
  const auto pick = [&](std::initializer_list<const char*> values) {
    return QString(*(values.begin() + random() % values.size()));
  };
  const auto number = [&](int least, int most) {
    return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
  };
  const auto picture = [&] { return TestDatabase::GradientPicture(number(1, 250), number(1, 255)); };
  const auto fill = [&](const char* table, int id, const QString& texts,
                        std::initializer_list<const char*> columns) {
    database_.Execute(
        QString("UPDATE %1_rows SET UsePicture = %2, UseFrame = %3, PicTop = %4, PicLeft = %5, %6 "
                "WHERE %7ID = %8")
            .arg(table, pick({"0", "-1", "-1"}), pick({"0", "-1"}), QString::number(number(-900, 900)),
                 QString::number(number(-900, 900)), texts, QString(table).mid(3), QString::number(id)));
    for (const char* column : columns) {
      if (random() % 3 != 0) database_.Store(table, id, column, picture());
    }
  };
  const auto text = [&] {
    return pick({"", "Gefährte",
                 "Lose a life! The bridge, once: STRENGTH +2 over-long-word-that-is-cut-at-the-edge",
                 "ÀÉ ij\r\n\r\nx  y", "e\u0301lan שלום"});
  };
  for (const int edition : {2, 3}) {
    const int set = database_.AddSet(QString("Random %1").arg(edition), edition);
    for (int nr = 1; nr <= 40; ++nr) {
      fill("tblCard", database_.AddCard(set, nr, pick({"A", "The Ünder Stone of the long, long Night"})),
           QString(
               "CardTypeID = %1, CardBackID = %1, OneLine = %2, PicHeight = %3, Resize = %2, Artist = '%4', "
               "BoldText = '%5', Information = '%6', BGColour = %7")
               .arg(edition == 2 ? 1 : 4)
               .arg(pick({"0", "-1"}))
               .arg(number(20, 168))
               .arg(pick({"", "A. Painter", "Jörg Ä."}), text().left(9), text())
               .arg(number(0, 0xFFFFFF)),
           {"Picture", "Background"});
      if (edition == 3) continue;
      fill("tblCharacter", database_.AddCharacter(set, nr, "ADA"),
           QString("Abilities = '%1', PicWidth = %2, Strength = '+%3', CharacterBackID = 1")
               .arg(text())
               .arg(number(15, 154))
               .arg(number(1, 9)),
           {"Picture", "Background", "PlayingPiece"});
      fill("tblLargeCard", database_.AddLargeCard(set, nr, "A large one"),
           QString("Information = '%1', PicWidth = %2, Resize = %3, BGColour = %4")
               .arg(text())
               .arg(number(22, 172))
               .arg(pick({"0", "-1"}))
               .arg(number(0, 0xFFFFFF)),
           {"Picture", "BGPicture", "LargeCardBack"});
    }
    database_.SelectSet(set);
    EXPECT_EQ(PlayAll(), edition == 2 ? 160 : 40);
  }
}

TEST_F(DrawingTest, NothingIsKeptUnasked) {
  Surface surface;
  surface.Place(0, 0, 20, 20);
  {
    const KeepDrawings keep;
    surface.Print("x");
    EXPECT_NE(surface.Image().HowDrawn(), nullptr);
  }
  EXPECT_EQ(surface.Image().HowDrawn(), nullptr);
  surface.Print("y");
  const KeepDrawings keep;
  EXPECT_EQ(surface.Image().HowDrawn(), nullptr) << "what was drawn unasked is missing in it";
  surface.Print("z");
  EXPECT_EQ(PlayDrawing(*surface.Image().HowDrawn()).Image(), surface.Image().Image());
}

}  // namespace
}  // namespace orv
