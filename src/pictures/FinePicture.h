#pragma once

#include <QByteArray>
#include <functional>
#include <optional>

#include "imaging/Drawing.h"

namespace orv {

// A stored picture that says, as its drawing, of which finer one it was made: of an original in the database
// that belongs to these very bytes, or of one that is told of in FinerPictures. The picture itself where
// there is none, or where no drawings are kept. The original is read when it is drawn, and let go again.
Picture WithOriginal(const Picture& picture, const QByteArray& bytes);

// Finer pictures that are not in the database, by the digest of the bytes and the picture of them. Whoever
// has some sets it.
inline std::function<std::optional<Drawing::Fine>(const QByteArray& digest, const Picture&)> FinerPictures;

}  // namespace orv
