#pragma once

#include <optional>

#include "artwork/Canvas.h"
#include "artwork/Script.h"
#include "artwork/Words.h"

namespace orv::artwork {

// Carries out the lines of a script on a canvas.
class Player {
 public:
  // Carries out one command; false if there is none of that name.
  using CommandRunner = bool (*)(Player& player, const QString& name, const Words& words);

  Player(const Script& script, CommandRunner run_command, Canvas& canvas, int width, int height)
      : script_(script), run_command_(run_command), canvas_(canvas), width_(width), height_(height) {}

  void Run(const Script::Block& block, const QMap<QString, QString>& values);

  // The commands are free functions over these.
  Canvas& Surface() { return canvas_; }
  int Width() const { return width_; }
  int Height() const { return height_; }
  // Paints the outline, or keeps it while a joint outline is being gathered.
  void Outline(const QPainterPath& path);
  void StartJoint() { joint_.emplace(); }
  void PaintJoint();
  // Draws a shape with its origin at (x, y). Named words that are no parameter of it are an error.
  void Place(const QString& shape, double x, double y, double scale, double turn, bool flip,
             const QMap<QString, QString>& values);

 private:
  void RunLine(const Script::Line& line, const QMap<QString, QString>& values);
  const Script& script_;
  const CommandRunner run_command_;
  Canvas& canvas_;
  int width_, height_;
  int depth_ = 0;
  std::optional<QPainterPath> joint_;
};

}  // namespace orv::artwork
