#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "forms/Controls.h"

namespace orv {
namespace {

constexpr int kWidth = 17;
constexpr int kNotch = 120;  // eighths of a degree

QLineEdit& FieldOf(const TextBox& buddy) {
  return *static_cast<QLineEdit*>(buddy.Handle());
}

QToolButton* AddArrow(QWidget* parent, Qt::ArrowType arrow, const QString& name) {
  auto* const button = new QToolButton(parent);
  button->setArrowType(arrow);
  button->setAutoRepeat(true);
  button->setFocusPolicy(Qt::NoFocus);  // the field has the keys
  button->setAccessibleName(name);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  button->setFixedWidth(kWidth);
  parent->layout()->addWidget(button);
  return button;
}

}  // namespace

UpDown::UpDown(Container& parent, TextBox& buddy, int min, int max)
    : buddy_(buddy), min_(min), max_(max), value_(min) {
  auto* const widget = new QWidget(parent.Handle());
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  auto* const up = AddArrow(widget, Qt::UpArrow, QStringLiteral("More"));
  auto* const down = AddArrow(widget, Qt::DownArrow, QStringLiteral("Less"));
  widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  widget->setFixedWidth(kWidth);
  Adopt(widget);
  Watch(buddy.Handle());
  QObject::connect(up, &QToolButton::clicked, Watcher(), [this] { SetValue(value_ + 1); });
  QObject::connect(down, &QToolButton::clicked, Watcher(), [this] { SetValue(value_ - 1); });
  QObject::connect(&FieldOf(buddy), &QLineEdit::textEdited, Watcher(), [this](const QString& text) {
    bool number = false;
    const int typed = text.trimmed().toInt(&number);
    if (number && typed >= min_ && typed <= max_) Take(typed);
  });
}

void UpDown::SetValue(int value) {
  value = std::clamp(value, min_, max_);
  buddy_.SetText(QString::number(value));
  Take(value);
}

void UpDown::Take(int value) {
  if (value == value_) return;
  value_ = value;
  Change();
}

bool UpDown::Filter(QObject* object, QEvent* event) {
  QLineEdit& field = FieldOf(buddy_);
  if (object != &field) return Control::Filter(object, event);
  switch (event->type()) {
    case QEvent::KeyPress: {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
      SetValue(value_ + (key == Qt::Key_Up ? 1 : -1));
      return true;
    }
    case QEvent::Wheel: {
      if (!field.hasFocus()) return false;
      wheel_ += static_cast<QWheelEvent*>(event)->angleDelta().y();
      const int steps = wheel_ / kNotch;
      wheel_ -= steps * kNotch;
      if (steps != 0) SetValue(value_ + steps);
      return true;
    }
    case QEvent::FocusOut:
      // What was typed without being a value gives way to the value.
      if (field.isModified()) buddy_.SetText(QString::number(value_));
      return false;
    default:
      return false;
  }
}

}  // namespace orv
