#pragma once

#include <optional>

#include "artwork/Canvas.h"
#include "artwork/Script.h"
#include "artwork/Words.h"

namespace orv::artwork {

// Carries out the lines of a script on a canvas.
class Player {
 public:
  Player(const Script& script, Canvas& canvas, int width, int height)
      : script_(script), canvas_(canvas), width_(width), height_(height) {}

  void Run(const Script::Block& block, const QMap<QString, QString>& values);

  // The commands are free functions over these (Commands.cpp).
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
  bool IsShape(const QString& name) const { return script_.shapes_.contains(name); }

 private:
  void RunLine(const Script::Line& line, const QMap<QString, QString>& values);
  const Script& script_;
  Canvas& canvas_;
  int width_, height_;
  int depth_ = 0;
  std::optional<QPainterPath> joint_;
};

// Carries out one command; false if there is none of that name.
bool RunCommand(Player& player, const QString& name, const Words& words);

}  // namespace orv::artwork
