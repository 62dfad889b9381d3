#include "database/ListHelpers.h"

namespace orv {

void FillCombo(ComboBox& list, Recordset& rows, const QString& text_column, const QString& key_column) {
  list.Clear();
  for (; !rows.IsEOF(); rows.MoveNext()) {
    list.AddItem(rows[text_column].Text());
    list.SetItemData(list.NewIndex(), rows[key_column].Int32());
  }
}

void SelectItemData(ComboBox& list, std::int32_t key) {
  for (int i = 0; i < list.ListCount(); ++i) {
    if (list.ItemData(i) != key) continue;
    list.SetListIndex(i);
    return;
  }
}

std::int32_t FirstItemData(const ComboBox& list) {
  return list.ItemData(0);
}
std::int32_t ChosenItemData(const ComboBox& list) {
  return list.ItemData(list.ListIndex());
}

void FindByKey(Recordset& rows, const char* key, std::int32_t value) {
  rows.FindFirst(QStringLiteral("%1 = %2").arg(QLatin1String(key)).arg(value));
}

QString TypeText(const Recordset& row) {
  const QString upper_left = row["UpperLeft"].TextOrEmpty();
  const QString lower_left = row["LowerLeft"].TextOrEmpty();
  const QString upper_right = row["UpperRight"].TextOrEmpty();
  const QString number = row["Number"].TextOrEmpty();
  QString text = upper_left;
  if (!lower_left.isEmpty()) {
    text += u' ' + lower_left;
  } else if (upper_right != upper_left) {
    text += u' ' + upper_right;
  }
  return number.isEmpty() ? text : text + QStringLiteral(" (") + number + u')';
}

}  // namespace orv
