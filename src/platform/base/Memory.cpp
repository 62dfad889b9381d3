#include "base/Memory.h"

#include <malloc.h>

namespace orv {

void GiveBackMemory() {
  ::malloc_trim(0);
}

}  // namespace orv
