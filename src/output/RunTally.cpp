#include "output/RunTally.h"

#include <QHash>

#include "base/Files.h"
#include "output/Saving.h"
#include "output/WriteRecords.h"

namespace orv {

RunTally::RunTally(std::function<void(const QString&)> written) : written_(std::move(written)) {
  SheetSaved = [this](const QString& path, const QString& record, bool saved) { Saved(path, record, saved); };
  RecordBegun = [this](const QString& record) { record_ = record; };
}

RunTally::~RunTally() {
  SheetSaved = nullptr;
  RecordBegun = nullptr;
}

void RunTally::Saved(const QString& path, const QString& kind_and_name, bool saved) {
  // A character has a second sheet, of another kind.
  const QString record = kind_and_name.section(u' ', 0, 0) + u' ' + record_.section(u' ', 1);
  sheets_.push_back({path, record, saved});
  if (saved && written_) written_(path);
}

RunTally::Result RunTally::Conclude() const {
  Result result;
  QHash<QString, QString> record_of;
  for (const Sheet& sheet : sheets_) {
    if (!sheet.written) {
      ++result.missing;
      result.news.append(QStringLiteral("No file for %1").arg(sheet.record));
      continue;
    }
    ++result.written;
    if (record_of.contains(sheet.path)) {
      ++result.replaced;
      result.news.append(QStringLiteral("%1 has replaced the file of %2: %3")
                             .arg(sheet.record, record_of.value(sheet.path), FilePart(sheet.path)));
    }
    record_of.insert(sheet.path, sheet.record);
  }
  return result;
}

}  // namespace orv
