#include "BatchOptions.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <string_view>
#include <vector>

#include "output/OutputKinds.h"

namespace orv {
namespace {

constexpr int kMostTimes = 8;

QStringList Extensions() {
  QStringList names;
  for (const PictureFormat& format : PictureFormats()) names.append(QString::fromLatin1(format.extension));
  return names;
}

// One for each name: the editions of a kind share it.
std::vector<const OutputKind*> KindsByName() {
  std::vector<const OutputKind*> kinds;
  for (const OutputKind* kind : OutputKinds()) {
    const auto same = [&](const OutputKind* other) { return std::string_view(other->name) == kind->name; };
    if (std::ranges::none_of(kinds, same)) kinds.push_back(kind);
  }
  return kinds;
}

void Declare(QCommandLineParser& parser) {
  parser.setApplicationDescription(
      QStringLiteral("Writes out all cards of a set, without a window. Needed are --set, and --to where "
                     "the set has no folder stored. Options marked * are stored in the set; one that is not "
                     "given keeps what the set holds."));
  const auto value = [&](const char* name, const char* text, const char* placeholder) {
    parser.addOption(
        {QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(placeholder)});
  };
  const auto flag = [&](const char* name, const char* text) {
    parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text)});
  };
  value("database", "The database file; the program's own without it.", "FILE");
  flag("list", "Lists the names of the sets and ends.");
  flag("check", "Reads the whole database first, and writes nothing if it is damaged.");
  value("set", "The name of the set.", "NAME");
  value("to", "* The folder for the picture files.", "FOLDER");
  value("format", "* BMP, JPG, GIF or PNG (PNG is for this run alone, and not stored in the set).", "FORMAT");
  value("prefix", "* A text in front of each file name; \"\" for none.", "TEXT");
  value("scale", "So many times as large, 1 to 8, with letters and lines as sharp.", "N");
  flag("number", "* Add the card number to the file names.");
  flag("no-number", "* Leave it out.");
  flag("no-back", "* Leave out the backs.");
  flag("back", "* Write the backs.");
  flag("underline", "* Replace spaces in the file names by underlines.");
  flag("no-underline", "* Keep them.");
  for (const OutputKind* kind : KindsByName()) {
    parser.addOption({QString::fromLatin1(kind->name),
                      QStringLiteral("Write the %1 (every kind where none is asked for).").arg(kind->words)});
  }
  parser.addHelpOption();
}

}  // namespace

ParsedOptions ParseBatchOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  Declare(parser);
  const auto refuse = [&](const QString& why) {
    return ParsedOptions{{}, why + QStringLiteral("\n\n") + parser.helpText()};
  };
  if (!parser.parse(arguments)) return refuse(parser.errorText());
  if (parser.isSet(QStringLiteral("help"))) return {{}, parser.helpText(), true};
  if (!parser.positionalArguments().isEmpty()) {
    return refuse(QStringLiteral("Unknown argument: ") + parser.positionalArguments().constFirst());
  }
  const bool list = parser.isSet(QStringLiteral("list"));
  if (!list && parser.value(QStringLiteral("set")).isEmpty())
    return refuse(QStringLiteral("--set is needed."));
  BatchOptions options;
  options.list = list;
  if (const QString database = parser.value(QStringLiteral("database")); !database.isEmpty())
    options.database = QFileInfo(database).absoluteFilePath();
  options.set = parser.value(QStringLiteral("set"));
  options.check = parser.isSet(QStringLiteral("check"));
  if (const QString folder = parser.value(QStringLiteral("to")); !folder.isEmpty())
    options.folder = QDir::toNativeSeparators(QFileInfo(folder).absoluteFilePath());
  if (parser.isSet(QStringLiteral("format"))) {
    const auto format = Extensions().indexOf(parser.value(QStringLiteral("format")).toUpper());
    if (format < 0)
      return refuse(QStringLiteral("Unknown format: ") + parser.value(QStringLiteral("format")));
    options.format = &PictureFormats()[static_cast<std::size_t>(format)];
  }
  if (parser.isSet(QStringLiteral("prefix"))) options.prefix = parser.value(QStringLiteral("prefix"));
  if (parser.isSet(QStringLiteral("scale"))) {
    options.scale = parser.value(QStringLiteral("scale")).toInt();
    if (options.scale < 1 || options.scale > kMostTimes)
      return refuse(QStringLiteral("Unknown scale: ") + parser.value(QStringLiteral("scale")));
  }
  const auto given = [&](const char* name) { return parser.isSet(QString::fromLatin1(name)); };
  struct {
    const char* yes;
    const char* no;
    std::optional<bool>& option;
  } const switches[] = {{"number", "no-number", options.number},
                        {"no-back", "back", options.no_back},
                        {"underline", "no-underline", options.underline}};
  for (const auto& [yes, no, option] : switches) {
    if (given(yes) && given(no))
      return refuse(QStringLiteral("--%1 and --%2 exclude each other.").arg(yes, no));
    if (given(yes) || given(no)) option = given(yes);
  }
  for (const OutputKind* kind : KindsByName()) {
    if (given(kind->name)) options.kinds.append(QLatin1String(kind->name));
  }
  return {options, {}};
}

}  // namespace orv
