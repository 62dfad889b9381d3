#include "shell/CurrentSet.h"

#include "base/RuntimeError.h"
#include "database/ReferenceLists.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

Picture SymbolOfSet() {
  const Recordset& set = modData::rsSet;
  if (!set["UseSymbol"].BoolOrFalse()) return {};
  Surface scratch;
  try {
    LoadPictureFromField(scratch, set["Symbol"]);
  } catch (const RuntimeError&) {
    return {};
  }
  return scratch.Picture();
}

// An editor that is loaded now shows the current set by that.
template <class T>
void Follow(FormInstance<T>& editor, void (*initialise)()) {
  editor.IsLoaded() ? initialise() : editor.Load();
}

}  // namespace

void MakeSetCurrent(std::int16_t set_id) {
  modData::CurrentSetID = set_id;
  modData::FindSet(set_id);
  modData::CurrentEditionID = modData::rsSet["EditionID"].Int16Or(0);
  modData::CurrentLanguageID = modData::rsSet["LanguageID"].Int16Or(0);
  LoadReferenceLists(modData::CurrentEditionID, modData::CurrentLanguageID);
  modData::SetSymbol = SymbolOfSet();
}

void EditorsFollowSet() {
  Follow(frmCard2nd, [] { frmCard2nd->InitCard2nd(); });
  Follow(frmCharacter2nd, [] { frmCharacter2nd->Initialise(); });
  Follow(frmLarge2nd, [] { frmLarge2nd->InitLarge2nd(); });
}

}  // namespace orv
