#include "artwork/Draw.h"

#include "artwork/Canvas.h"
#include "artwork/Commands.h"

namespace orv::artwork {

QImage Draw(const Script& script, const QString& picture, int scale) {
  const Script::Block& block = script.Picture(picture);
  Canvas canvas(block.width, block.height, scale);
  Player(script, RunCommand, canvas, block.width, block.height).Run(block, {});
  return canvas.Finished();
}

}  // namespace orv::artwork
