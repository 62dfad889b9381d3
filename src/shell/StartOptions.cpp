#include "shell/inner/StartOptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "base/CommandLine.h"
#include "state/Product.h"

namespace orv {

StartOptions ReadStartOptions(int argc, char** argv) {
  // Help and wrong usage are told where there is no display, too.
  const QCoreApplication application(argc, argv);
  CommandLine line(TheProgram(), QStringLiteral("Designs card sets for a fantasy adventure board game."));
  line.AddWord("FILE", QStringLiteral("A set to bring in (.orvset)."), "[FILE]");
  line.PassToolkitOptions();
  bool goes_on = false;
  QString file;
  const int status = line.Run(QCoreApplication::arguments(), [&] {
    goes_on = true;
    // The window that takes it may be in another folder.
    if (!line.Words().isEmpty())
      file = QDir::toNativeSeparators(QFileInfo(line.Words().constFirst()).absoluteFilePath());
    return 0;
  });
  return {goes_on ? std::nullopt : std::optional(status), file};
}

}  // namespace orv
