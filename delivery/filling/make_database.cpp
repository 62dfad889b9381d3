// Makes the delivered database: make_database <path> [--if-missing] [--digests=<path>]. It never replaces a
// database. The digests tell which stored picture is of which drawing script.
#include <QCoreApplication>
#include <cstdio>
#include <exception>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "filling/BuildDatabase.h"

namespace {

int Fail(const char* what) {
  std::fprintf(stderr, "make_database: %s\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QStringList arguments = QCoreApplication::arguments().mid(1);
  const bool if_missing = arguments.removeAll("--if-missing") > 0;
  const QString option = QStringLiteral("--digests=");
  const QString digests = arguments.filter(option).value(0);
  arguments.removeAll(digests);
  if (arguments.size() != 1 || arguments[0].startsWith("--")) {
    std::fputs("usage: make_database <path> [--if-missing] [--digests=<path>]\n", stderr);
    return 2;
  }
  if (orv::FileExists(arguments[0])) {
    return if_missing ? 0 : Fail("the file is there already, and a database is never replaced");
  }
  try {
    orv::delivery::BuildDatabase(arguments[0], ORV_CONTENT_DIR, digests.mid(option.size()));
  } catch (const orv::RuntimeError& error) {
    return Fail(qPrintable(error.NumberAndDescription()));
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
  return 0;
}
