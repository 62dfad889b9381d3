#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QValidator>
#include <algorithm>
#include <limits>

#include "forms/Controls.h"
#include "forms/inner/ShownText.h"

namespace orv {
namespace {

// What a user pastes into a field of one line stays one line.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& position) const override {
    const auto before = input.left(position).count(QStringLiteral("\r\n"));
    input.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    position -= static_cast<int>(before);
    for (QChar& c : input) {
      if (c == u'\n' || c == u'\r' || c == QChar::ParagraphSeparator) c = u' ';
    }
    return Acceptable;
  }
};

// For each line the toolkit looks up to the end of the word, in all a time that grows with the square of its
// length.
constexpr qsizetype kLongestWord = 2000;

bool HasEndlessWord(QStringView text) {
  qsizetype length = 0;
  return std::ranges::any_of(text,
                             [&](QChar c) { return (length = c.isSpace() ? 0 : length + 1) > kLongestWord; });
}

void Wrap(QPlainTextEdit& edit, bool anywhere) {
  edit.setWordWrapMode(anywhere ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
}

// Pastes and takes by dropping nothing but text: the base class falls over a clipboard that holds nothing at
// all.
class TextArea : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;

 protected:
  void insertFromMimeData(const QMimeData* source) override {
    if (source == nullptr || !source->hasText()) return;
    if (HasEndlessWord(source->text())) Wrap(*this, true);
    QPlainTextEdit::insertFromMimeData(source);
  }
};

QLineEdit& Line(const Control& control) {
  return *static_cast<QLineEdit*>(control.Handle());
}
QPlainTextEdit& Lines(const Control& control) {
  return *static_cast<QPlainTextEdit*>(control.Handle());
}

// The document's own plain text turns hard blanks into soft ones, so the paragraphs are read one by one.
QString TextOf(const QTextDocument& document) {
  QString text;
  for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next()) {
    if (block.blockNumber() > 0) text += QStringLiteral("\r\n");
    text += FromShown(block.text());
  }
  return text;
}

// A line end is one position of the document and two of the text.
int TextPosition(const QTextDocument& document, int position) {
  return position + document.findBlock(position).blockNumber();
}

int DocumentPosition(const QTextDocument& document, int text_position) {
  for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next()) {
    const int offset = text_position - TextPosition(document, block.position());
    if (offset <= block.length() - 1) return block.position() + offset;
    // Between the two characters of the line end: before it.
    if (offset == block.length()) return block.position() + block.length() - 1;
  }
  return document.characterCount() - 1;
}

}  // namespace

TextBox::TextBox(Container& parent, Kind kind) : kind_(kind) {
  if (kind == SingleLine) {
    auto* const edit = new QLineEdit(parent.Handle());
    edit->setMaxLength(std::numeric_limits<int>::max());
    edit->setValidator(new OneLine(edit));
    Adopt(edit);
    QObject::connect(edit, &QLineEdit::textChanged, Watcher(), [this] { TextEdited(); });
  } else {
    auto* const edit = new TextArea(parent.Handle());
    edit->setTabChangesFocus(true);
    edit->setFocusPolicy(Qt::StrongFocus);  // not by the wheel
    Adopt(edit);
    Watch(edit->viewport());
    QObject::connect(edit, &QPlainTextEdit::textChanged, Watcher(), [this] { TextEdited(); });
  }
}

void TextBox::TextEdited() {
  const QString text = Text();
  if (text == last_) return;
  last_ = text;
  // Not back as long as it may come again by undoing.
  if (kind_ == MultiLine && HasEndlessWord(text)) Wrap(Lines(*this), true);
  Change();
}

QString TextBox::Text() const {
  return kind_ == SingleLine ? FromShown(Line(*this).text()) : TextOf(*Lines(*this).document());
}

void TextBox::SetText(const QString& text) {
  if (text == Text()) return;
  {
    const QSignalBlocker blocker(Handle());
    if (kind_ == SingleLine) {
      Line(*this).setText(ToShownLine(text));
      Line(*this).setCursorPosition(0);
    } else {
      Lines(*this).clear();
      Wrap(Lines(*this), HasEndlessWord(text));
      Lines(*this).setPlainText(ToShownLines(text));
    }
  }
  TextEdited();
}

int TextBox::SelStart() const {
  if (kind_ == MultiLine) {
    return TextPosition(*Lines(*this).document(), Lines(*this).textCursor().selectionStart());
  }
  return Line(*this).hasSelectedText() ? Line(*this).selectionStart() : Line(*this).cursorPosition();
}

int TextBox::SelLength() const {
  if (kind_ == SingleLine) return static_cast<int>(Line(*this).selectedText().size());
  const QTextCursor cursor = Lines(*this).textCursor();
  const QTextDocument& document = *Lines(*this).document();
  return TextPosition(document, cursor.selectionEnd()) - TextPosition(document, cursor.selectionStart());
}

void TextBox::SetSelStart(int start) {
  Select(start, 0);
}
void TextBox::SetSelLength(int length) {
  Select(SelStart(), length);
}

void TextBox::SetLocked(bool locked) {
  if (kind_ == SingleLine) return Line(*this).setReadOnly(locked);
  Lines(*this).setReadOnly(locked);
  if (locked) Lines(*this).setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

// Not where the click ends the selecting of a text to copy.
bool TextBox::ChoosesLine(const QEvent& event) const {
  if (event.type() == QEvent::MouseButtonRelease) {
    return static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton &&
           !Lines(*this).textCursor().hasSelection();
  }
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void TextBox::Select(int start, int length) {
  const int size = static_cast<int>(Text().size());
  start = std::clamp(start, 0, size);
  const int end = start + std::clamp(length, 0, size - start);
  if (kind_ == SingleLine) {
    Line(*this).setSelection(start, end - start);
    if (end == start) Line(*this).setCursorPosition(start);
    return;
  }
  const QTextDocument& document = *Lines(*this).document();
  QTextCursor cursor = Lines(*this).textCursor();
  cursor.setPosition(DocumentPosition(document, start));
  cursor.setPosition(DocumentPosition(document, end), QTextCursor::KeepAnchor);
  Lines(*this).setTextCursor(cursor);
}

bool TextBox::Filter(QObject* object, QEvent* event) {
  if (kind_ == MultiLine && LineChosen && Lines(*this).isReadOnly() && ChoosesLine(*event)) {
    LineChosen(Lines(*this).textCursor().blockNumber());
    return true;
  }
  // With Shift the key would make a break within the paragraph, which is no line end of the text.
  if (kind_ == MultiLine && object == Handle() && event->type() == QEvent::KeyPress &&
      !Lines(*this).isReadOnly()) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (enter && key.modifiers().testFlag(Qt::ShiftModifier)) {
      Lines(*this).textCursor().insertBlock();
      Lines(*this).ensureCursorVisible();
      return true;
    }
  }
  return Control::Filter(object, event);
}

}  // namespace orv
