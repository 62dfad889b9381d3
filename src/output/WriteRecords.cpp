#include "output/WriteRecords.h"

#include "base/Rounding.h"

namespace orv {
namespace {

void WriteRecord(const OutputKind& kind, const SheetFormat& format) {
  kind.draw();
  kind.compose();
  for (const SheetKind* sheet : kind.sheets) SaveSheet(*sheet, format);
}

}  // namespace

int WriteRecords(const OutputKind& kind, const SheetFormat& format,
                 const std::function<void(int)>& progress) {
  Recordset& records = kind.records;
  if (!records.IsOpen() || records.IsEmpty()) return 0;
  int number = 0;
  for (records.MoveFirst(); !records.IsEOF(); records.MoveNext()) {
    ++number;
    records["Nr"] = int{ToInt16(number)};
    records.Update();
    progress(number);
    WriteRecord(kind, format);
  }
  records.MoveLast();
  return number;
}

}  // namespace orv
