#pragma once

#include <QMap>
#include <QString>
#include <functional>

#include "artwork/Player.h"
#include "artwork/Words.h"

namespace orv::artwork {

using Command = std::function<void(Player&, const Words&)>;
using CommandTable = QMap<QString, Command>;

const CommandTable& ShapeCommands();   // style and outlines
const CommandTable& SceneCommands();   // light, air and landscape
const CommandTable& RepeatCommands();  // shapes many times over

// A Player's CommandRunner over all of them.
bool RunCommand(Player& player, const QString& name, const Words& words);

inline int SeedOf(const Words& words) {
  return static_cast<int>(words.Named("seed", 1));
}
// The point one unit away in that direction, degrees clockwise from the right.
QPointF Around(double degrees);

}  // namespace orv::artwork
