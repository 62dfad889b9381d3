#pragma once

namespace orv {

// Makes the program's icons known under ":/icons/<name>.svg". Once, before the first form.
void InitIcons();

}  // namespace orv
