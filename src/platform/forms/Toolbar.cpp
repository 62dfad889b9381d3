#include "forms/Toolbar.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "base/RuntimeError.h"
#include "forms/inner/Icons.h"

namespace orv {
namespace {

QAction* ActionAt(const std::vector<QAction*>& buttons, int index) {
  if (index < 1 || index > static_cast<int>(buttons.size())) throw RuntimeError(kErrSubscript);
  return buttons[static_cast<std::size_t>(index - 1)];
}

// The keyboard walks to the buttons where the bar stands among the controls, although the buttons come
// into being after all of them.
void TabAfterLast(QToolBar& bar, QWidget* button) {
  QWidget* last = &bar;
  for (QAction* const action : bar.actions()) {
    QWidget* const widget = bar.widgetForAction(action);
    if (widget != button && widget->focusPolicy() != Qt::NoFocus) last = widget;
  }
  // Only what takes the focus has a place in the order.
  const Qt::FocusPolicy policy = last->focusPolicy();
  last->setFocusPolicy(Qt::TabFocus);
  QWidget::setTabOrder(last, button);
  last->setFocusPolicy(policy);
}

}  // namespace

Toolbar::Toolbar(Container& parent) {
  auto* const bar = new QToolBar(parent.Handle());
  bar->setMovable(false);
  bar->setIconSize(QSize(16, 16));
  bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  Adopt(bar);
}

void Toolbar::Add(const QString& key, const QString& name, const QString& tool_tip, ToolbarStyle style,
                  const QString& icon) {
  auto& bar = *static_cast<QToolBar*>(Handle());
  if (style == ToolbarStyle::Separator) {
    buttons_.push_back(bar.addSeparator());
    return;
  }
  // The text of an action without a tool tip would be shown as one.
  QAction* const action = bar.addAction(NamedIcon(icon), tool_tip);
  action->setCheckable(style == ToolbarStyle::Check);
  QWidget* const button = bar.widgetForAction(action);
  button->setFocusPolicy(Qt::TabFocus);
  button->setAccessibleName(name);
  TabAfterLast(bar, button);
  QObject::connect(action, &QAction::triggered, Watcher(), [this, key] { ButtonClick(key); });
  buttons_.push_back(action);
}

void Toolbar::AddMenu(const QString& name, const QString& tool_tip, const QString& icon,
                      const std::vector<ToolbarMenuEntry>& entries) {
  auto& bar = *static_cast<QToolBar*>(Handle());
  auto* const room = new QWidget(&bar);
  room->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar.addWidget(room);
  auto* const button = new QToolButton(&bar);
  button->setIcon(NamedIcon(icon));
  button->setToolTip(tool_tip);
  button->setAccessibleName(name);
  button->setPopupMode(QToolButton::InstantPopup);
  button->setFocusPolicy(Qt::TabFocus);
  auto* const menu = new QMenu(button);
  for (const ToolbarMenuEntry& entry : entries) {
    if (entry.Key.isEmpty()) {
      menu->addSeparator();
      continue;
    }
    QAction* const action = entries_[entry.Key] = menu->addAction(entry.Text);
    QObject::connect(action, &QAction::triggered, Watcher(), [this, key = entry.Key] { ButtonClick(key); });
  }
  QObject::connect(menu, &QMenu::aboutToShow, Watcher(), [this] { MenuOpens(); });
  button->setMenu(menu);
  bar.addWidget(button);
  TabAfterLast(bar, button);
}

void Toolbar::SetEntryText(const QString& key, const QString& text) {
  if (const auto entry = entries_.find(key); entry != entries_.end()) entry->second->setText(text);
}

int Toolbar::Value(int index) const {
  return ActionAt(buttons_, index)->isChecked() ? 1 : 0;
}
void Toolbar::SetValue(int index, int value) {
  ActionAt(buttons_, index)->setChecked(value != 0);
}

}  // namespace orv
