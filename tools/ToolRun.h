#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "forms/Application.h"
#include "state/Product.h"

// What the programs without a window share.
namespace orv {

inline constexpr int kFailureTold = 1;  // exit status
inline constexpr int kWrongUsage = 2;

// A line on the standard error, and on the standard output.
void Complain(const QString& text);
void Tell(const QString& text);

// What a command line asks for.
template <class Options>
struct Parsed {
  std::optional<Options> options;
  QString message;  // why there are none, or the help that was asked for
  bool help = false;
};

// Opens a database file as the program's, or the program's own where none is named; false, with a word, where
// that can't be.
bool OpenForTool(const QString& database);
// The names of all sets, one a line.
void ListSets();
// Makes a set the current one; false, with a word, where there is none of the name.
bool OpenSetOfName(const QString& name);

QStringList ArgumentsOf(int argc, char** argv);

// The whole of a tool: reads the command line and runs what it asks for, on Qt's offscreen platform. The exit
// status.
template <class Parse, class Run>
int RunTool(int argc, char** argv, Parse parse, Run run) {
  Application application(argc, argv, Application::Offscreen, TheProgram());
  const auto parsed = parse(ArgumentsOf(argc, argv));
  if (parsed.options) return application.RunOnce([&] { return run(*parsed.options); });
  if (parsed.help) {
    Tell(parsed.message);
    return 0;
  }
  Complain(parsed.message);
  return kWrongUsage;
}

}  // namespace orv
