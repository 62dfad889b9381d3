#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <limits>

#include "base/RuntimeError.h"
#include "forms/Controls.h"
#include "forms/inner/ShownText.h"

namespace orv {
namespace {

constexpr int kErrInvalidProperty = 380;
constexpr int kErrTextReadOnly = 383;

// A combo box whose open list is as wide as its entries.
class WideListBox : public QComboBox {
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->frameWidth());
    QComboBox::showPopup();
  }
};

QComboBox& Of(const Control& control) {
  return *static_cast<QComboBox*>(control.Handle());
}

}  // namespace

ComboBox::ComboBox(Container& parent, Kind kind) : kind_(kind) {
  auto* const box = new WideListBox(parent.Handle());
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(6);
  box->setMaxVisibleItems(20);
  box->setFocusPolicy(Qt::StrongFocus);  // not by the wheel
  if (kind == DropDownCombo) {
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    box->lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    // A text that happens to stand in the list is still a typed one: leaving the field chooses nothing.
    QObject::disconnect(box->lineEdit(), &QLineEdit::editingFinished, box, nullptr);
    QObject::disconnect(box->lineEdit(), &QLineEdit::returnPressed, box, nullptr);
  }
  Adopt(box);
  QObject::connect(box, &QComboBox::activated, Watcher(), [this] {
    last_ = Text();
    Click();
  });
  if (kind == DropDownCombo) {
    QObject::connect(box->lineEdit(), &QLineEdit::textEdited, Watcher(), [this] {
      if (Text() == last_) return;
      last_ = Text();
      Change();
    });
  }
}

void ComboBox::Clear() {
  const QSignalBlocker blocker(Handle());
  Of(*this).clear();
  if (kind_ == DropDownCombo) Of(*this).setEditText({});
  new_index_ = -1;
  last_.clear();
}

void ComboBox::AddItem(const QString& text) {
  const QSignalBlocker blocker(Handle());
  const bool first = Of(*this).count() == 0;
  const QString typed = Of(*this).currentText();
  Of(*this).addItem(ToShownLine(text), 0);
  new_index_ = Of(*this).count() - 1;
  if (!first) return;
  // The toolkit chooses the first entry by itself.
  Of(*this).setCurrentIndex(-1);
  if (kind_ == DropDownCombo) Of(*this).setEditText(typed);
}

int ComboBox::ListCount() const {
  return Of(*this).count();
}
QString ComboBox::List(int index) const {
  return FromShown(Of(*this).itemText(index));
}

std::int32_t ComboBox::ItemData(int index) const {
  if (index < 0 || index >= ListCount()) throw RuntimeError(kErrSubscript);
  return Of(*this).itemData(index).toInt();
}

void ComboBox::SetItemData(int index, std::int32_t data) {
  if (index < 0 || index >= ListCount()) throw RuntimeError(kErrSubscript);
  Of(*this).setItemData(index, data);
}

int ComboBox::ListIndex() const {
  const int index = Of(*this).currentIndex();
  // A text of one's own is no entry.
  return kind_ == DropDownCombo && Text() != List(index) ? -1 : index;
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= ListCount()) {
    throw RuntimeError(kErrInvalidProperty, QStringLiteral("Invalid property value"));
  }
  {
    const QSignalBlocker blocker(Handle());
    Of(*this).setCurrentIndex(index);
    if (kind_ == DropDownCombo) Of(*this).setEditText(Of(*this).itemText(index));
  }
  last_ = Text();
  Click();
}

QString ComboBox::Text() const {
  return FromShown(Of(*this).currentText());
}

void ComboBox::SetText(const QString& text) {
  if (kind_ == DropDownList) {
    const int index = Of(*this).findText(ToShownLine(text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0) throw RuntimeError(kErrTextReadOnly, QStringLiteral("'Text' property is read-only"));
    SetListIndex(index);
    return;
  }
  if (text == Text()) return;
  {
    const QSignalBlocker blocker(Handle());
    Of(*this).setEditText(ToShownLine(text));
    Of(*this).lineEdit()->setCursorPosition(0);
  }
  last_ = text;
  Change();
}

int ComboBox::SelStart() const {
  const QLineEdit* const edit = Of(*this).lineEdit();
  if (edit == nullptr) return 0;
  return edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
}

int ComboBox::SelLength() const {
  const QLineEdit* const edit = Of(*this).lineEdit();
  return edit == nullptr ? 0 : static_cast<int>(edit->selectedText().size());
}

void ComboBox::SetSelStart(int start) {
  QLineEdit* const edit = Of(*this).lineEdit();
  if (edit == nullptr) return;
  edit->deselect();
  edit->setCursorPosition(std::max(0, start));
}

void ComboBox::SetSelLength(int length) {
  QLineEdit* const edit = Of(*this).lineEdit();
  if (edit != nullptr) edit->setSelection(SelStart(), std::max(0, length));
}

bool ComboBox::Filter(QObject* object, QEvent* event) {
  // A wheel that scrolls a form must not change the lists which it passes over.
  if (object == Handle() && event->type() == QEvent::Wheel && !Of(*this).hasFocus()) {
    event->ignore();
    return true;
  }
  return Control::Filter(object, event);
}

}  // namespace orv
