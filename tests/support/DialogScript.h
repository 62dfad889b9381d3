#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "forms/Dialogs.h"

namespace orv {

// Answers dialogs from queues and keeps what was asked. An empty queue is Cancel, No or "OK".
class DialogScript : public DialogResponder {
 public:
  struct Box {
    QString prompt;
    Icon icon;
    QString title;
    Buttons buttons;
    QString beside = {};
  };
  std::vector<Box> boxes;
  std::vector<CommonDialog> file_dialogs;  // as they were when shown

  std::deque<Answer> answers;   // to Yes-and-No boxes
  std::deque<QString> inputs;   // to input boxes
  std::deque<QString> files;    // to file dialogs
  std::deque<QString> folders;  // to the folder dialog
  std::deque<Colour> colours;   // to the colour dialog
  std::deque<std::function<void(Form&)>>
      modals;  // drives modal forms; one without an entry is closed at once

  // The text of the last box, empty without one.
  QString LastPrompt() const { return boxes.empty() ? QString() : boxes.back().prompt; }

  Answer OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) override;
  QString OnInputBox(const QString& prompt, const QString& title, const QString& initial) override;
  QString OnFile(const CommonDialog& dialog, bool save) override;
  bool OnColor(CommonDialog& dialog) override;
  QString OnFolder(const QString& title) override;
  bool OnModal(Form& form) override;
};

}  // namespace orv
