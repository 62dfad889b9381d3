#include "base/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "base/CodePage.h"
#include "base/Rounding.h"
#include "support/Errors.h"

namespace orv {
namespace {

TEST(Rounding, AHalfGoesToTheEvenNeighbour) {
  using Row = std::tuple<double, int, int>;
  for (const auto& [value, rounded, below] :
       {Row(0.5, 0, 0), Row(1.5, 2, 1), Row(2.5, 2, 2), Row(-0.5, 0, -1), Row(-1.5, -2, -2),
        Row(-2.5, -2, -3), Row(0.49999, 0, 0), Row(2.50001, 3, 2), Row(-20, -20, -20),
        Row(32767.49, 32767, 32767)}) {
    EXPECT_EQ(ToInt16(value), rounded) << value;
    EXPECT_EQ(ToInt32(value), rounded) << value;
    EXPECT_EQ(Int(value), below) << value;
  }
}

TEST(Rounding, PastTheRangeIsAnOverflow) {
  for (const double value : {32767.5, 1e9, -32768.6, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(ErrorOf([&] { ToInt16(value); }), kErrOverflow) << value;
  }
  EXPECT_EQ(ErrorOf([] { ToInt32(2147483647.6); }), kErrOverflow);
  EXPECT_EQ(ToInt16(-32768.4), -32768);
}

TEST(ValueTest, ConversionsAndTheirErrors) {
  const Value null;
  EXPECT_EQ(ErrorOf([&] { (void)null.Int32(); }), kErrInvalidNull);
  EXPECT_EQ(ErrorOf([&] { (void)null.Text(); }), kErrInvalidNull);
  EXPECT_EQ(null.TextOrEmpty(), "");
  EXPECT_FALSE(null.BoolOrFalse());
  EXPECT_EQ(ErrorOf([] { (void)Value("seven").Int32(); }), kErrTypeMismatch);
  EXPECT_EQ(ErrorOf([] { (void)Value(QByteArray("1")).Text(); }), kErrTypeMismatch);
  EXPECT_EQ(ErrorOf([] { (void)Value(40000).Int16(); }), kErrOverflow);
  EXPECT_EQ(ErrorOf([] { (void)Value(3000000000LL).Int32(); }), kErrOverflow);
  EXPECT_EQ(Value(" 12 ").Int16(), 12);
  EXPECT_EQ(Value(2.5).Int32(), 2);
  EXPECT_EQ(Value(0.25).Text(), "0.25");
  EXPECT_EQ(Value(true).Int32(), -1);
  EXPECT_FALSE(Value("") == Value());
  EXPECT_TRUE(Value(3) == Value(3.0));
  EXPECT_FALSE(Value(3) == Value("3"));
}

TEST(CodePage, LettersOutsideThePageBecomeQuestionMarks) {
  using Row = std::pair<const char16_t*, const char*>;
  for (const auto& [text, bytes] :
       {Row(u"Grün é å", "Gr\xFCn \xE9 \xE5"), Row(u"€–“”…", "\x80\x96\x93\x94\x85"), Row(u"Ω ж", "? ?"),
        Row(u"\U0001F409!", "?!"), Row(u"\u0081", "?"), Row(u"ŸžŠ", "\x9F\x9E\x8A")}) {
    EXPECT_EQ(ToWindows1252(text), QByteArray(bytes));
  }
}

}  // namespace
}  // namespace orv
