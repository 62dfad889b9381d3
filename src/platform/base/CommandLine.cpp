#include "base/CommandLine.h"

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

CommandLine::CommandLine(const Program& program, const QString& description)
    : product_(QStringLiteral("(%1) %2").arg(program.name, program.version)) {
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

void CommandLine::PassToolkitOptions() {
  parser_.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  const auto pass = [this](const QString& name, const QString& value) {
    QCommandLineOption option(name, {}, value);
    option.setFlags(QCommandLineOption::HiddenFromHelp);
    parser_.addOption(option);
  };
  for (const char* name : {"display", "geometry", "icon", "name", "platform", "platformpluginpath",
                           "platformtheme", "plugin", "qmljsdebugger", "qwindowgeometry", "qwindowicon",
                           "qwindowtitle", "session", "style", "stylesheet", "title"})
    pass(QString::fromLatin1(name), QStringLiteral("VALUE"));
  for (const char* name : {"reverse", "widgetcount"}) pass(QString::fromLatin1(name), {});
}

int CommandLine::Run(const QStringList& arguments, const std::function<int()>& action) {
  parser_.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Displays the options.")});
  parser_.addOption(
      {{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Displays the version.")});
  const QString name = QFileInfo(arguments.value(0)).fileName();
  try {
    if (!parser_.parse(arguments)) throw WrongUsage{parser_.errorText()};
    if (Has("help")) {
      Tell(parser_.helpText());
      return 0;
    }
    if (Has("version")) {
      Tell(name + u' ' + product_);
      return 0;
    }
    if (Words().size() > most_words_)
      throw WrongUsage{QStringLiteral("Unknown argument: ") + Words().at(most_words_)};
    return action();
  } catch (const WrongUsage& wrong) {
    Complain(wrong.message);
    Complain(QStringLiteral("What it takes: %1 --help").arg(name));
    return kWrongUsage;
  }
}

QString CommandLine::Path(const char* name) const {
  const QString path = (*this)[name];
  return path.isEmpty() ? path : QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

}  // namespace orv
