#include "support/DialogScript.h"

namespace orv {
namespace {

template <class T>
T Next(std::deque<T>& queue, T otherwise) {
  if (queue.empty()) return otherwise;
  T value = queue.front();
  queue.pop_front();
  return value;
}

}  // namespace

Answer DialogScript::OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) {
  boxes.push_back({prompt, icon, title, buttons, BesideBoxes::Text()});
  return buttons == Buttons::Ok ? Answer::Ok : Next(answers, Answer::No);
}

QString DialogScript::OnInputBox(const QString& prompt, const QString& title, const QString&) {
  boxes.push_back({prompt, Icon::None, title, Buttons::Ok});
  return Next(inputs, QString());
}

QString DialogScript::OnFile(const CommonDialog& dialog, bool) {
  file_dialogs.push_back(dialog);
  return Next(files, QString());
}

bool DialogScript::OnColor(CommonDialog& dialog) {
  if (colours.empty()) return false;
  dialog.Color = Next(colours, kBlack);
  return true;
}

QString DialogScript::OnFolder(const QString&) {
  return Next(folders, QString());
}

bool DialogScript::OnModal(Form& form) {
  const auto drive = Next<std::function<void(Form&)>>(modals, [](Form&) {});
  drive(form);
  return true;
}

}  // namespace orv
