#pragma once

#include <QString>
#include <QStringList>

#include "base/CommandLine.h"
#include "forms/Application.h"
#include "state/Product.h"

// What the programs without a window share.
namespace orv {

// Opens a database file as the program's, or the program's own where none is named; false, with a word, where
// that can't be.
bool OpenForTool(const QString& database);
// The names of all sets, one a line.
void ListSets();
// Makes a set the current one; false, with a word, where there is none of the name.
bool OpenSetOfName(const QString& name);

QStringList ArgumentsOf(int argc, char** argv);

// The whole of a tool on Qt's offscreen platform: has `read` make options of the command line, and runs what
// they ask for. The exit status.
template <class Read, class Run>
int RunTool(int argc, char** argv, CommandLine& line, Read read, Run run) {
  Application application(argc, argv, Application::Offscreen, TheProgram());
  return line.Run(ArgumentsOf(argc, argv), [&] {
    const auto options = read(line);
    return application.RunOnce([&] { return run(options); });
  });
}

}  // namespace orv
