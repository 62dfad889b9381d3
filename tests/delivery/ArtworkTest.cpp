#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>

#include "artwork/Draw.h"
#include "artwork/Outline.h"
#include "base/Files.h"
#include "builtin/BuiltIn.h"

namespace orv::artwork {
namespace {

// The picture p of a script.
QImage Drawn(const QByteArray& text) {
  const QTemporaryDir folder;
  ReplaceFile(folder.filePath("test.art"), text);
  return Draw(Script::Load(folder.path()), "p");
}

std::string ErrorOf(const QByteArray& text) {
  try {
    Drawn(text);
  } catch (const std::exception& error) {
    return error.what();
  }
  return "";
}

QColor At(const QImage& image, int x, int y) {
  return image.pixelColor(x, y);
}

TEST(BuiltIn, BitmapsHaveTheirSizes) {
  using Bitmap = std::pair<QByteArray, QSize>;
  for (const auto& [bytes, size] :
       {Bitmap(builtin::CardBack2nd(), {150, 254}), Bitmap(builtin::CardBack3rd(), {161, 245}),
        Bitmap(builtin::CardFace3rd(), {161, 245}), Bitmap(builtin::CharacterSheet(), {302, 254})}) {
    EXPECT_TRUE(bytes.startsWith("BM"));
    EXPECT_EQ(QImage::fromData(bytes).size(), size);
  }
}

// White and black texts are printed on these places of the sheet.
TEST(BuiltIn, SheetSuitsTheTextsPrintedOnIt) {
  const QImage sheet = QImage::fromData(builtin::CharacterSheet());
  for (const QRect& dark : {QRect(95, 2, 110, 9), QRect(50, 244, 62, 8), QRect(190, 244, 62, 8)}) {
    for (int x = dark.left(); x <= dark.right(); ++x)
      EXPECT_LT(At(sheet, x, dark.center().y()).lightness(), 110) << x;
  }
  for (int x = 142; x < 286; x += 5) {
    for (int y = 18; y < 230; y += 5) EXPECT_GT(At(sheet, x, y).lightness(), 130) << x << "," << y;
  }
}

TEST(Script, PaintsWhereItIsToldAndShapesKeepTheirStyleToThemselves) {
  const QImage image = Drawn(
      "shape dot c=#00ff00\n  paint $c\n  rect -2 -2 4 4\n"
      "shape pale\n  alpha .1\n  rect 0 0 2 2\n"
      "picture p 40 20\n  sky #ffffff\n  paint #ff0000  // a comment\n  pale 36 1\n"
      "  dot 20 10\n  dot 30 10 2 c=#0000ff\n  rect 2 2 6 6\n");
  EXPECT_EQ(image.size(), QSize(40, 20));
  EXPECT_EQ(At(image, 3, 3), QColor("#ff0000"));
  EXPECT_EQ(At(image, 1, 3), QColor("#ffffff"));
  EXPECT_EQ(At(image, 8, 3), QColor("#ffffff"));
  EXPECT_EQ(At(image, 18, 8), QColor("#00ff00"));
  EXPECT_EQ(At(image, 22, 8), QColor("#ffffff"));
  EXPECT_EQ(At(image, 27, 7), QColor("#0000ff")) << "twice the size";
}

TEST(Script, IsTheSameEachTime) {
  const QByteArray text =
      "shape s\n  paint #206040\n  relief 2 shine=.5\n  grain .5\n  blob -4,0 0,-4 4,0* 0,4\n"
      "picture p 60 40\n  sky #102040 #c08060\n  stars 20 20\n  clouds 0 20 #ffffff #404040\n"
      "  ridge 25 10 20 #808080 #202020 #404040\n  water 25 #406080 #001020\n  scatter s 6 5 5 50 30 1 2\n";
  EXPECT_EQ(Drawn(text), Drawn(text));
}

TEST(Script, FaultsNameTheirLine) {
  const struct {
    QByteArray text;
    std::string error;
  } faults[] = {
      {"picture p 9 9\n  sky #fff\n  blurb 1 2\n", "test.art:3: no command or shape blurb"},
      {"picture p 9 9\n  oval 1 x 2\n", "test.art:2: no number: x"},
      {"picture p 9 9\n  paint red\n", "test.art:2: no colour: red"},
      {"shape s a=1\n  oval 0 0 $b\npicture p 9 9\n  s 1 1\n", "test.art:2: no parameter b"},
      {"shape s\n  oval 0 0 1\npicture p 9 9\n  s 1 1 c=2\n", "test.art:4: s has no c"},
      {"shape s\n  s 0 0\npicture p 9 9\n  s 1 1\n", "test.art:2: shapes draw each other without end"},
      {"  oval 1 1 1\n", "test.art:1: a line outside of pictures and shapes"},
      {"picture q 9 9\n", "no picture p"},
  };
  for (const auto& fault : faults) EXPECT_EQ(ErrorOf(fault.text), fault.error) << fault.text.constData();
}

TEST(Outline, GoesThroughItsPointsAndKeepsCorners) {
  const QPainterPath square = Blob({"0,0*", "10,0*", "10,10*", "0,10*"});
  EXPECT_EQ(square.boundingRect(), QRectF(0, 0, 10, 10));
  EXPECT_TRUE(square.contains(QPointF(9.9, 9.9)));
  const QPainterPath round = Blob({"0,0", "10,0", "10,10", "0,10"});
  EXPECT_GT(round.boundingRect().height(), 10.5) << "a smooth curve swings out between its points";
  const QPainterPath limb = Limb("2:6", {"0,0*", "20,0*"});
  EXPECT_TRUE(limb.contains(QPointF(19, 2.5)));
  EXPECT_FALSE(limb.contains(QPointF(1, 2.5)));
  EXPECT_TRUE(limb.contains(QPointF(22, 0))) << "round ends";
}

}  // namespace
}  // namespace orv::artwork
