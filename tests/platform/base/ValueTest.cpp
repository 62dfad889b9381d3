#include <gtest/gtest.h>

#include <cmath>

#include "base/CodePage.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "base/Value.h"

namespace orv {
namespace {

int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

TEST(Rounding, AHalfGoesToTheEvenNeighbour) {
  struct Row {
    double value;
    int rounded;
    int below;
  };
  for (const Row& row : {Row{0.5, 0, 0},
                         {1.5, 2, 1},
                         {2.5, 2, 2},
                         {-0.5, 0, -1},
                         {-1.5, -2, -2},
                         {-2.5, -2, -3},
                         {0.49999, 0, 0},
                         {2.50001, 3, 2},
                         {-20.0, -20, -20},
                         {32767.49, 32767, 32767}}) {
    EXPECT_EQ(ToInt16(row.value), row.rounded) << row.value;
    EXPECT_EQ(ToInt32(row.value), row.rounded) << row.value;
    EXPECT_EQ(Int(row.value), row.below) << row.value;
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
  EXPECT_EQ(null.TextOrEmpty(), QString());
  EXPECT_FALSE(null.BoolOrFalse());
  EXPECT_EQ(ErrorOf([] { (void)Value("seven").Int32(); }), kErrTypeMismatch);
  EXPECT_EQ(ErrorOf([] { (void)Value(QByteArray("1")).Text(); }), kErrTypeMismatch);
  EXPECT_EQ(ErrorOf([] { (void)Value(40000).Int16(); }), kErrOverflow);
  EXPECT_EQ(ErrorOf([] { (void)Value(3000000000LL).Int32(); }), kErrOverflow);
  EXPECT_EQ(Value(" 12 ").Int16(), 12);
  EXPECT_EQ(Value(2.5).Int32(), 2);
  EXPECT_EQ(Value(0.25).Text(), QStringLiteral("0.25"));
  EXPECT_EQ(Value(true).Int32(), -1);
  EXPECT_FALSE(Value("") == Value());
  EXPECT_TRUE(Value(3) == Value(3.0));
  EXPECT_FALSE(Value(3) == Value("3"));
}

TEST(CodePage, LettersOutsideThePageBecomeQuestionMarks) {
  struct Row {
    const char16_t* text;
    const char* bytes;
  };
  for (const Row& row : {Row{u"Grün é å", "Gr\xFCn \xE9 \xE5"},
                         {u"€–“”…", "\x80\x96\x93\x94\x85"},
                         {u"Ω ж", "? ?"},
                         {u"\U0001F409!", "?!"},
                         {u"\u0081", "?"},
                         {u"ŸžŠ", "\x9F\x9E\x8A"}}) {
    EXPECT_EQ(ToWindows1252(row.text), QByteArray(row.bytes));
  }
}

}  // namespace
}  // namespace orv
