#pragma once

namespace orv {

// From now on the delivered pictures, such as the backs, are drawn anew by their scripts at the size that is
// needed, wherever drawings are kept and shown enlarged. Each is known by the bytes of its file.
void DrawArtworkAnew();

}  // namespace orv
