// Sets as files, their texts as a table, and the copies of a database, without a window.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "exchange/Copies.h"
#include "exchange/SetFile.h"
#include "exchange/SetTexts.h"
#include "state/ProgramFolder.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr const char* kDescription =
    "save FILE.orvset     writes a set (--set) to a file\n"
    "bring FILE.orvset    adds the sets of a file to the database\n"
    "list [FILE.orvset]   tells the sets of a file or of the database\n"
    "texts FILE.csv       writes the texts of a set's (--set) cards to a table, or with --in takes them from "
    "it\n"
    "restore [COPY]       tells the copies of the database, or puts one in its place; what was there is kept";

struct WrongUsage {
  QString message;
};

class Command {
 public:
  explicit Command(const QStringList& arguments) {
    parser_.setApplicationDescription(QString::fromLatin1(kDescription));
    parser_.addPositionalArgument(QStringLiteral("COMMAND"), QStringLiteral("One of the above."));
    parser_.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Its file."),
                                  QStringLiteral("[FILE]"));
    parser_.addOption({QStringLiteral("database"),
                       QStringLiteral("The database; the program's own without it."),
                       QStringLiteral("FILE")});
    parser_.addOption(
        {QStringLiteral("set"), QStringLiteral("The name of the set."), QStringLiteral("NAME")});
    parser_.addOption({QStringLiteral("in"), QStringLiteral("Take the texts from the table.")});
    parser_.addHelpOption();
    if (!parser_.parse(arguments)) throw WrongUsage{parser_.errorText()};
  }

  int Run() {
    if (parser_.isSet(QStringLiteral("help"))) {
      out_ << parser_.helpText();
      return 0;
    }
    const QStringList words = parser_.positionalArguments();
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
      (this->*command.run)();
      return 0;
    }
    throw WrongUsage{QStringLiteral("Which command?")};
  }

 private:
  QString Database() const {
    const QString given = parser_.value(QStringLiteral("database"));
    if (!given.isEmpty()) return QFileInfo(given).absoluteFilePath();
    SettleProgramFolder();
    return modData::DatabasePath();
  }

  Connection Open() const {
    const Connection connection = Connection::Open(Database());
    modData::CheckSchema(connection);
    return connection;
  }

  std::int32_t Set(const Connection& connection) const {
    const QString name = parser_.value(QStringLiteral("set"));
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
      if (!before.contains(name)) out_ << name << Qt::endl;
    }
  }

  void List() { out_ << (file_.isEmpty() ? SetNames(Open()) : SetsInFile(file_)).join(u'\n') << Qt::endl; }

  void Texts() {
    const Connection connection = Open();
    const std::int32_t set = Set(connection);
    if (!parser_.isSet(QStringLiteral("in"))) return ReplaceFile(file_, TextsOfSet(connection, set));
    out_ << QStringLiteral("%1 cards changed").arg(BringInTexts(connection, set, ReadWhole(file_)))
         << Qt::endl;
  }

  void Restore() {
    if (file_.isEmpty()) {
      for (const QString& copy : CopiesOf(Database())) out_ << QDir::toNativeSeparators(copy) << Qt::endl;
      return;
    }
    const QString kept = RestoreCopy(Database(), file_);
    if (!kept.isEmpty()) out_ << QStringLiteral("What was there is kept as ") << kept << Qt::endl;
  }

  QCommandLineParser parser_;
  QString file_;
  QTextStream out_{stdout};
};

int Run(const QStringList& arguments) {
  QTextStream err(stderr);
  try {
    return Command(arguments).Run();
  } catch (const WrongUsage& wrong) {
    err << wrong.message << Qt::endl;
    return kWrongUsage;
  } catch (const RuntimeError& error) {
    err << error.Description() << Qt::endl;
    return kFailed;
  }
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return orv::Run(QCoreApplication::arguments());
}
