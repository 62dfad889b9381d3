#include "BatchReport.h"

#include <QTextStream>
#include <cstdio>

namespace orv {
namespace {

void Say(std::FILE* stream, const QString& line) {
  QTextStream(stream) << line << Qt::endl;
}

}  // namespace

BatchReport::BatchReport() : tally_([](const QString& path) { Say(stdout, path); }) {}

void BatchReport::Tell(const QString& text) {
  QString line = text;
  line.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ');
  Say(stderr,
      (tally_.Record().isEmpty() ? QString() : tally_.Record() + QStringLiteral(": ")) + line.simplified());
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
  const RunTally::Result result = tally_.Conclude();
  for (const QString& line : result.news) Say(stderr, line);
  Say(stdout, QStringLiteral("%1 written, %2 replaced by a later one, %3 without a file")
                  .arg(result.written)
                  .arg(result.replaced)
                  .arg(result.missing));
}

}  // namespace orv
