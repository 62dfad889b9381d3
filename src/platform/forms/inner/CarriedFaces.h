#pragma once

#include <QStringList>

namespace orv {

// Makes the faces in these files, of TrueType, known to the toolkit beside those of the system. A file that
// can't be used is error 51, which names it.
void CarryFaces(const QStringList& files);

}  // namespace orv
