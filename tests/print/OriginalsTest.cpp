// A picture of which there is a finer one is printed in the finer one's dots, where the picture stands.
#include <gtest/gtest.h>

#include <QBuffer>

#include "forms/Playing.h"
#include "pictures/FittedPicture.h"
#include "print/PdfScene.h"
#include "print/PrintedCards.h"

namespace orv {
namespace {

constexpr int kTimes = 4;
constexpr QRect kMarker(200, 120, 16, 16);

// Stripes that a picture of a quarter of the size shows as plain grey, and a marker.
QImage Pattern(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.setPixel(x, y, x % kTimes < kTimes / 2 ? 0xFF000000 : 0xFFFFFFFF);
  }
  for (int y = 0; y < kMarker.height(); ++y) {
    for (int x = 0; x < kMarker.width(); ++x) {
      image.setPixel(kMarker.x() + x, kMarker.y() + y, qRgb(255, 0, 255));
    }
  }
  return image;
}

QByteArray Encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, format, 100));
  return bytes;
}

// A photo that lies on its side, and says so.
QByteArray OnItsSide(const QImage& image) {
  const QByteArray exif(
      "\xff\xe1\0\x22"
      "Exif\0\0II\x2a\0\x8\0\0\0\1\0\x12\1\3\0\1\0\0\0\6\0\0\0\0\0\0\0",
      36);
  return Encoded(image.transformed(QTransform().rotate(-90)), "jpg").insert(2, exif);
}

// What is seen of the pattern, in dots of the card. A piece shows it twice; the left one is looked at.
struct Seen {
  QPointF marker;
  int contrast = 0;  // of the stripes beside it
};

Seen Look(const QImage& image, double times, QPointF corner) {
  Seen seen;
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < std::min(image.width(), int(152 * times)); ++x) {
      const QRgb pixel = image.pixel(x, y);
      if (qRed(pixel) < 180 || qGreen(pixel) > 90 || qBlue(pixel) < 180) continue;
      seen.marker += QPointF(x + 0.5, y + 0.5);
      ++count;
    }
  }
  EXPECT_GT(count, 0) << "no marker";
  if (count == 0) return seen;
  seen.marker /= count;
  int darkest = 255, lightest = 0;
  for (int x = 0; x < 8 * times; ++x) {
    const int grey = qGray(image.pixel(int(seen.marker.x() + 4 * times) + x, int(seen.marker.y())));
    darkest = std::min(darkest, grey);
    lightest = std::max(lightest, grey);
  }
  seen.contrast = lightest - darkest;
  seen.marker = seen.marker / times - corner;
  return seen;
}

class OriginalsTest : public PdfScene, public testing::Test {
 protected:
  void Fit(const char* table, int id, const char* column, const QByteArray& file) {
    FittedPicture picture(table, column);
    const auto field = [&] {
      return modData::OpenSnapshot(
          QString("SELECT %1 FROM %2 WHERE %3ID = %4").arg(column, table, QString(table).mid(3)).arg(id));
    };
    picture.Show(id, field()[column]);
    picture.Take(file);
    const FittedPicture::Made made = picture.Make(1.0 / kTimes);
    database_.Store(table, id, column, made.bytes);
    picture.Keep(1.0 / kTimes, made);
  }
  bool IsFineInThePdf() {
    return std::ranges::any_of(DotsOfPictures(), [](int dots) { return std::abs(dots - 384) < 8; });
  }
};

