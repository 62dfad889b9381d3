#pragma once

#include <QMimeData>
#include <QString>

#include "forms/Control.h"

// What a user does with the mouse beside clicking, as real events on the widgets behind controls. Places are
// points of the widget in pixels.
namespace orv {

// Each step is an event of its own, all waiting at once.
void TurnWheel(const Control& control, double x, double y, int steps);
// False where what is dragged isn't taken.
bool DropOn(const Control& control, double x, double y, const QMimeData& data);
bool DropFiles(const Control& control, double x, double y, const QStringList& files);
// Chooses from the menu of the right button, or of the menu key; false where there is no such entry to
// choose.
bool ChooseFromMenu(const Control& control, double x, double y, const QString& caption);
bool ChooseFromMenuByKey(const Control& control, const QString& caption);

}  // namespace orv
