#pragma once

#include <QString>
#include <QStringList>

namespace orv {

// An object of a file as it is made by one of some statements, which differ from it in blanks, case and
// quotes of names at most.
struct KnownObject {
  QString type;  // table, index, view or trigger
  QString name;
  QStringList statements;
};

}  // namespace orv
