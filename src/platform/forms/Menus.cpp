#include "forms/inner/Menus.h"

#include <QMenu>

namespace orv {

void PopUp(QWidget& owner, const std::vector<MenuItem>& items, const QPoint& place) {
  if (items.empty()) return;
  auto* const menu = new QMenu(&owner);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const MenuItem& each : items) {
    if (each.Caption.isEmpty()) {
      menu->addSeparator();
      continue;
    }
    QAction* const action = menu->addAction(each.Caption + u'\t' + each.Keys, &owner, each.Click);
    action->setEnabled(each.Enabled);
  }
  menu->popup(place);
}

}  // namespace orv
