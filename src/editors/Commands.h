#pragma once

#include <QStringList>

namespace orv {

// All keys that are commands of the program, for whoever tells them to users.
QStringList ProgramCommands();

}  // namespace orv
