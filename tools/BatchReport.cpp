#include "BatchReport.h"

#include <QHash>
#include <QTextStream>
#include <cstdio>

#include "base/Files.h"
#include "output/Saving.h"

namespace orv {
namespace {

void Say(std::FILE* stream, const QString& line) {
  QTextStream(stream) << line << Qt::endl;
}

}  // namespace

BatchReport::BatchReport() {
  SheetSaved = [this](const QString& path, const QString& record, bool saved) { Saved(path, record, saved); };
}

BatchReport::~BatchReport() {
  SheetSaved = nullptr;
}

void BatchReport::Saved(const QString& path, const QString& record, bool saved) {
  sheets_.push_back({path, record});
  if (!saved || !FileExists(path)) return;
  ++written_;
  Say(stdout, path);
}

Answer BatchReport::OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) {
  told_failure_ = told_failure_ || icon == Icon::Critical || icon == Icon::Exclamation;
  QString line = prompt;
  line.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ');
  Say(stderr, title + QStringLiteral(": ") + line.simplified());
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
  int shared = 0;
  int missing = 0;
  for (const Sheet& sheet : sheets_) {
    if (sheet.path.isEmpty() || !FileExists(sheet.path)) {
      ++missing;
      Say(stderr, QStringLiteral("No file for %1").arg(sheet.record));
      continue;
    }
    if (record_of.contains(sheet.path)) {
      ++shared;
      Say(stderr, QStringLiteral("%1 has replaced the file of %2: %3")
                      .arg(sheet.record, record_of.value(sheet.path), FilePart(sheet.path)));
    }
    record_of.insert(sheet.path, sheet.record);
  }
  Say(stdout, QStringLiteral("%1 written, %2 replaced by a later one, %3 without a file")
                  .arg(written_)
                  .arg(shared)
                  .arg(missing));
}

}  // namespace orv
