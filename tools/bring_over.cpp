// Makes a database of this program of one of an older version, without a window.
#include <QCoreApplication>

#include "base/CommandLine.h"
#include "base/RuntimeError.h"
#include "exchange/BringOver.h"
#include "state/Product.h"

namespace orv {
namespace {

int Run(const QString& old_path, const QString& new_path) {
  try {
    const BroughtOver result = BringOver(old_path, new_path, [](int) {});
    for (const QString& line : result.counts) Tell(line);
    for (const QString& line : result.left_out) Complain(QStringLiteral("Left out: ") + line);
    return 0;
  } catch (const RuntimeError& error) {
    Complain(old_path + QStringLiteral(": ") + error.Description());
    return kFailureTold;
  }
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  using namespace orv;
  const QCoreApplication application(argc, argv);
  CommandLine line(TheProgram(),
                   "Makes a database of this program of one of an older version, which stays as it is.");
  line.AddWord("OLD", "The database of the older version.", "OLD");
  line.AddValue("to", "The new file.", "NEW");
  return line.Run(QCoreApplication::arguments(), [&] {
    if (line.Words().isEmpty()) throw WrongUsage{"The database of the older version is needed."};
    if (line["to"].isEmpty()) throw WrongUsage{"--to is needed."};
    return Run(line.Words().constFirst(), line["to"]);
  });
}
