#pragma once

#include "forms/Form.h"
#include "forms/Surface.h"
#include "imaging/GifControl.h"

namespace orv {

// A utility form that is never shown: the surface on which a sheet is put together, and the GIF control.
class ClipForm : public Form {
 public:
  ClipForm() : Form(FormKind::Dialog) { SetCaption(QStringLiteral("Dummy form for Clipboard")); }

  Surface picDone;
  GifControl BMP2GIF1;
};

inline FormInstance<ClipForm> frmClip;

}  // namespace orv
