#pragma once

#include "forms/ListView.h"

// What the handlers of forms do again and again.
namespace orv {

// Selects the whole text of a control with text.
template <class ControlWithText>
void SelectText(ControlWithText& control) {
  control.SetSelStart(0);
  control.SetSelLength(static_cast<int>(control.Text().size()));
}

QString YesNo(bool value);    // "Yes" or "No"
int BoolToCheck(bool value);  // 1 or 0, for a check box

// Sorts by a column counted from 0.
void SortListView(ListView& list, int column, bool ascending);

// Says what a control without words of its own does: by its tool tip and to screen readers.
void Explain(Control& control, const QString& text);

}  // namespace orv
