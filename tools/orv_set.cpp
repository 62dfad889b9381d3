// Sets as files, their texts as a table, and the copies of a database, without a window.
#include <QCoreApplication>
#include <QDir>

#include "base/App.h"
#include "base/CommandLine.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "exchange/Copies.h"
#include "exchange/SetFile.h"
#include "exchange/SetTexts.h"
#include "state/Product.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr const char* kDescription =
    "save FILE.orvset     writes a set (--set) to a file\n"
    "bring FILE.orvset    adds the sets of a file to the database\n"
    "list [FILE.orvset]   tells the sets of a file or of the database\n"
    "texts FILE.csv       writes the texts of a set's (--set) cards to a table, or with --in takes them from "
    "it\n"
    "restore [COPY]       tells the copies of the database, or puts one in its place; what was there is kept";

// A failure in words that name the file.
struct NamedFailure {
  QString words;
};

QString Naming(const QString& file, const RuntimeError& error) {
  return QDir::toNativeSeparators(file) + QStringLiteral(": ") + error.Description();
}

class Command {
 public:
  explicit Command(const CommandLine& line) : line_(line) {}

  int Run() {
    const QStringList words = line_.Words();
    static const struct {
      const char* name;
      qsizetype least, most;  // words
      void (Command::*run)();
    } kCommands[] = {{"save", 2, 2, &Command::Save},
                     {"bring", 2, 2, &Command::Bring},
                     {"list", 1, 2, &Command::List},
                     {"texts", 2, 2, &Command::Texts},
                     {"restore", 1, 2, &Command::Restore}};
    for (const auto& command : kCommands) {
      if (words.value(0) != QLatin1String(command.name) || words.size() < command.least ||
          words.size() > command.most)
        continue;
      file_ = words.value(1);
      try {
        (this->*command.run)();
      } catch (const RuntimeError& error) {
        throw NamedFailure{file_.isEmpty() ? error.Description() : Naming(file_, error)};
      }
      return 0;
    }
    throw WrongUsage{QStringLiteral("Which command?")};
  }

 private:
  QString Database() const {
    const QString given = line_.Path("database");
    if (!given.isEmpty()) return given;
    SettleProgramFolder();
    return modData::DatabasePath();
  }

  Connection Open() const {
    const QString database = Database();
    try {
      const Connection connection = Connection::Open(database);
      modData::CheckSchema(connection);
      return connection;
    } catch (const RuntimeError& error) {
      throw NamedFailure{Naming(database, error)};
    }
  }

  std::int32_t Set(const Connection& connection) const {
    const QString name = line_["set"];
    const std::int32_t set = FindSet(connection, name);
    if (set != 0) return set;
    throw WrongUsage{QStringLiteral("There is no set of the name \"%1\". The sets are: %2")
                         .arg(name, SetNames(connection).join(QStringLiteral(", ")))};
  }

  void Save() {
    const Connection connection = Open();
    SaveSet(connection, Set(connection), file_);
  }

  void Bring() {
    const Connection connection = Open();
    const QStringList before = SetNames(connection);
    BringInSets(connection, file_);
    for (const QString& name : SetNames(connection)) {
      if (!before.contains(name)) Tell(name);
    }
  }

  void List() { Tell((file_.isEmpty() ? SetNames(Open()) : SetsInFile(file_)).join(u'\n')); }

  void Texts() {
    const Connection connection = Open();
    const std::int32_t set = Set(connection);
    if (!line_.Has("in")) return ReplaceFile(file_, TextsOfSet(connection, set));
    Tell(QStringLiteral("%1 cards changed").arg(BringInTexts(connection, set, ReadWhole(file_))));
  }

  void Restore() {
    if (file_.isEmpty()) {
      for (const QString& copy : CopiesOf(Database())) Tell(QDir::toNativeSeparators(copy));
      return;
    }
    const QString kept = RestoreCopy(Database(), file_);
    if (!kept.isEmpty()) Tell(QStringLiteral("What was there is kept as ") + kept);
  }

  const CommandLine& line_;
  QString file_;
};

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  const QCoreApplication application(argc, argv);
  CommandLine line(TheProgram(), kDescription);
  line.AddWord("COMMAND", "One of the above.", "COMMAND");
  line.AddWord("FILE", "Its file.", "[FILE]");
  line.AddValue("database", "The database; the program's own without it.", "FILE");
  line.AddValue("set", "The name of the set.", "NAME");
  line.AddFlag("in", "Take the texts from the table.");
  return line.Run(QCoreApplication::arguments(), [&] {
    try {
      return Command(line).Run();
    } catch (const NamedFailure& failure) {
      Complain(failure.words);
      return kFailureTold;
    } catch (const RuntimeError& error) {
      Complain(error.Description());
      return kFailureTold;
    }
  });
}
