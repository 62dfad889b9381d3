#include "PrintCommand.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

namespace orv {
namespace {

QString Absolute(const QString& path) {
  return path.isEmpty() ? path : QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

}  // namespace

Parsed<PrintCommand> ParsePrintCommand(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Writes the cards of a set as sheets for print, a PDF file."));
  const auto add = [&](const char* name, const char* text, const char* placeholder = "") {
    parser.addOption(
        {QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(placeholder)});
  };
  add("database", "The database file; the program's own without it.", "FILE");
  add("list", "Lists the names of the sets and ends.");
  add("set", "The name of the set.", "NAME");
  add("to", "The PDF file.", "FILE");
  add("check", "Only tells what print would show badly.");
  add("test-sheet", "Writes a sheet with a grid for both sides, to find the shift of the backs.");
  for (const PrintOption& option : AllPrintOptions()) add(option.name, option.help, option.placeholder);
  parser.addHelpOption();

  const auto refuse = [&](const QString& why) {
    return Parsed<PrintCommand>{{}, why + QStringLiteral("\n\n") + parser.helpText()};
  };
  const auto given = [&](const char* name) { return parser.isSet(QString::fromLatin1(name)); };
  const auto value = [&](const char* name) { return parser.value(QString::fromLatin1(name)); };
  if (!parser.parse(arguments)) return refuse(parser.errorText());
  if (given("help")) return {{}, parser.helpText(), true};
  if (!parser.positionalArguments().isEmpty())
    return refuse(QStringLiteral("Unknown argument: ") + parser.positionalArguments().constFirst());
  PrintCommand command;
  command.list = given("list");
  command.test_sheet = given("test-sheet");
  command.database = Absolute(value("database"));
  command.set = value("set");
  command.file = given("check") ? QString() : Absolute(value("to"));
  if (command.set.isEmpty() && !command.list && !command.test_sheet)
    return refuse(QStringLiteral("--set is needed."));
  if (command.file.isEmpty() && !command.list && !given("check"))
    return refuse(QStringLiteral("--to is needed."));
  for (const PrintOption& option : AllPrintOptions()) {
    if (!given(option.name)) continue;
    const QString text = *option.placeholder != 0 ? value(option.name) : QStringLiteral("Yes");
    const QString wrong = SetPrintOption(command.options, QLatin1String(option.name), text);
    if (!wrong.isEmpty()) return refuse(wrong);
  }
  return {command, {}};
}

}  // namespace orv
