#include "forms/HelpKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <utility>

#include "forms/Form.h"
#include "forms/inner/FormWindow.h"

namespace orv {
namespace {

// A box belongs to the window over which it stands.
const Form* FormAround(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const auto* const window = dynamic_cast<const FormWindow*>(widget)) return window->form;
  }
  return nullptr;
}

std::function<void(const Form*)>& Help() {
  static std::function<void(const Form*)> help;
  return help;
}

// Watches the whole application, which owns it.
class HelpKey : public QObject {
 public:
  explicit HelpKey(QObject& application) : QObject(&application) { application.installEventFilter(this); }
  bool eventFilter(QObject* object, QEvent* event) override;
};

bool HelpKey::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !object->isWidgetType()) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
  const Form* const form = FormAround(static_cast<QWidget*>(object));
  while (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
  if (!key.isAutoRepeat()) AskForHelp(form);
  return true;
}

}  // namespace

void SetHelp(std::function<void(const Form*)> show) {
  static QPointer<HelpKey> key;
  if (key == nullptr) key = new HelpKey(*QApplication::instance());
  Help() = std::move(show);
}

void AskForHelp(const Form* form) {
  if (Help()) Help()(form);
}

}  // namespace orv
