// Draws pictures of the drawing scripts into a folder: make_artwork <script folder> <target folder>
// [--png] [--large] <picture>... ; all of them when none is named. BMP unless told otherwise; four times as
// large with --large.
#include <QCoreApplication>
#include <QDir>
#include <cstdio>
#include <exception>

#include "artwork/Draw.h"
#include "artwork/Encode.h"
#include "base/Files.h"
#include "base/RuntimeError.h"

namespace {

void Make(const QStringList& arguments) {
  const auto script = orv::artwork::Script::Load(arguments[0]);
  QStringList names = arguments.mid(2);
  const bool png = names.removeAll("--png") > 0;
  const int scale = names.removeAll("--large") > 0 ? 4 : 1;
  if (names.isEmpty()) names = script.Pictures();
  QDir().mkpath(arguments[1]);
  for (const QString& name : names) {
    const QImage image = Draw(script, name, scale);
    const QString path = orv::JoinPath(arguments[1], name);
    if (png) {
      image.save(path + ".png");
    } else {
      orv::ReplaceFile(path + ".bmp", orv::artwork::ToBmp(image));
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList arguments = QCoreApplication::arguments().mid(1);
  if (arguments.size() < 2) {
    std::fputs("usage: make_artwork <script folder> <target folder> [--png] [--large] [<picture>...]\n",
               stderr);
    return 2;
  }
  try {
    Make(arguments);
  } catch (const orv::RuntimeError& error) {
    std::fprintf(stderr, "make_artwork: %s\n", qPrintable(error.NumberAndDescription()));
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_artwork: %s\n", error.what());
    return 1;
  }
  return 0;
}
