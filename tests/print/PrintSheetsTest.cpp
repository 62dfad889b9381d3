// The PDF file, read by another program.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <cmath>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "imaging/Drawing.h"
#include "print/PdfScene.h"
#include "print/PrintedCards.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr double kPointsPerDot = 72.0 / 96;

struct Word {
  QString text;
  double x;  // dots from the page's left edge
};

// The words of a drawing that are not turned.
void Collect(const Drawing& drawing, double left, std::vector<Word>& words) {
  for (const Drawing::Operation& operation : drawing.operations) {
    if (const auto* const text = std::get_if<Drawing::Text>(&operation)) {
      for (const Drawing::Word& word : text->words) {
        words.push_back({text->line.mid(word.start, word.length), left + word.x});
      }
    } else if (const auto* const paint = std::get_if<Drawing::Paint>(&operation)) {
      if (paint->picture.HowDrawn() == nullptr) continue;
      Collect(*paint->picture.HowDrawn(), left + paint->target.x() - paint->source.x(), words);
    }
  }
}

// The mean distance of two images, the second shifted by (x, y), in grey levels.
double Distance(const QImage& a, const QImage& b, int x, int y) {
  double sum = 0;
  int count = 0;
  for (int row = 2; row < a.height() - 2; ++row) {
    for (int column = 2; column < a.width() - 2; ++column, ++count) {
      sum += std::abs(qGray(a.pixel(column, row)) - qGray(b.pixel(column + x, row + y)));
    }
  }
  return sum / count;
}

// Dots of a page for one of a card: a reader of PDF files puts pictures on whole dots.
constexpr int kFine = 4;

