#include "BatchReport.h"

#include <QHash>
#include <QTextStream>
#include <cstdio>

#include "base/Files.h"
#include "output/Saving.h"
#include "output/WriteRecords.h"

namespace orv {
namespace {

void Say(std::FILE* stream, const QString& line) {
  QTextStream(stream) << line << Qt::endl;
}

}  // namespace

BatchReport::BatchReport() {
  SheetSaved = [this](const QString& path, const QString& record, bool saved) { Saved(path, record, saved); };
  RecordBegun = [this](const QString& record) { record_ = record; };
}

BatchReport::~BatchReport() {
  SheetSaved = nullptr;
  RecordBegun = nullptr;
}

void BatchReport::Saved(const QString& path, const QString& kind_and_name, bool saved) {
  // A character has a second sheet, of another kind.
  const QString record = kind_and_name.section(u' ', 0, 0) + u' ' + record_.section(u' ', 1);
  sheets_.push_back({path, record, saved});
  if (saved) Say(stdout, path);
}

void BatchReport::Tell(const QString& text) {
  QString line = text;
  line.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ');
  Say(stderr, (record_.isEmpty() ? QString() : record_ + QStringLiteral(": ")) + line.simplified());
}

Answer BatchReport::OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) {
  told_failure_ = told_failure_ || icon == Icon::Critical || icon == Icon::Exclamation;
  Tell((title.isEmpty() ? QString() : title + QStringLiteral(": ")) + prompt);
  return buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
}

QString BatchReport::OnInputBox(const QString&, const QString&, const QString&) {
  return {};
}
QString BatchReport::OnFile(const CommonDialog&, bool) {
  return {};
}
bool BatchReport::OnColor(CommonDialog&) {
  return false;
}
QString BatchReport::OnFolder(const QString&) {
  return {};
}
bool BatchReport::OnModal(Form&) {
  return true;
}

void BatchReport::Conclude() {
  QHash<QString, QString> record_of;
  int written = 0;
  int shared = 0;
  for (const Sheet& sheet : sheets_) {
    if (!sheet.written) {
      Say(stderr, QStringLiteral("No file for %1").arg(sheet.record));
      continue;
    }
    ++written;
    if (record_of.contains(sheet.path)) {
      ++shared;
      Say(stderr, QStringLiteral("%1 has replaced the file of %2: %3")
                      .arg(sheet.record, record_of.value(sheet.path), FilePart(sheet.path)));
    }
    record_of.insert(sheet.path, sheet.record);
  }
  Say(stdout, QStringLiteral("%1 written, %2 replaced by a later one, %3 without a file")
                  .arg(written)
                  .arg(shared)
                  .arg(static_cast<int>(sheets_.size()) - written));
}

}  // namespace orv
