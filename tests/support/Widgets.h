#pragma once

#include <QString>

#include "forms/Control.h"
#include "forms/Controls.h"

// Real events on the widgets behind controls.
namespace orv {

void ClickOn(const Control& control);
// Types into the control, key by key; it takes the focus first.
void TypeInto(const Control& control, const QString& text);
// A key with a shift state of Qt's (Qt::Key, Qt::KeyboardModifiers).
void PressKey(const Control& control, int key, int modifiers = 0);
// Replaces the text of a field by typing.
void Retype(TextBox& box, const QString& text);
// Chooses an entry as a user does; it raises Click.
void Choose(ComboBox& combo, int index);

// On a point of a view, in pixels.
void PressAt(const SurfaceView& view, double x, double y, int button = 1);
void DragTo(const SurfaceView& view, double x, double y, int buttons = 1);
void ReleaseAt(const SurfaceView& view, double x, double y, int button = 1);

}  // namespace orv
