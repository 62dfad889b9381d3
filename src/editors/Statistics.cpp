#include "editors/inner/Statistics.h"

#include <cmath>
#include <functional>

#include "base/Rounding.h"
#include "forms/Dialogs.h"
#include "state/modData.h"

namespace orv {
namespace {

const QString kBreak = QStringLiteral("\r\n");

// Without decimal places, a half going away from zero.
QString Percentage(int part, int total) {
  return QString::number(std::llround(100.0 * part / total));
}

Recordset TypesOfSet(const QString& second) {
  const QString names = QStringLiteral("tblCardType.UpperLeft, tblCardType.") + second;
  modData::strSQL =
      QStringLiteral("SELECT Count(tblCardType.CardTypeID) AS NrSort, ") + names +
      QStringLiteral(" FROM tblCardType INNER JOIN tblCard ON tblCardType.CardTypeID = tblCard.CardTypeID") +
      QStringLiteral(" WHERE tblCard.SetID =  ") + QString::number(modData::CurrentSetID) +
      QStringLiteral(" GROUP BY ") + names +
      QStringLiteral(" ORDER BY Count(tblCardType.CardTypeID) DESC , ") + names;
  return modData::OpenSnapshot(modData::strSQL);
}

Recordset BacksOfSet() {
  modData::strSQL =
      QStringLiteral("SELECT Count(tblCardBack.CardBackID) AS NrBack, tblCardBack.BackText") +
      QStringLiteral(" FROM tblCardBack INNER JOIN tblCard ON tblCardBack.CardBackID = tblCard.CardBackID") +
      QStringLiteral(" WHERE tblCard.SetID =  ") + QString::number(modData::CurrentSetID) +
      QStringLiteral(" GROUP BY tblCardBack.BackText") +
      QStringLiteral(" ORDER BY Count(tblCardBack.CardBackID) DESC , tblCardBack.BackText");
  return modData::OpenSnapshot(modData::strSQL);
}

// Adds the counts of all groups to the total.
void AddCounts(Recordset& groups, const char* count_column, int& total) {
  for (; !groups.IsEOF(); groups.MoveNext()) total = ToInt16(total + groups[count_column].Int32());
  if (!groups.IsEmpty()) groups.MoveFirst();
}

QString Lines(Recordset& groups, const char* count_column, int total, const std::function<QString()>& name) {
  QString lines;
  for (; !groups.IsEOF(); groups.MoveNext()) {
    const int count = groups[count_column].Int32();
    lines += kBreak + QString::number(count) + QStringLiteral(" - ") + name() + QStringLiteral(" (") +
             Percentage(count, total) + QStringLiteral("%)");
  }
  return lines;
}

}  // namespace

void ShowStatistics(const char* second_type_name) {
  const QString second = QString::fromLatin1(second_type_name);
  int total = 0;
  Recordset types = TypesOfSet(second);
  AddCounts(types, "NrSort", total);
  QString report = QString::number(total) + QStringLiteral(" number of cards in set.") + kBreak.repeated(3) +
                   QString::number(types.RecordCount()) + QStringLiteral(" number of types used.") + kBreak;
  report += Lines(types, "NrSort", total,
                  [&] { return types["UpperLeft"].TextOrEmpty() + u' ' + types[second].TextOrEmpty(); });
  report += kBreak.repeated(3);
  // The total runs on, so the shares of the backs add up to 50 per cent.
  Recordset backs = BacksOfSet();
  AddCounts(backs, "NrBack", total);
  report += QString::number(backs.RecordCount()) + QStringLiteral(" number of sets used.") + kBreak;
  report += Lines(backs, "NrBack", total, [&] { return backs["BackText"].TextOrEmpty(); });
  MsgBox(report, Icon::Information, QStringLiteral("Cards used in set"));
}

}  // namespace orv
