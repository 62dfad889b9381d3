#include "composition/WrapText.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <ctime>

#include "base/RuntimeError.h"

namespace orv {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kMostSeconds = 10;
#else
constexpr int kMostSeconds = 2;
#endif

class WrapTextTest : public ::testing::Test {
 protected:
  // The lines with their numbers, "0:first 1:second".
  QStringList Wrap(const QString& text, int width) {
    box_.SetWidth(width);
    QStringList lines;
    WrapText(text, box_, surface_,
             [&](const QString& line, int number) { lines.append(QString::number(number) + u':' + line); });
    return lines;
  }
  int WidthOf(const QString& text) const { return static_cast<int>(surface_.TextWidth(text)); }

  Surface surface_;
  Label box_{nullptr};
};

TEST_F(WrapTextTest, ParagraphsAndBlankLines) {
  EXPECT_EQ(Wrap(QString(), 100), QStringList());
  EXPECT_EQ(Wrap(QStringLiteral("one"), 100), QStringList({"0:one"}));
  EXPECT_EQ(Wrap(QStringLiteral("one\r\n\r\ntwo\r\n"), 100), QStringList({"0:one", "2:two"}));
  EXPECT_EQ(Wrap(QStringLiteral("one\ntwo"), 100), QStringList({"0:one\ntwo"}))
      << "a lone line feed breaks nothing";
}

TEST_F(WrapTextTest, BreaksAfterABreakCharacterThatStaysOnItsLine) {
  const QString first = QStringLiteral("Roll one die:");
  EXPECT_EQ(Wrap(QStringLiteral("Roll one die: lose a life"), WidthOf(first) + 4),
            QStringList({"0:Roll one die: ", "1:lose a life"}));
  EXPECT_EQ(Wrap(QStringLiteral("well-known"), WidthOf(QStringLiteral("well-kno"))),
            QStringList({"0:well-", "1:known"}));
  EXPECT_EQ(Wrap(QStringLiteral("ab  cd"), WidthOf(QStringLiteral("ab ")) + 1),
            QStringList({"0:ab  ", "1:cd"}))
      << "the blank that overflows still ends the line";
}

TEST_F(WrapTextTest, EqualWidthDoesNotFitAndALongWordIsCut) {
  const QString word = QStringLiteral("Gemeinschaftshaus");
  EXPECT_EQ(Wrap(word, WidthOf(word) + 1), QStringList({"0:" + word}));
  const QStringList cut = Wrap(word, WidthOf(word));
  ASSERT_EQ(cut.size(), 2);
  EXPECT_EQ(cut[1], QStringLiteral("1:s"));
}

TEST_F(WrapTextTest, KeepsEveryCharacterOfRealParagraphsInAllLanguages) {
  const QString paragraphs[] = {
      QStringLiteral("If you have a lantern, you may enter the vault; otherwise miss your next turn (and "
                     "discard one object)."),
      QStringLiteral(
          "Würfle: Bei 1-3 verlierst du 1 Leben, bei 4-6 öffnet sich die Gruft für alle Mitspieler."),
      QStringLiteral(
          "Le héros gagne 1 point de force s'il a déjà traversé la forêt ; sinon, il perd un tour."),
      QStringLiteral("Slå en tärning: på 5 eller 6 får du en följeslagare, annars går du vidare åt öster."),
  };
  for (const QString& paragraph : paragraphs) {
    const QStringList lines = Wrap(paragraph, 139);
    QString joined;
    for (int i = 0; i < lines.size(); ++i) {
      const QString line = lines[i].mid(lines[i].indexOf(u':') + 1);
      joined += line;
      EXPECT_LT(WidthOf(line.chopped(1)), 139) << "reaches over the box by one break character at the most";
      const bool at_break = i + 1 == lines.size() || QStringLiteral(" .:,;-()'?!").contains(line.back());
      EXPECT_TRUE(at_break) << line.toStdString();
    }
    EXPECT_EQ(joined, paragraph);
    EXPECT_GT(lines.size(), 2);
  }
}

TEST_F(WrapTextTest, ManyLinesRunOnAndAnImpossibleBoxEndsInAnOverflow) {
  EXPECT_EQ(Wrap(QStringLiteral("a ").repeated(200), WidthOf(QStringLiteral("a ")) + 1).size(), 200);
  EXPECT_THROW(Wrap(QStringLiteral("W"), 1), RuntimeError);
}

// A megabyte of anything, in processor time.
TEST_F(WrapTextTest, ALongTextIsWrappedOrToldAtOnce) {
  const char16_t* const pieces[] = {u"word ",         u"\u0301",       u"a\u0301",          u"\u4E00",
                                    u"\u0645\u0631 ", u"\u0645",       u"\u200B",           u"\u0E01",
                                    u"\U0001F409",    u"\u304B\u3099", u"\U0001F409\u200D", u"i"};
  box_.SetWidth(139);
  for (const char16_t* letters : pieces) {
    const QString piece = QString::fromUtf16(letters);
    const QString text = piece.repeated(1'000'000 / piece.toUtf8().size());
    const std::clock_t start = std::clock();
    qsizetype taken = 0;
    try {
      WrapText(text, box_, surface_, [&](const QString& line, int) { taken += line.size(); });
      EXPECT_EQ(taken, text.size());
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), kErrOverflow);
    }
    EXPECT_LT(std::clock() - start, kMostSeconds * CLOCKS_PER_SEC) << piece.toStdString();
  }
}

}  // namespace
}  // namespace orv
