#include "icons/Icons.h"

#include <QtCore/qglobal.h>

// The macro declares a function of the global namespace.
static void InitResource() {
  Q_INIT_RESOURCE(icons);
}

namespace orv {

void InitIcons() {
  InitResource();
}

}  // namespace orv
