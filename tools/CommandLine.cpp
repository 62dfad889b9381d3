#include "CommandLine.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>

namespace orv {

void Complain(const QString& text) {
  QTextStream(stderr) << QString(text).remove(u'\r') << Qt::endl;
}

void Tell(const QString& text) {
  QTextStream(stdout) << text << Qt::endl;
}

CommandLine::CommandLine(const QString& description) {
  parser_.setApplicationDescription(description);
}

void CommandLine::AddFlag(const char* name, const QString& help) {
  parser_.addOption({QString::fromLatin1(name), help});
}

void CommandLine::AddValue(const char* name, const QString& help, const char* placeholder) {
  parser_.addOption({QString::fromLatin1(name), help, QString::fromLatin1(placeholder)});
}

void CommandLine::AddWord(const char* name, const QString& help, const char* syntax) {
  parser_.addPositionalArgument(QString::fromLatin1(name), help, QString::fromLatin1(syntax));
  ++most_words_;
}

int CommandLine::Run(const QStringList& arguments, const std::function<int()>& action) {
  parser_.addHelpOption();
  try {
    if (!parser_.parse(arguments)) throw WrongUsage{parser_.errorText()};
    if (Has("help")) {
      Tell(parser_.helpText());
      return 0;
    }
    if (Words().size() > most_words_)
      throw WrongUsage{QStringLiteral("Unknown argument: ") + Words().at(most_words_)};
    return action();
  } catch (const WrongUsage& wrong) {
    Complain(wrong.message);
    Complain(QStringLiteral("What it takes: %1 --help").arg(QFileInfo(arguments.value(0)).fileName()));
    return kWrongUsage;
  }
}

QString CommandLine::Path(const char* name) const {
  const QString path = (*this)[name];
  return path.isEmpty() ? path : QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

}  // namespace orv
