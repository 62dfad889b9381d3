#pragma once

#include "forms/ListView.h"
#include "forms/Surface.h"

// What the handlers of forms do again and again.
namespace orv {

// Selects the whole text of a control with text.
template <class ControlWithText>
void SelectText(ControlWithText& control) {
  control.SetSelStart(0);
  control.SetSelLength(static_cast<int>(control.Text().size()));
}

// A click on what shows a field's text leads to the field.
template <class Field>
void LeadTo(SurfaceItem& shown, Field& field) {
  shown.Click = [&field] {
    field.SetFocus();
    if constexpr (requires { field.SetSelStart(0); }) SelectText(field);
  };
}

QString YesNo(bool value);    // "Yes" or "No"
int BoolToCheck(bool value);  // 1 or 0, for a check box

// Sorts by a column counted from 0.
void SortListView(ListView& list, int column, bool ascending);

// Says what a control without words of its own does: by its tool tip and to screen readers.
void Explain(Control& control, const QString& text);

}  // namespace orv
