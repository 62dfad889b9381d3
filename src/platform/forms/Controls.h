#pragma once

#include <QString>
#include <QStringList>

#include "forms/Control.h"
#include "imaging/Picture.h"

class QLabel;

namespace orv {

// A text on a form. "&" in the caption marks the access key, which goes to the buddy.
class FormLabel : public Control {
 public:
  FormLabel(Container& parent, const QString& caption = {}, Alignment alignment = Alignment::Left);
  QString Caption() const;
  void SetCaption(const QString& caption);
  void SetBuddy(Control& field);
  void SetForeColor(Colour colour);
  void SetWordWrap(bool wrap);
  void SetBold(bool bold);
  // In grey, for a hint; the mouse goes through it to what lies under it.
  void SetMuted();
  // Shows at once what waits to be shown, without a turn of the message loop.
  void Refresh();
};

// Lines behind a warning sign, each of which can be clicked, also by the keyboard. Without one it is hidden.
class Notice : public Control {
 public:
  explicit Notice(Container& parent);
  void SetLines(const QStringList& lines);
  const QStringList& Lines() const { return lines_; }
  Event<int> Click;  // of a line, from 0

 private:
  QLabel* text_;  // a part of the widget
  QStringList lines_;
};

// A push button. `icon` names a resource icon (Icons.h) or is empty.
class CommandButton : public Control {
 public:
  CommandButton(Container& parent, const QString& caption, const QString& icon = {});
  QString Caption() const;
  void SetCaption(const QString& caption);
  void SetDefault(bool is_default);  // Enter presses it
  void SetCancel(bool is_cancel);    // Escape presses it
  Event<> Click;
};

// Value is 0 or 1. Click fires when the value changes, by the user or by code.
class CheckBox : public Control {
 public:
  CheckBox(Container& parent, const QString& caption);
  int Value() const;
  void SetValue(int value);
  Event<> Click;
};

// One of the options of its container.
class OptionButton : public Control {
 public:
  OptionButton(Container& parent, const QString& caption);
  bool Value() const;
  void SetValue(bool value);
  Event<> Click;
};

// An edit field with one line or several. Texts are handed out and taken with "\r\n" for a line end,
// which counts as two in SelStart and SelLength; a lone "\r" or "\n" is no line end and is kept as it is.
// Change fires when the text changes, by the user or by code; setting the same text fires nothing.
class TextBox : public Control {
 public:
  enum Kind { SingleLine, MultiLine };
  TextBox(Container& parent, Kind kind = SingleLine);
  QString Text() const;
  void SetText(const QString& text);
  int SelStart() const;
  int SelLength() const;
  void SetSelStart(int start);
  void SetSelLength(int length);
  void SetLocked(bool locked);  // the user may read and copy, and not type
  Event<> Change;
  // Locked, with several lines: the user has clicked on one, or pressed Enter on it. From 0.
  Event<int> LineChosen;

 protected:
  bool Filter(QObject* object, QEvent* event) override;

 private:
  void Select(int start, int length);
  void TextEdited();
  bool ChoosesLine(const QEvent& event) const;
  Kind kind_;
  QString last_;
};

// A combo box: a list to choose from, or with a field for free text. Stands at -1 after filling.
// Click fires for a choice by the user or code, also of the entry that was chosen already; Change for a
// change of the free text.
class ComboBox : public Control {
 public:
  enum Kind { DropDownList, DropDownCombo };
  ComboBox(Container& parent, Kind kind = DropDownList);
  void Clear();
  void AddItem(const QString& text);
  int NewIndex() const { return new_index_; }  // of the entry added last
  int ListCount() const;
  QString List(int index) const;
  std::int32_t ItemData(int index) const;  // 0 unless set; RuntimeError 9 outside the list
  void SetItemData(int index, std::int32_t data);
  int ListIndex() const;
  void SetListIndex(int index);
  QString Text() const;
  void SetText(const QString& text);  // a list kind chooses the entry with this text
  int SelStart() const;
  int SelLength() const;
  void SetSelStart(int start);
  void SetSelLength(int length);
  Event<> Click;
  Event<> Change;

 protected:
  bool Filter(QObject* object, QEvent* event) override;

 private:
  Kind kind_;
  int new_index_ = -1;
  QString last_;  // the free text
};

// Two arrows that step a value, and the field that shows it as its buddy: typing a number in range there
// sets the value. Up and Down in the field step too. Change fires when the value changes.
class UpDown : public Control {
 public:
  UpDown(Container& parent, TextBox& buddy, int min, int max);
  int Value() const { return value_; }
  void SetValue(int value);  // kept within the range; also renews the field
  Event<> Change;

 protected:
  bool Filter(QObject* object, QEvent* event) override;

 private:
  void Take(int value);
  TextBox& buddy_;
  int min_, max_;
  int value_;
  int wheel_ = 0;  // what is left of the wheel's turn, in eighths of a degree
};

// Shows a surface that lives elsewhere, at its own pixel size, and brings it the mouse, the keyboard and
// the focus. On a dense screen the finished picture is scaled.
class SurfaceView : public Control {
 public:
  SurfaceView(Container& parent, class Surface& surface);
  ~SurfaceView() override;

 private:
  class Widget;
};

}  // namespace orv
