#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTest>

#include "forms/Controls.h"
#include "platform/forms/TestWindow.h"
#include "support/Widgets.h"

namespace orv {
namespace {

const QString kTwoLines = "ab\r\ncd";

class TextBoxTest : public testing::Test {
 protected:
  TextBoxTest() {
    line.Change = [this] { ++changes; };
    lines.Change = [this] { ++changes; };
    window.Open();
  }
  TestWindow window;
  TextBox line{window};
  TextBox lines{window, TextBox::MultiLine};
  int changes = 0;
};

TEST_F(TextBoxTest, ShowingNeverChangesAText) {
  const QString texts[] = {
      kTwoLines,
      "\r\n",
      "\r\n\r\nend\r\n",
      "lone \n feed and \r return",
      "\n\r\n\r\r\n\n",
      "hard\u00A0blank, line\u2028separator, paragraph\u2029separator",
      "the signs \u240A and \u240D themselves",
      "tab\tand <b>marks</b> & such",
      QString(70000, u'x'),
      QString(),
  };
  for (TextBox* box : {&line, &lines}) {
    for (const QString& text : texts) {
      changes = 0;
      const bool differs = box->Text() != text;
      box->SetText(text);
      EXPECT_EQ(box->Text(), text);
      EXPECT_EQ(changes, differs ? 1 : 0);
      box->SetText(text);
      EXPECT_EQ(changes, differs ? 1 : 0) << "the same text again is no change";
    }
  }
}

TEST_F(TextBoxTest, ALineEndCountsTwo) {
  struct Row {
    int start, length;            // set
    int read_start, read_length;  // read
    const char* selected;         // "|" for a line end
  };
  // Text: a0 b1 \r2 \n3 c4 d5
  const Row rows[] = {
      {0, 2, 0, 2, "ab"}, {0, 4, 0, 4, "ab|"},    {1, 4, 1, 4, "b|c"}, {4, 2, 4, 2, "cd"}, {2, 2, 2, 2, "|"},
      {3, 0, 2, 0, ""},   {0, 99, 0, 6, "ab|cd"}, {99, 1, 6, 0, ""},   {-5, 1, 0, 1, "a"},
  };
  lines.SetText(kTwoLines);
  for (const Row& row : rows) {
    lines.SetSelStart(row.start);
    EXPECT_EQ(lines.SelLength(), 0);
    lines.SetSelLength(row.length);
    EXPECT_EQ(lines.SelStart(), row.read_start) << row.start;
    EXPECT_EQ(lines.SelLength(), row.read_length) << row.start;
    QString part = lines.Text().mid(lines.SelStart(), lines.SelLength());
    EXPECT_EQ(part.replace("\r\n", "|"), QLatin1String(row.selected));
  }
  lines.SetSelStart(1);
  lines.SetSelLength(4);
  TypeInto(lines, "X");
  EXPECT_EQ(lines.Text(), "aXd");
}

TEST_F(TextBoxTest, TheUserMakesLineEndsWithEnterAndShiftEnter) {
  TypeInto(lines, "a");
  PressKey(lines, Qt::Key_Return);
  TypeInto(lines, "b");
  PressKey(lines, Qt::Key_Return, Qt::ShiftModifier);
  TypeInto(lines, "c");
  EXPECT_EQ(lines.Text(), "a\r\nb\r\nc");
  EXPECT_EQ(changes, 5) << "one for each key";
  EXPECT_EQ(lines.SelStart(), 7);
}

TEST_F(TextBoxTest, WhatIsPastedIntoOneLineStaysOneLine) {
  line.SetText("kept \r\n end");
  QApplication::clipboard()->setText("one\r\ntwo\nthree");
  line.SetSelStart(0);
  PressKey(line, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(line.Text(), "one two threekept \r\n end");
  EXPECT_EQ(line.SelStart(), 13);
}

TEST_F(TextBoxTest, AHandlerReplacesTheTextThatIsTyped) {
  line.Change = [this] {
    ++changes;
    if (line.Text() != u"S") return;
    line.SetText("STRENGTH ");
    line.SetSelStart(1);
    line.SetSelLength(8);
  };
  TypeInto(line, "S");
  EXPECT_EQ(line.Text(), "STRENGTH ");
  EXPECT_EQ(line.SelStart(), 1);
  EXPECT_EQ(line.SelLength(), 8);
  TypeInto(line, "I");
  EXPECT_EQ(line.Text(), "SI");
  EXPECT_EQ(changes, 3);
}

TEST_F(TextBoxTest, ALetterWithAltIsNotTypedAndTheWheelTakesNoFocus) {
  line.SetFocus();
  for (const Control* box : {&line, &lines}) PressKey(*box, Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(line.Text() + lines.Text(), "");
  EXPECT_EQ(window.keys.size(), 2u) << "the form sees it";
  TurnWheel(lines, -120);
  EXPECT_TRUE(line.HasFocus());
}

TEST_F(TextBoxTest, TabLeavesTheField) {
  lines.SetFocus();
  TypeInto(lines, "a");
  PressKey(lines, Qt::Key_Backtab);
  EXPECT_TRUE(line.HasFocus());
  PressKey(line, Qt::Key_Tab);
  EXPECT_TRUE(lines.HasFocus());
  EXPECT_EQ(lines.Text(), "a");
}

TEST_F(TextBoxTest, PastingWhatIsNoTextChangesNothing) {
  auto* image = new QMimeData;
  image->setImageData(1);
  for (QMimeData* held : {new QMimeData, image}) {
    QApplication::clipboard()->setMimeData(held);
    for (TextBox* box : {&line, &lines}) PressKey(*box, Qt::Key_V, Qt::ControlModifier);
  }
  EXPECT_EQ(line.Text() + lines.Text(), QString());
}

}  // namespace
}  // namespace orv
