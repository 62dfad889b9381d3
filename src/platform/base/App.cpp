#include "base/App.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace orv::App {
namespace {
QString& Override() {
  static QString folder;
  return folder;
}

Program& RunningProgram() {
  static Program program;
  return program;
}
}  // namespace

const Program& Running() {
  return RunningProgram();
}

void SetRunning(const Program& program) {
  RunningProgram() = program;
}

QString Path() {
  return Override().isEmpty() ? QCoreApplication::applicationDirPath() : Override();
}

void SetPath(const QString& folder) {
  Override() = folder;
}

QString ExeName() {
  return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

}  // namespace orv::App
