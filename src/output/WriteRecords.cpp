#include "output/WriteRecords.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "base/Rounding.h"
#include "base/Shortened.h"
#include "forms/Dialogs.h"
#include "pictures/PicturesAhead.h"
#include "state/modData.h"

namespace orv {
namespace {

// So many records get their numbers and file names in one transaction, which is durable before the first of
// them is drawn.
constexpr int kGroup = 16;

// Numbers a group of records from the current one on, and stays there. Where the save freezes a name, it is
// frozen here already.
void NumberGroup(const OutputKind& kind, int number) {
  Recordset& records = kind.records;
  const bool freezes = kind.sheets.front()->fills_name_from_title;
  Transaction transaction(modData::cn);
  int count = 0;
  for (; count < kGroup && number <= std::numeric_limits<std::int16_t>::max() && !records.IsEOF(); ++count) {
    records["Nr"] = number++;
    if (freezes && !records["Title"].IsNull()) FillFileName(records);
    records.Update();
    records.MoveNext();
  }
  transaction.Commit();
  if (records.IsEOF()) {
    records.MoveLast();
    --count;
  }
  for (; count > 0; --count) records.MovePrevious();
}

std::vector<QByteArray> PicturesOfNext(const OutputKind& kind) {
  std::vector<QByteArray> files;
  for (const char* column : kind.pictures) files.push_back(kind.records[column].NextBytes());
  return files;
}

// Such as "C2 007 Magic Sword", of what the record holds itself.
QString WordsFor(const OutputKind& kind) {
  const SheetKind& sheet = *kind.sheets.front();
  const Recordset& record = kind.records;
  const QString title = sheet.fills_name_from_title ? QStringLiteral("Title") : sheet.name_column;
  return QStringLiteral("%1 %2 %3")
      .arg(QLatin1String(sheet.kind_code),
           QStringLiteral("%1").arg(record["Nr"].Int32Or(0), 3, 10, QChar(u'0')),
           record[title].TextOrEmpty());
}

void WriteRecord(const OutputKind& kind, const SheetFormat& format, PicturesAhead& ahead) {
  const QString words = WordsFor(kind);
  RecordBegun(words);
  const BesideBoxes record(Shortened(words));
  {
    const ReadScope reading(modData::cn);
    ahead.Advance(PicturesOfNext(kind));
    kind.draw();
    kind.compose();
  }
  for (const SheetKind* sheet : kind.sheets) SaveSheet(*sheet, format);
}

}  // namespace

int WriteRecords(const OutputKind& kind, const SheetFormat& format,
                 const std::function<void(int)>& progress) {
  Recordset& records = kind.records;
  if (!records.IsOpen() || records.IsEmpty()) return 0;
  PicturesAhead ahead;
  int number = 0;
  for (records.MoveFirst(); !records.IsEOF(); records.MoveNext()) {
    if (number % kGroup == 0) NumberGroup(kind, number + 1);
    ++number;
    (void)ToInt16(number);  // a number past 16 bits ends the run
    progress(number);
    WriteRecord(kind, format, ahead);
  }
  records.MoveLast();
  return number;
}

}  // namespace orv
