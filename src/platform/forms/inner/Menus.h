#pragma once

#include <QPoint>
#include <vector>

#include "forms/DataObject.h"

class QWidget;

namespace orv {

// Shows a menu at a point of the screen; nothing where there are no items. It closes with its owner.
void PopUp(QWidget& owner, const std::vector<MenuItem>& items, const QPoint& place);

}  // namespace orv
