#pragma once

#include <QStringList>

namespace orv {

// The keys that lead between the parts of a main window and its children, and close a child.
QStringList WindowKeys();

}  // namespace orv
