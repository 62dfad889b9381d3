#pragma once

namespace orv {

// Gives the system back what large blocks have left with the allocator, which keeps tens of megabytes.
void GiveBackMemory();

}  // namespace orv