// A card in the middle of its page, in its own dots.
QImage CardOf(const QImage& page, QSize dots) {
  const QSize size = dots * kFine;
  EXPECT_TRUE(page.width() - size.width() < 2 * kFine && page.height() - size.height() < 2 * kFine);
  return page.copy(QRect(QPoint(page.width() - size.width(), page.height() - size.height()) / 2, size))
      .scaled(dots, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

class PrintSheetsTest : public PdfScene, public testing::Test {
 protected:
  static QStringList Check() {
    QStringList lines;
    for (const BadCard& bad : CheckSheets({}, [](int, int) { return true; })) lines.append(bad.line);
    return lines;
  }
  // The middles of the dark runs in a row of a page, in millimetres.
  static QList<double> DarkAt(const QImage& page, double y_mm) {
    const double mm = page.width() / kA4Width;
    const int y = static_cast<int>(y_mm * mm);
    QList<double> found;
    for (int x = 0, from = -1; x < page.width(); ++x) {
      const bool dark = qGray(page.pixel(x, y)) < 128;
      if (dark && from < 0) from = x;
      if (!dark && from >= 0) found.append((from + x) / 2.0 / mm);
      if (!dark) from = -1;
    }
    return found;
  }
  static constexpr double kA4Width = 595 * 25.4 / 72, kA4Height = 842 * 25.4 / 72;
};

TEST_F(PrintSheetsTest, FacesAreEmbeddedAndEachWordStandsWhereTheCardHasIt) {
  for (const char* name : {"The Saltwind Coast", "The Winter Roads"}) {
    OpenSample(name);
    const std::initializer_list<std::pair<const char*, const char*>> options = {
        {"paper", "card"}, {"backs", "none"}, {"kinds", "cards"}};
    Print(options);
    const QStringList fonts = Read("pdffonts", {}, false).split('\n', Qt::SkipEmptyParts).mid(2);
    EXPECT_FALSE(fonts.isEmpty());
    for (const QString& font : fonts) EXPECT_TRUE(font.contains(" yes ")) << qPrintable(font);
    PrintOptions cards;
    SetPrintOption(cards, "kinds", "cards");
    EXPECT_GT(DotsOfPictures().size(), 5);
    for (const int dots : DotsOfPictures()) EXPECT_GE(dots, 287);
    const QStringList pages = Read("pdftotext", {"-bbox"}).split("<page ").mid(1);
    const QStringList texts = Read("pdftotext", {"-raw"}).split('\f');
    const QRegularExpression bounds("xMin=\"([\\d.]+)\"[^>]*>([^<]*)</word>");
    int page = 0;
    ForEachPrintedCard(cards, [&](const PrintedCard& card) {
      std::vector<Word> words, found;
      Collect(*card.sheet.HowDrawn(), 0, words);
      for (int copy = 0; copy < card.copies; ++copy, ++page) {
        found.clear();
        auto match = bounds.globalMatch(pages.value(page));
        while (match.hasNext()) {
          const auto word = match.next();
          const QString text =
              word.captured(2).replace("&quot;", "\"").replace("&amp;", "&").replace("&apos;", "'");
          found.push_back({text, word.captured(1).toDouble() / kPointsPerDot});
        }
        EXPECT_GT(words.size(), 5u);
        const QStringList read = texts.value(page).simplified().split(' ');
        qsizetype at = -1;
        for (const Word& word : words) {
          at = read.indexOf(word.text, at + 1);
          EXPECT_GE(at, 0) << qPrintable(card.record) << ": " << qPrintable(word.text) << " in its order";
        }
        for (const Word& word : words) {
          const bool there = std::ranges::any_of(found, [&](const Word& other) {
            return other.text == word.text && std::abs(other.x - word.x) <= 1;
          });
          EXPECT_TRUE(there) << qPrintable(card.record) << ": " << qPrintable(word.text) << " at " << word.x;
        }
      }
      return true;
    });
    EXPECT_EQ(page, pages.size());
  }
}

TEST_F(PrintSheetsTest, APageAt96DotsIsThePictureFile) {
  for (const char* name : {"The Saltwind Coast", "The Winter Roads"}) {
    OpenSample(name);
    Print({{"paper", "card"}, {"numbers", "1"}});
    int page = 0;
    PrintOptions options;
    SetPrintOption(options, "numbers", "1");
    ForEachPrintedCard(options, [&](const PrintedCard& card) {
      for (int copy = 0; copy < card.copies; ++copy) {
        for (const QRect& side : {card.front, card.back}) {
          if (side.isNull()) continue;
          const QImage printed = CardOf(Page(++page, 96 * kFine), side.size());
          const QImage pixels = card.sheet.Image().copy(side);
          const double here = Distance(pixels, printed, 0, 0);
          // The backs are full of fine grain.
          EXPECT_LT(here, side == card.front ? 10 : 25) << qPrintable(card.record);
          for (const auto& [x, y] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
            EXPECT_LT(here, Distance(pixels, printed, x, y)) << qPrintable(card.record) << x << y;
          }
        }
      }
      return true;
    });
  }
}

TEST_F(PrintSheetsTest, CutMarksAndBacksStandWhereTheyShouldToATenthOfAMillimetre) {
  constexpr double kWidth = 152 * 25.4 / 96, kHeight = 256 * 25.4 / 96;
  constexpr int kDots = 400;
  OpenCards(1);
  database_.Execute("UPDATE tblCard_rows SET CardBackID = 1, UsePicture = 0, Copies = 1");
  database_.SelectSet(modData::CurrentSetID);
  for (const char* edge : {"long", "short"}) {
    Print({{"backs", edge}, {"back-right", "1.5"}, {"back-down", "-0.8"}, {"ruler", "no"}});
    const QImage front = Page(1, kDots), back = Page(2, kDots);
    const double left = (kA4Width - 4 * kWidth) / 2, top = (kA4Height - 4 * kHeight) / 2;
    const QList<double> marks = DarkAt(front, top - 3);
    ASSERT_EQ(marks.size(), 5);
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(marks[i], left + i * kWidth, 0.1);
    // The dark back of the first place, which is the last one of its row or its column.
    const bool is_long = edge == std::string("long");
    const double x = (is_long ? kA4Width - left - kWidth : left) + 1.5;
    const double y = (is_long ? top : kA4Height - top - kHeight) - 0.8;
    const QList<double> across = DarkAt(back, y + kHeight / 2);
    ASSERT_EQ(across.size(), 1);
    EXPECT_NEAR(across[0], x + kWidth / 2, 0.1);
    double first = 0, last = 0;
    const double mm = back.width() / kA4Width;
    for (int row = 0; row < back.height(); ++row) {
      if (qGray(back.pixel(static_cast<int>((x + kWidth / 2) * mm), row)) >= 128) continue;
      if (first == 0) first = row / mm;
      last = (row + 1) / mm;
    }
    EXPECT_NEAR(first, y, 0.1);
    EXPECT_NEAR(last, y + kHeight, 0.1);
  }
}

TEST_F(PrintSheetsTest, APageOfACardTellsWhereItIsCut) {
  OpenCards(1);
  database_.AddLargeCard(modData::CurrentSetID, 1, "Large");
  database_.Execute("UPDATE tblCard_rows SET Copies = 1");
  database_.SelectSet(modData::CurrentSetID);
  Print({{"paper", "card"}, {"bleed", "3"}, {"back-right", "1"}});
  const QString told = Read("pdfinfo", {"-box", "-l", "9"}, false);
  constexpr double kBleed = 3 * 72 / 25.4;
  constexpr double kWidths[] = {114, 114, 228, 228};  // points
  for (int page = 1; page <= 4; ++page) {
    SCOPED_TRACE(page);
    const auto box = [&](const char* name) {
      const QRegularExpression line(
          QString("Page +%1 %2: +([\\d.]+) +([\\d.]+) +([\\d.]+) +([\\d.]+)").arg(page).arg(name));
      const auto match = line.match(told);
      const auto at = [&](int i) { return match.captured(i).toDouble(); };
      return QRectF(QPointF(at(1), at(2)), QPointF(at(3), at(4)));
    };
    const QRectF media = box("MediaBox"), trim = box("TrimBox"), bleed = box("BleedBox");
    EXPECT_NEAR(trim.width(), kWidths[page - 1], 0.02);
    EXPECT_NEAR(trim.height(), 192, 0.02);
    EXPECT_NEAR(trim.center().x(), media.center().x(), 0.02);
    EXPECT_NEAR(trim.center().y(), media.center().y(), 0.02);
    EXPECT_NEAR(bleed.width(), trim.width() + 2 * kBleed, 0.02);
    EXPECT_TRUE(media.contains(bleed));
  }
  EXPECT_EQ(Read("pdftotext", {}).count("Card 1"), 1) << "the rest of the file is as it was";
}

TEST_F(PrintSheetsTest, CopiesSheetsAndBacks) {
  OpenCards(5);
  database_.Execute("UPDATE tblCard_rows SET Copies = 4 * Nr WHERE Nr < 4");  // 4, 8, 12
  database_.Execute("UPDATE tblCard_rows SET Copies = 0 WHERE Nr = 4");
  database_.SelectSet(modData::CurrentSetID);
  modData::rsCard.FindFirst("Nr = 3");
  const struct {
    std::initializer_list<std::pair<const char*, const char*>> options;
    int cards, sheets, pages;
  } rows[] = {{{}, 25, 2, 4},
              {{{"backs", "none"}}, 25, 2, 2},
              {{{"backs", "fold"}}, 25, 4, 4},  // two and four of them
              {{{"numbers", "1,4-5"}}, 5, 1, 2},
              {{{"paper", "card"}, {"numbers", "1"}}, 4, 4, 8}};
  for (const auto& row : rows) {
    const PrintOutcome outcome = Print(row.options);
    EXPECT_EQ(outcome.cards, row.cards);
    EXPECT_EQ(outcome.sheets, row.sheets);
    EXPECT_TRUE(
        Read("pdfinfo", {}, false).contains(QRegularExpression(QString("Pages: +%1\n").arg(row.pages))));
  }
  EXPECT_EQ(modData::rsCard["Nr"].Int32(), 3) << "the editors' record stays";
  EXPECT_THROW(Print({{"numbers", "4"}}), RuntimeError);
  EXPECT_THROW(Print({{"numbers", "99"}}), RuntimeError);
}

TEST_F(PrintSheetsTest, ACardThatCannotBeDrawnIsNamedAndItsPlaceCrossed) {
  OpenCards(2);
  database_.Execute("UPDATE tblCard_rows SET UsePicture = -1");
  database_.Store("tblCard", 1, "Picture", "no picture");
  database_.SelectSet(modData::CurrentSetID);
  const PrintOutcome outcome = Print({{"paper", "card"}});
  ASSERT_EQ(outcome.not_drawn.size(), 1);
  EXPECT_TRUE(outcome.not_drawn[0].startsWith("C2 1 Card 1: ")) << qPrintable(outcome.not_drawn[0]);
  EXPECT_TRUE(outcome.not_drawn[0].contains("481"));
  const QImage crossed = Page(1, 96);
  EXPECT_LT(qGray(crossed.pixel(76, 128)), 128);
  EXPECT_EQ(qGray(crossed.pixel(76, 40)), 255);
}

TEST_F(PrintSheetsTest, AFileIsWholeOrNotThere) {
  OpenCards(3);
  QFile(Pdf()).open(QIODevice::WriteOnly);
  const PrintOutcome outcome = PrintSheets({}, Pdf(), [](int done, int all) {
    EXPECT_EQ(all, 3);
    return done < 2;
  });
  EXPECT_TRUE(outcome.stopped);
  EXPECT_EQ(QFile(Pdf()).size(), 0) << "the old one stays";
  EXPECT_EQ(QDir(database_.Folder()).entryList({"*.pdf", "*.tmp", ".*"}, QDir::Files | QDir::Hidden).size(),
            1);
  EXPECT_THROW(
      PrintSheets({}, database_.Path("none") + QDir::separator() + "x.pdf", [](int, int) { return true; }),
      RuntimeError);
}

TEST_F(PrintSheetsTest, OnlyWhatChangedSinceItsLastSheet) {
  OpenCards(3);
  database_.Execute("UPDATE tblCard_rows SET Copies = 1");
  const int set = modData::CurrentSetID;
  const struct {
    const char* change;
    const char* numbers;
    int cards, unchanged;
  } rows[] = {{"", "1-2", 2, 0},  // nothing was printed yet
              {"", "", 1, 2},
              {"", "", 0, 3},
              {"UPDATE tblCard_rows SET Title = 'Another' WHERE Nr = 2", "1", 0, 1},
              {"", "", 1, 2},
              {"UPDATE tblCard_rows SET Copies = 5, FileName = 'other', Nr = Nr + 1", "", 0, 3},
              {"UPDATE tblCard_rows SET CardBackID = 2 WHERE Nr = 3", "", 5, 2}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.change);
    if (*row.change != 0) database_.Execute(row.change);
    database_.SelectSet(set);
    QFile::remove(Pdf());
    const PrintOutcome outcome = Print({{"changed", "yes"}, {"numbers", row.numbers}});
    EXPECT_EQ(outcome.cards, row.cards);
    EXPECT_EQ(outcome.unchanged, row.unchanged);
    EXPECT_EQ(outcome.forgotten, "");
    EXPECT_EQ(QFile::exists(Pdf()), row.cards > 0);
  }
  PrintOptions changed;
  changed.changed = true;
  EXPECT_TRUE(CheckSheets(changed, [](int, int) { return true; }).empty());
  database_.SelectSet(database_.AddSet("Other", 2));
  database_.AddCard(modData::CurrentSetID, 1, "Another");
  database_.SelectSet(modData::CurrentSetID);
  EXPECT_EQ(Print({{"changed", "yes"}}).unchanged, 0) << "another set";
  // What can't be remembered is told, and the sheets are there.
  const QString folder = JoinPath(UsersFolder(), "printed");
  EXPECT_TRUE(QDir(folder).removeRecursively() && QFile(folder).open(QIODevice::WriteOnly));
  EXPECT_NE(Print({}).forgotten, "");
  EXPECT_TRUE(QFile::exists(Pdf()));
}

TEST_F(PrintSheetsTest, WhatPrintShowsBadlyIsTold) {
  const struct {
    const char* change;
    const char* finding;
  } rows[] = {
      {"UsePicture = 0, Information = 'short'", ""},
      {"UsePicture = -1", "the picture is empty"},
      {"UsePicture = 0, CardTypeID = 99", "the type is missing"},
      {"UsePicture = 0, CardBackID = 99", "the back is missing"},
      {"UsePicture = 0, Title = 'A title that is very much longer than a card is wide'",
       "the title runs over its box by 91 pixels"},
      {"UsePicture = 0, Title = 'A title that is very much longer than a card is wide'", "card's edge"}};
  OpenCards(1);
  for (const auto& row : rows) {
    database_.Execute("UPDATE tblCard_rows SET Title = 'Card 1', CardTypeID = 1, CardBackID = 1");
    database_.Execute(QString("UPDATE tblCard_rows SET ") + row.change);
    database_.SelectSet(modData::CurrentSetID);
    const QStringList lines = Check();
    const bool told =
        std::ranges::any_of(lines, [&](const QString& line) { return line.contains(row.finding); });
    EXPECT_EQ(told, *row.finding != 0) << row.change << qPrintable(lines.join(' '));
  }
  database_.Execute(
      "UPDATE tblCard_rows SET Title = 'Card 1', UsePicture = -1, PicHeight = 100, Information = '" +
      QString("many words ").repeated(80) + "'");
  database_.Store("tblCard", 1, "Picture", TestDatabase::PlainPicture(100, 80, kWhite));
  database_.SelectSet(modData::CurrentSetID);
  const QStringList lines = Check();
  EXPECT_TRUE(lines.contains("C2 1 Card 1: the information runs over its box by 23 lines"));
  EXPECT_TRUE(lines.contains("C2 1 Card 1: the picture has 96 dots an inch"));
}

TEST_F(PrintSheetsTest, ATestSheetHasAGridOnEachSide) {
  PrintOptions options;
  SetPrintOption(options, "back-right", "5");
  PrintTestSheet(options, Pdf());
  // A point of the grid's middle lies 5 mm, 59 of 300 dots an inch, further to the right on the back.
  const QImage front = Page(1, 300), back = Page(2, 300);
  const auto first_line = [](const QImage& page) {
    int x = 0;
    while (x < page.width() && qGray(page.pixel(x, page.height() / 2 + 61)) > 200) ++x;
    return x;
  };
  EXPECT_NEAR(first_line(back) - first_line(front), 59, 1);
}

}  // namespace
}  // namespace orv
