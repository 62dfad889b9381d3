#include "editors/Commands.h"

#include "editors/CardEditor.h"
#include "editors/PictureFitter.h"
#include "editors/PicturePlacing.h"
#include "editors/RecordEditor.h"
#include "forms/WindowKeys.h"

namespace orv {

QStringList ProgramCommands() {
  return WindowKeys() + RecordEditor::Commands() + PictureFitter::Commands() + PictureMover::Commands() +
         CardEditor::HandleCommands();
}

}  // namespace orv
