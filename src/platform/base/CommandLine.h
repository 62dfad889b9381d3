#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <functional>

#include "base/App.h"

namespace orv {

inline constexpr int kFailureTold = 1;  // exit status
inline constexpr int kWrongUsage = 2;

// A line on the standard error, and on the standard output.
void Complain(const QString& text);
void Tell(const QString& text);

// What was asked for can't be understood; thrown while a command line is read.
struct WrongUsage {
  QString message;
};

// The command line of a program: what it may hold, and then what it holds. Each knows --help and --version.
class CommandLine {
 public:
  CommandLine(const Program& program, const QString& description);

  void AddFlag(const char* name, const QString& help);
  void AddValue(const char* name, const QString& help, const char* placeholder);
  void AddWord(const char* name, const QString& help, const char* syntax);  // without dashes
  // Lets pass what a program with a window takes for its toolkit, such as "-session" of a desktop that starts
  // it again.
  void PassToolkitOptions();

  // Reads the arguments, the first of which is the program's own name, and runs the action, which asks for
  // what they hold. Tells the help, the version, or what is wrong with them or was thrown as WrongUsage. The
  // exit status. Needs a QCoreApplication.
  int Run(const QStringList& arguments, const std::function<int()>& action);

  bool Has(const char* name) const { return parser_.isSet(QLatin1String(name)); }
  QString operator[](const char* name) const { return parser_.value(QLatin1String(name)); }
  // An absolute path, in the system's notation; empty where none is given.
  QString Path(const char* name) const;
  QStringList Words() const { return parser_.positionalArguments(); }

 private:
  QCommandLineParser parser_;
  QString product_;
  qsizetype most_words_ = 0;
};

}  // namespace orv
