#pragma once

#include <QString>

#include "filling/Catalogues.h"
#include "filling/Gallery.h"

namespace orv::delivery {

// Adds the sets of all files of `folder` to modData::cn, each with its fonts, cards, characters and large
// cards. std::runtime_error that names the file and the record for a name or value that is none.
void FillSets(const QString& folder, const Gallery& gallery, const Names& names);

}  // namespace orv::delivery
