#pragma once

#include <QSet>
#include <QString>

#include "filling/Catalogues.h"
#include "filling/Gallery.h"

namespace orv::delivery {

// Names of the pictures that the sets of all files of `folder` have in frames.
QSet<QString> FramedPictures(const QString& folder);

// Adds the sets of all files of `folder` to modData::cn, each with its fonts, cards, characters and large
// cards. The gallery has the framed pictures enlarged too. std::runtime_error that names the file and the
// record for a name or value that is none.
void FillSets(const QString& folder, const Gallery& gallery, const Names& names);

}  // namespace orv::delivery
