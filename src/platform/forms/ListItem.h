#pragma once

#include <QString>
#include <QStringList>

namespace orv {

// One entry of a list view: the text of the first column and those of the others.
struct ListItem {
  QString Key;
  QString Text;
  QStringList SubItems;
  QString Tag;
  QString ToolTipText;
};

}  // namespace orv
