// Makes a database of this program of one of an older version, without a window.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include "base/RuntimeError.h"
#include "exchange/BringOver.h"

namespace orv {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int Run(const QString& old_path, const QString& new_path) {
  QTextStream out(stdout);
  QTextStream err(stderr);
  try {
    const BroughtOver result = BringOver(old_path, new_path, [](int) {});
    for (const QString& line : result.counts) out << line << Qt::endl;
    for (const QString& line : result.left_out) err << "Left out: " << line << Qt::endl;
    return 0;
  } catch (const RuntimeError& error) {
    err << old_path << ": " << error.Description() << Qt::endl;
    return kFailed;
  }
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Makes a database of this program of one of an older version, which stays as it is."));
  parser.addPositionalArgument(QStringLiteral("OLD"), QStringLiteral("The database of the older version."));
  parser.addOption({QStringLiteral("to"), QStringLiteral("The new file."), QStringLiteral("NEW")});
  parser.addHelpOption();
  const bool understood = parser.parse(QCoreApplication::arguments());
  if (understood && parser.isSet(QStringLiteral("help"))) parser.showHelp();
  if (!understood || parser.positionalArguments().size() != 1 ||
      parser.value(QStringLiteral("to")).isEmpty()) {
    QTextStream(stderr) << parser.helpText();
    return orv::kWrongUsage;
  }
  return orv::Run(parser.positionalArguments().constFirst(), parser.value(QStringLiteral("to")));
}
