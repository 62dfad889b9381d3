#pragma once

#include <QIcon>
#include <QString>

namespace orv {

// The icon of this name from the program's resources (":/icons/<name>.svg"), crisp at every scale; empty
// for an unknown name. For the platform's own rooms.
QIcon NamedIcon(const QString& name);

}  // namespace orv
