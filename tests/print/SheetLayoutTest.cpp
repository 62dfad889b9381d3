#include "print/inner/SheetLayout.h"

#include <gtest/gtest.h>

#include <QDebug>

#include "base/RuntimeError.h"

namespace orv {
namespace {

constexpr double kTenth = 0.05;  // of a millimetre, rounded
constexpr double kTrue = 25.4 / 96;
constexpr QSize kCard(152, 256), kLarge(304, 256);

PrintOptions Options(std::initializer_list<std::pair<const char*, const char*>> texts) {
  PrintOptions options;
  for (const auto& [name, text] : texts) EXPECT_EQ(SetPrintOption(options, name, text), "");
  return options;
}

TEST(SheetLayoutTest, AsManyAsFit) {
  const struct {
    std::initializer_list<std::pair<const char*, const char*>> options;
    QSize dots;
    double scale;
    int columns, rows;
    double page_width;
  } rows[] = {{{}, kCard, kTrue, 4, 4, 209.9},
              {{{"gap", "3"}}, kCard, kTrue, 4, 3, 209.9},
              {{{"bleed", "2"}}, kCard, kTrue, 4, 3, 209.9},
              {{{"paper", "letter"}}, kCard, kTrue, 4, 3, 215.9},
              {{{"paper", "a3"}}, kCard, kTrue, 9, 4, 420.2},
              {{}, kLarge, kTrue, 2, 4, 209.9},
              {{}, kLarge, 2 * kTrue, 1, 2, 209.9},
              {{{"paper", "card"}}, kCard, kTrue, 1, 1, 40.2},
              {{{"paper", "card"}, {"bleed", "3"}}, kCard, kTrue, 1, 1, 46.2}};
  for (const auto& row : rows) {
    const SheetLayout layout = LayOut(Options(row.options), row.dots, row.scale);
    EXPECT_EQ(layout.columns, row.columns);
    EXPECT_EQ(layout.rows, row.rows);
    EXPECT_NEAR(layout.page_width, row.page_width, 0.36) << "a point at most";
    EXPECT_NEAR(layout.Front(0).x + layout.Front(layout.Count() - 1).x + layout.card_width, layout.page_width,
                kTenth);
  }
  EXPECT_THROW(LayOut({}, kLarge, 5 * kTrue), RuntimeError);
}

TEST(SheetLayoutTest, ABackMeetsItsFrontWhenThePaperIsTurned) {
  for (const char* edge : {"long", "short"}) {
    for (const char* paper : {"A4", "A3"}) {  // upright and across
      const SheetLayout layout =
          LayOut(Options({{"backs", edge}, {"paper", paper}, {"back-right", "0.7"}, {"back-down", "-1.2"}}),
                 kCard, kTrue);
      const bool upright = layout.page_width < layout.page_height;
      const bool about_upright_axis = upright == (edge == std::string("long"));
      EXPECT_EQ(upright, paper == std::string("A4"));
      EXPECT_EQ(layout.mirrored_across, about_upright_axis);
      for (int i = 0; i < layout.Count(); ++i) {
        const auto front = layout.Front(i);
        const auto back = layout.Back(i);
        const double x = about_upright_axis ? layout.page_width - front.x - layout.card_width : front.x;
        const double y = about_upright_axis ? front.y : layout.page_height - front.y - layout.card_height;
        EXPECT_NEAR(back.x, x + 0.7, kTenth);
        EXPECT_NEAR(back.y, y - 1.2, kTenth);
      }
    }
  }
}

TEST(SheetLayoutTest, CutMarksStandInTheMarginsInLineWithTheEdges) {
  constexpr double kBleed = 2;
  const SheetLayout layout = LayOut(Options({{"bleed", "2"}}), kCard, kTrue);
  const auto marks = layout.CutMarks(kBleed, 9);
  EXPECT_EQ(marks.size(), 4u * (layout.columns + layout.rows));
  const auto last = layout.Front(layout.Count() - 1);
  for (const auto& [from, to] : marks) {
    const bool upright = from.x == to.x;
    const double near = upright ? from.y : from.x;
    const double first = (upright ? layout.top : layout.left) - kBleed;
    const double end = (upright ? last.y + layout.card_height : last.x + layout.card_width) + kBleed;
    EXPECT_TRUE(near < first || near > end);
    EXPECT_NEAR(std::abs((upright ? to.y : to.x) - near), 5, kTenth);
    bool in_line = false;
    for (int i = 0; i < layout.Count(); ++i) {
      const auto card = layout.Front(i);
      const double at = upright ? from.x - card.x : from.y - card.y;
      in_line = in_line || std::abs(at) < kTenth ||
                std::abs(at - (upright ? layout.card_width : layout.card_height)) < kTenth;
    }
    EXPECT_TRUE(in_line);
  }
  // Where the cards reach to the paper's edge there is no room for a mark.
  EXPECT_TRUE(LayOut(Options({{"margin", "0"}}), QSize(790, 1120), kTrue).CutMarks(0, 9).empty());
}

TEST(PrintOptionsTest, TakeWhatMakesSenseAndTellWhatDoesNot) {
  PrintOptions options =
      Options({{"numbers", "1-5, 9"}, {"kinds", "cards,large"}, {"width", "63,5"}, {"ruler", "no"}});
  EXPECT_TRUE(options.WantsNumber(5) && options.WantsNumber(9));
  EXPECT_FALSE(options.WantsNumber(6) || options.WantsNumber(0));
  EXPECT_TRUE(options.Wants("large"));
  EXPECT_FALSE(options.Wants("pieces") || options.ruler);
  EXPECT_EQ(options.width, 63.5);
  for (const auto& [name, text] :
       std::initializer_list<std::pair<const char*, const char*>>{{"numbers", "5-1"},
                                                                  {"numbers", "1-2-3"},
                                                                  {"numbers", "x"},
                                                                  {"kinds", "card"},
                                                                  {"bleed", "6"},
                                                                  {"bleed", "nan"},
                                                                  {"scale", ""},
                                                                  {"paper", "A5"},
                                                                  {"nothing", "1"}}) {
    EXPECT_NE(SetPrintOption(options, name, text), "") << name << ' ' << text;
  }
  for (const PrintOption& option : AllPrintOptions()) {
    EXPECT_EQ(SetPrintOption(options, QLatin1String(option.name), DefaultOf(option)), "") << option.name;
  }
}

}  // namespace
}  // namespace orv
