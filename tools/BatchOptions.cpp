#include "BatchOptions.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "output/OutputKinds.h"

namespace orv {
namespace {

constexpr int kMostTimes = 8;

// One for each name: the editions of a kind share it.
std::vector<const OutputKind*> KindsByName() {
  std::vector<const OutputKind*> kinds;
  for (const OutputKind* kind : OutputKinds()) {
    const auto same = [&](const OutputKind* other) { return std::string_view(other->name) == kind->name; };
    if (std::ranges::none_of(kinds, same)) kinds.push_back(kind);
  }
  return kinds;
}

const PictureFormat* FormatNamed(const QString& name) {
  for (const PictureFormat& format : PictureFormats()) {
    if (name.compare(QLatin1String(format.extension), Qt::CaseInsensitive) == 0) return &format;
  }
  throw WrongUsage{QStringLiteral("Unknown format: ") + name};
}

int ScaleIn(const QString& text) {
  const int scale = text.toInt();
  if (scale < 1 || scale > kMostTimes) throw WrongUsage{QStringLiteral("Unknown scale: ") + text};
  return scale;
}

// What one of two flags says, if one is given.
std::optional<bool> Switch(const CommandLine& line, const char* yes, const char* no) {
  if (line.Has(yes) && line.Has(no))
    throw WrongUsage{QStringLiteral("--%1 and --%2 exclude each other.").arg(yes, no)};
  return line.Has(yes) || line.Has(no) ? std::optional(line.Has(yes)) : std::nullopt;
}

}  // namespace

void DeclareBatchOptions(CommandLine& line) {
  line.AddValue("database", "The database file; the program's own without it.", "FILE");
  line.AddFlag("list", "Lists the names of the sets and ends.");
  line.AddFlag("check", "Reads the whole database first, and writes nothing if it is damaged.");
  line.AddValue("set", "The name of the set.", "NAME");
  line.AddValue("to", "* The folder for the picture files.", "FOLDER");
  line.AddValue("format", "* BMP, JPG, GIF or PNG (PNG is for this run alone, and not stored in the set).",
                "FORMAT");
  line.AddValue("prefix", "* A text in front of each file name; \"\" for none.", "TEXT");
  line.AddValue("scale", "So many times as large, 1 to 8, with letters and lines as sharp.", "N");
  line.AddFlag("number", "* Add the card number to the file names.");
  line.AddFlag("no-number", "* Leave it out.");
  line.AddFlag("no-back", "* Leave out the backs.");
  line.AddFlag("back", "* Write the backs.");
  line.AddFlag("underline", "* Replace spaces in the file names by underlines.");
  line.AddFlag("no-underline", "* Keep them.");
  for (const OutputKind* kind : KindsByName()) {
    line.AddFlag(kind->name,
                 QStringLiteral("Write the %1 (every kind where none is asked for).").arg(kind->words));
  }
}

BatchOptions ReadBatchOptions(const CommandLine& line) {
  BatchOptions options;
  options.list = line.Has("list");
  options.check = line.Has("check");
  options.database = line.Path("database");
  options.set = line["set"];
  if (!options.list && options.set.isEmpty()) throw WrongUsage{"--set is needed."};
  options.folder = line.Path("to");
  if (line.Has("format")) options.format = FormatNamed(line["format"]);
  if (line.Has("prefix")) options.prefix = line["prefix"];
  if (line.Has("scale")) options.scale = ScaleIn(line["scale"]);
  options.number = Switch(line, "number", "no-number");
  options.no_back = Switch(line, "no-back", "back");
  options.underline = Switch(line, "underline", "no-underline");
  for (const OutputKind* kind : KindsByName()) {
    if (line.Has(kind->name)) options.kinds.append(QLatin1String(kind->name));
  }
  return options;
}

}  // namespace orv
