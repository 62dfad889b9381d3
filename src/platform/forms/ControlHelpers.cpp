#include "forms/ControlHelpers.h"

namespace orv {

QString YesNo(bool value) {
  return value ? QStringLiteral("Yes") : QStringLiteral("No");
}
int BoolToCheck(bool value) {
  return value ? 1 : 0;
}

void SortListView(ListView& list, int column, bool ascending) {
  list.SetSortKey(column);
  list.SetSortAscending(ascending);
  list.SetSorted(true);
}

void Explain(Control& control, const QString& text) {
  control.SetToolTip(text);
  control.SetAccessibleName(text);
}

}  // namespace orv
