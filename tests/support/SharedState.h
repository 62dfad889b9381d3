#pragma once

#include "state/modData.h"

namespace orv {

// As it is before a database is opened: the last recordset lets go of the file and its lock.
inline void ClearSharedState() {
  for (Recordset* rows :
       {&modData::rsSet, &modData::rsCard, &modData::rsCharacter, &modData::rsLargeCard, &modData::rsCardType,
        &modData::rsCardBack, &modData::rsCharacterBack, &modData::rsArea, &modData::rsAlignment}) {
    *rows = Recordset();
  }
  modData::CurrentSetID = modData::CurrentEditionID = modData::CurrentLanguageID = 0;
  modData::SetSymbol = Picture();
  modData::cn = Connection();
  modData::DatabaseFound = false;
}

}  // namespace orv
