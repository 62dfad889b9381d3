#include "shell/inner/StartOptions.h"

#include <QCoreApplication>

#include "base/CommandLine.h"
#include "state/Product.h"

namespace orv {

StartOptions ReadStartOptions(int argc, char** argv) {
  // Help and wrong usage are told where there is no display, too.
  const QCoreApplication application(argc, argv);
  CommandLine line(TheProgram(), QStringLiteral("Designs card sets for a fantasy adventure board game."));
  line.PassToolkitOptions();
  bool goes_on = false;
  const int status = line.Run(QCoreApplication::arguments(), [&] {
    goes_on = true;
    return 0;
  });
  return {goes_on ? std::nullopt : std::optional(status)};
}

}  // namespace orv
