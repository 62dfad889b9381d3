#include "editors/Commands.h"

#include "editors/PictureFitter.h"
#include "editors/RecordEditor.h"
#include "forms/WindowKeys.h"

namespace orv {

std::vector<CommandKey> ProgramCommands() {
  std::vector<CommandKey> all;
  for (const auto& keys : {WindowKeys(), RecordEditor::Commands(), PictureFitter::Commands()})
    all.insert(all.end(), keys.begin(), keys.end());
  return all;
}

}  // namespace orv
