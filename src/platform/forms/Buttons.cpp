#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

#include "forms/Controls.h"
#include "forms/inner/ButtonRoles.h"
#include "forms/inner/Icons.h"

namespace orv {
namespace {

QAbstractButton& Of(const Control& control) {
  return *static_cast<QAbstractButton*>(control.Handle());
}

// A caption with a sign in front of it keeps its whole text, also in a place made for a narrower face.
void KeepWhole(QAbstractButton& button) {
  button.setMinimumWidth(button.sizeHint().width());
}

}  // namespace

CommandButton::CommandButton(Container& parent, const QString& caption, const QString& icon) {
  auto* const button = new QPushButton(caption, parent.Handle());
  if (!icon.isEmpty()) {
    button->setIcon(NamedIcon(icon));
    button->setIconSize(QSize(16, 16));
  }
  Adopt(button);
  QObject::connect(button, &QPushButton::clicked, Watcher(), [this] { Click(); });
}

QString CommandButton::Caption() const {
  return Of(*this).text();
}
void CommandButton::SetCaption(const QString& caption) {
  Of(*this).setText(caption);
}
void CommandButton::SetDefault(bool is_default) {
  static_cast<QPushButton&>(Of(*this)).setDefault(is_default);
}
void CommandButton::SetCancel(bool is_cancel) {
  Of(*this).setProperty(kCancelRole, is_cancel);
}

CheckBox::CheckBox(Container& parent, const QString& caption) {
  auto* const box = new QCheckBox(caption, parent.Handle());
  KeepWhole(*box);
  Adopt(box);
  QObject::connect(box, &QCheckBox::toggled, Watcher(), [this] { Click(); });
}

int CheckBox::Value() const {
  return Of(*this).isChecked() ? 1 : 0;
}
void CheckBox::SetValue(int value) {
  Of(*this).setChecked(value != 0);
}

OptionButton::OptionButton(Container& parent, const QString& caption) {
  auto* const button = new QRadioButton(caption, parent.Handle());
  KeepWhole(*button);
  Adopt(button);
  QObject::connect(button, &QRadioButton::toggled, Watcher(), [this](bool checked) {
    if (checked) Click();
  });
}

bool OptionButton::Value() const {
  return Of(*this).isChecked();
}

void OptionButton::SetValue(bool value) {
  // Its group would not let go of the option that is set.
  if (!value) Of(*this).setAutoExclusive(false);
  Of(*this).setChecked(value);
  Of(*this).setAutoExclusive(true);
}

}  // namespace orv
