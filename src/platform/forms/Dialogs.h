#pragma once

#include <QString>

#include "forms/Types.h"

namespace orv {

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, YesNo, NoYes };
enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

// A modal box. An empty title shows the program's name. Closing a Yes-and-No box by its frame is No. Enter
// presses the button that is named first.
Answer MsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons = Buttons::Ok);

// A modal box with a text field. Cancel gives the empty text.
QString InputBox(const QString& prompt, const QString& title, const QString& initial = {});

// A folder with a closing separator, or the empty text on Cancel.
QString BrowseFolder(const QString& title, const class Control* owner);

// The number of the error that a cancelled dialog raises.
inline constexpr int kErrCancel = 32755;

// The common dialog of a form, set by its properties and then shown. With CancelError, Cancel is
// RuntimeError 32755; without, it leaves the properties as they are.
class CommonDialog {
 public:
  QString DialogTitle;
  bool CancelError = false;
  QString InitDir;
  QString FileName;     // in: proposed; out: chosen, whole path
  QString Filter;       // "text|patterns|text|patterns"
  int FilterIndex = 1;  // from 1
  QString DefaultExt;   // added to a chosen name without an extension
  int Flags = 0;  // of the field's file dialogs: 0x2 ask before overwriting, 0x800 and 0x1000 path and file
                  // must exist
  Colour Color = kBlack;  // in: shown first; out: chosen

  void ShowOpen();
  void ShowSave();
  void ShowColor();
};

// While it lives, message boxes show a text beside theirs, which stays as it is. One within another adds a
// line.
class BesideBoxes {
 public:
  explicit BesideBoxes(const QString& text);
  ~BesideBoxes();
  BesideBoxes(const BesideBoxes&) = delete;
  BesideBoxes& operator=(const BesideBoxes&) = delete;
  // What stands beside a box now.
  static QString Text();
};

// Answers dialogs in the place of a user: for tests and for runs without a window. While one is
// installed, no dialog is shown.
class DialogResponder {
 public:
  virtual ~DialogResponder() = default;
  virtual Answer OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) = 0;
  virtual QString OnInputBox(const QString& prompt, const QString& title, const QString& initial) = 0;
  // The chosen path, or empty for Cancel. `save` tells which dialog it is.
  virtual QString OnFile(const CommonDialog& dialog, bool save) = 0;
  // True if a colour was chosen, which `dialog.Color` then is.
  virtual bool OnColor(CommonDialog& dialog) = 0;
  virtual QString OnFolder(const QString& title) = 0;
  // A form is about to be shown modally: return true to drive it instead of the user (the form is
  // visible meanwhile and hidden afterwards).
  virtual bool OnModal(class Form& form) = 0;
};

// Installs a responder for the life of the object; the earlier one comes back after it.
class DialogResponderScope {
 public:
  explicit DialogResponderScope(DialogResponder& responder);
  ~DialogResponderScope();
  DialogResponderScope(const DialogResponderScope&) = delete;
  DialogResponderScope& operator=(const DialogResponderScope&) = delete;

 private:
  DialogResponder* former_;
};

// For the platform's own rooms: the installed responder or nothing.
DialogResponder* CurrentResponder();

}  // namespace orv
