#include "forms/Dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <utility>

#include "base/Shortened.h"
#include "forms/Control.h"
#include "forms/inner/Icons.h"

namespace orv {
namespace {

DialogResponder* responder = nullptr;
QStringList beside;

// A box that is higher than any screen could not be answered.
constexpr qsizetype kMostLetters = 4000;

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::Critical:
      return QMessageBox::Critical;
    case Icon::Question:
      return QMessageBox::Question;
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

QString WithLineFeeds(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QString TitleOr(const QString& title) {
  return title.isEmpty() ? QApplication::applicationName() : title;
}

}  // namespace

BesideBoxes::BesideBoxes(const QString& text) {
  beside.append(text);
}
BesideBoxes::~BesideBoxes() {
  beside.removeLast();
}
QString BesideBoxes::Text() {
  QStringList lines = beside;
  lines.removeAll(QString());
  return lines.join(QStringLiteral("\r\n"));
}

DialogResponderScope::DialogResponderScope(DialogResponder& installed)
    : former_(std::exchange(responder, &installed)) {}

DialogResponderScope::~DialogResponderScope() {
  responder = former_;
}

DialogResponder* CurrentResponder() {
  return responder;
}

Answer MsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) {
  if (responder != nullptr) return responder->OnMsgBox(prompt, icon, title, buttons);
  QMessageBox box(QApplication::activeWindow());
  box.setWindowIcon(NamedIcon(QStringLiteral("app")));
  box.setWindowTitle(TitleOr(title));
  box.setIcon(IconOf(icon));
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setText(WithLineFeeds(Clipped(prompt, kMostLetters)));
  box.setInformativeText(WithLineFeeds(Clipped(BesideBoxes::Text(), kMostLetters)));
  for (auto* const label : box.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  if (buttons == Buttons::Ok) {
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return Answer::Ok;
  }
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.setDefaultButton(buttons == Buttons::YesNo ? QMessageBox::Yes : QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

QString InputBox(const QString& prompt, const QString& title, const QString& initial) {
  if (responder != nullptr) return responder->OnInputBox(prompt, title, initial);
  QInputDialog box(QApplication::activeWindow());
  box.setWindowIcon(NamedIcon(QStringLiteral("app")));
  box.setWindowTitle(TitleOr(title));
  box.setLabelText(WithLineFeeds(Clipped(prompt, kMostLetters)));
  box.setTextValue(initial);
  for (auto* const label : box.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

QString BrowseFolder(const QString& title, const Control* owner) {
  if (responder != nullptr) return responder->OnFolder(title);
  QFileDialog dialog(owner != nullptr ? owner->Handle()->window() : QApplication::activeWindow(),
                     TitleOr(title));
  dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::ShowDirsOnly);
  dialog.setFileMode(QFileDialog::Directory);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  const QString folder = QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
  return folder.endsWith(QDir::separator()) ? folder : folder + QDir::separator();
}

}  // namespace orv
