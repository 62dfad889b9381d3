#pragma once

#include "base/Instance.h"
#include "forms/Surface.h"
#include "imaging/GifControl.h"

namespace orv {

// A utility form that is never shown, and so has no window: the surface on which a sheet is put together, and
// the GIF control.
struct ClipForm {
  Surface picDone;
  GifControl BMP2GIF1;
};

inline Instance<ClipForm> frmClip;

}  // namespace orv