TEST_F(OriginalsTest, ArePrintedWhereTheirPicturesStand) {
  const struct {
    const char* kind;
    int edition;
    const char *table, *column, *place;
    bool on_its_side;
  } rows[] = {{"cards", 2, "tblCard", "Picture", "PicLeft = -375, PicTop = -150, PicHeight = 90", false},
              {"cards", 2, "tblCard", "Picture", "PicLeft = 30, PicTop = 45, PicHeight = 90", true},
              {"cards", 3, "tblCard", "Picture", "PicLeft = -45, PicHeight = 90, Resize = -1", false},
              {"cards", 2, "tblCard", "Background", "UsePicture = 0", false},
              {"characters", 2, "tblCharacter", "Picture", "PicLeft = -150, PicTop = -75", false},
              {"characters", 2, "tblCharacter", "Background", "UsePicture = 0", true},
              {"pieces", 2, "tblCharacter", "PlayingPiece", "PPLeft = -75, PPTop = 150", false},
              {"large", 2, "tblLargeCard", "Picture", "PicLeft = -75, PicTop = -45", true},
              {"large", 2, "tblLargeCard", "BGPicture", "UsePicture = 0", false}};
  int number = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(QString("%1 %2 %3").arg(++number).arg(row.kind, row.column).toStdString());
    const int set = database_.AddSet(QString("Set %1").arg(number), row.edition);
    const QString table = row.table;
    const int id = table == "tblCard"        ? database_.AddCard(set, 1, "")
                   : table == "tblCharacter" ? database_.AddCharacter(set, 1, "")
                                             : database_.AddLargeCard(set, 1, "");
    database_.Execute(QString("UPDATE %1_rows SET UsePicture = -1, %2 WHERE %3ID = %4")
                          .arg(table, row.place, table.mid(3))
                          .arg(id));
    const QImage pattern = Pattern(480, 400);
    Fit(row.table, id, row.column, row.on_its_side ? OnItsSide(pattern) : Encoded(pattern, "png"));
    database_.SelectSet(set);
    const auto& options = {std::pair{"paper", "card"}, {"backs", "none"}, {"kinds", row.kind}};
    Print(options);
    EXPECT_TRUE(IsFineInThePdf());
    PrintOptions wanted;
    SetPrintOption(wanted, "kinds", row.kind);
    ForEachPrintedCard(wanted, [&](const PrintedCard& card) {
      const QImage page = Page(1, 96 * kTimes);
      const QPointF edge(page.width() / double(kTimes) - card.front.width(),
                         page.height() / double(kTimes) - card.front.height());
      const Seen stored = Look(card.sheet.Image().copy(card.front), 1, {});
      EXPECT_LT(stored.contrast, 60);
      const Seen printed = Look(page, kTimes, edge / 2);
      const Seen large = Look(Enlarged(card.sheet, kTimes)
                                  .Image()
                                  .copy(0, 0, card.front.width() * kTimes, card.front.height() * kTimes),
                              kTimes, {});
      for (const Seen& seen : {printed, large}) {
        EXPECT_GT(seen.contrast, 180);
        EXPECT_LT(std::hypot(seen.marker.x() - stored.marker.x(), seen.marker.y() - stored.marker.y()), 1);
      }
      for (const Finding& finding : card.findings) EXPECT_FALSE(finding.text.contains("dots an inch"));
      return true;
    });
  }
}

TEST_F(OriginalsTest, OfAnotherPictureOrBrokenAreLeftAlone) {
  OpenCards(1);
  database_.Execute("UPDATE tblCard_rows SET UsePicture = -1, PicHeight = 90");
  Fit("tblCard", 1, "Picture", Encoded(Pattern(480, 400), "png"));
  database_.SelectSet(modData::CurrentSetID);
  Print({{"paper", "card"}});
  EXPECT_TRUE(IsFineInThePdf());
  database_.Store("tblOriginal", 1, "File", "no picture");
  EXPECT_EQ(Print({{"paper", "card"}}).not_drawn, QStringList());
  EXPECT_FALSE(IsFineInThePdf());
  Fit("tblCard", 1, "Picture", Encoded(Pattern(480, 400), "png"));
  database_.Store("tblCard", 1, "Picture", TestDatabase::PlainPicture(120, 100, kWhite));
  database_.SelectSet(modData::CurrentSetID);
  Print({{"paper", "card"}});
  EXPECT_FALSE(IsFineInThePdf());
}

// A photo of many dots would make a file too large to be sent.
TEST_F(OriginalsTest, HaveNoMoreDotsThanAPrinter) {
  OpenCards(1);
  database_.Execute("UPDATE tblCard_rows SET UsePicture = -1, PicHeight = 90");
  FittedPicture picture("tblCard", "Picture");
  picture.Show(1, modData::OpenSnapshot("SELECT Picture FROM tblCard")["Picture"]);
  picture.Take(Encoded(QImage(2400, 2000, QImage::Format_RGB32), "png"));
  const FittedPicture::Made made = picture.Make(0.05);
  database_.Store("tblCard", 1, "Picture", made.bytes);
  picture.Keep(0.05, made);
  database_.SelectSet(modData::CurrentSetID);
  Print({{"paper", "card"}, {"backs", "none"}});
  EXPECT_NEAR(DotsOfPictures().value(1), 600, 10) << "the picture upon the white ground";
}

TEST_F(OriginalsTest, DeliveredPicturesAreDrawnAnewByTheirScripts) {
  for (const char* name : {"The Saltwind Coast", "The Winter Roads"}) {
    OpenSample(name);
    Print({{"paper", "card"}, {"numbers", "1"}});
    const QList<int> dots = DotsOfPictures();
    EXPECT_GE(dots.size(), 2);
    for (const int each : dots) EXPECT_NEAR(each, 384, 8);
  }
}

}  // namespace
}  // namespace orv
