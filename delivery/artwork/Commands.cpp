#include "artwork/Commands.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "artwork/Outline.h"

namespace orv::artwork {
namespace {

// ---- Style ------------------------------------------------------------------------------------

void PaintWith(Player& player, const Words& words) {
  Style& style = player.Surface().style;
  style.paint = words.Colours(0);
  style.paint_angle = words.Named("angle", 90);
  style.radial = words.Named("radial", 0) != 0;
}

void SetRelief(Player& player, const Words& words) {
  Style& style = player.Surface().style;
  style.relief = words.Number(0);
  style.shine = words.Named("shine", 0);
}

void SetRim(Player& player, const Words& words) {
  player.Surface().style.rim = words.Number(0);
  player.Surface().style.rim_colour = words.Colour(1);
}

void SetGlow(Player& player, const Words& words) {
  player.Surface().style.glow = words.Number(0);
  player.Surface().style.glow_colour = words.Colour(1);
}

void SetShadow(Player& player, const Words& words) {
  Style& style = player.Surface().style;
  style.shadow = words.Number(0);
  style.shadow_colour = words.Colour(1);
  style.shadow_offset = QPointF(words.Named("dx", 0), words.Named("dy", 0));
}

void SetGrain(Player& player, const Words& words) {
  player.Surface().style.grain = words.Number(0);
  player.Surface().style.grain_size = words.Named("size", 4);
}

void SetBlend(Player& player, const Words& words) {
  static const QMap<QString, QPainter::CompositionMode> modes{
      {"normal", QPainter::CompositionMode_SourceOver},   {"screen", QPainter::CompositionMode_Screen},
      {"multiply", QPainter::CompositionMode_Multiply},   {"overlay", QPainter::CompositionMode_Overlay},
      {"softlight", QPainter::CompositionMode_SoftLight}, {"inside", QPainter::CompositionMode_SourceAtop}};
  if (!modes.contains(words.Text(0))) throw std::runtime_error("no such blend");
  player.Surface().style.blend = modes[words.Text(0)];
}

// ---- Outlines ---------------------------------------------------------------------------------

void DrawOval(Player& player, const Words& words) {
  QPainterPath path;
  const double rx = words.Number(2);
  const double ry = words.Count() > 3 ? words.Number(3) : rx;
  path.addEllipse(QPointF(0, 0), rx, ry);
  const QTransform place = QTransform().rotate(words.Named("turn", 0)) *
                           QTransform::fromTranslate(words.Number(0), words.Number(1));
  player.Outline(place.map(path));
}

void DrawRect(Player& player, const Words& words) {
  QPainterPath path;
  const double round = words.Named("round", 0);
  path.addRoundedRect(QRectF(words.Number(0), words.Number(1), words.Number(2), words.Number(3)), round,
                      round);
  player.Outline(path);
}

// A frame: the rectangle less the one that lies `width` further in.
void DrawFrame(Player& player, const Words& words) {
  const QRectF outer(words.Number(0), words.Number(1), words.Number(2), words.Number(3));
  const double width = words.Number(4);
  const double round = words.Named("round", 0);
  QPainterPath path;
  path.addRoundedRect(outer, round, round);
  QPainterPath hole;
  const double inner_round = std::max(0.0, round - width);
  hole.addRoundedRect(outer.adjusted(width, width, -width, -width), inner_round, inner_round);
  player.Outline(path.subtracted(hole));
}

void DrawRing(Player& player, const Words& words) {
  const QPointF centre(words.Number(0), words.Number(1));
  const double radius = words.Number(2);
  const double width = words.Number(3);
  QPainterPath path;
  path.addEllipse(centre, radius + width / 2, radius + width / 2);
  QPainterPath hole;
  hole.addEllipse(centre, radius - width / 2, radius - width / 2);
  player.Outline(path.subtracted(hole));
}

}  // namespace

const CommandTable& ShapeCommands() {
  static const CommandTable commands{
      {"paint", PaintWith},
      {"relief", SetRelief},
      {"rim", SetRim},
      {"glow", SetGlow},
      {"shadow", SetShadow},
      {"grain", SetGrain},
      {"blend", SetBlend},
      {"soft", [](Player& p, const Words& w) { p.Surface().style.soft = w.Number(0); }},
      {"alpha", [](Player& p, const Words& w) { p.Surface().style.alpha = w.Number(0); }},
      {"plain", [](Player& p, const Words&) { p.Surface().style = Style(); }},
      {"light", [](Player& p, const Words& w) { p.Surface().light_angle = w.Number(0); }},
      {"blob", [](Player& p, const Words& w) { p.Outline(Blob(w.From(0))); }},
      {"half", [](Player& p, const Words& w) { p.Outline(Half(w.From(0))); }},
      {"limb", [](Player& p, const Words& w) { p.Outline(Limb(w.Text(0), w.From(1))); }},
      {"oval", DrawOval},
      {"rect", DrawRect},
      {"frame", DrawFrame},
      {"ring", DrawRing},
      {"star",
       [](Player& p, const Words& w) {
         p.Outline(Star({w.Number(0), w.Number(1)}, w.Number(2), w.Number(3), static_cast<int>(w.Number(4)),
                        w.Named("turn", -90)));
       }},
      {"join", [](Player& p, const Words&) { p.StartJoint(); }},
      {"joined", [](Player& p, const Words&) { p.PaintJoint(); }},
      {"layer", [](Player& p, const Words&) { p.Surface().Begin(); }},
      {"layered", [](Player& p, const Words&) { p.Surface().End(); }}};
  return commands;
}

QPointF Around(double degrees) {
  const double turn = degrees * std::numbers::pi / 180;
  return {std::cos(turn), std::sin(turn)};
}

bool RunCommand(Player& player, const QString& name, const Words& words) {
  for (const CommandTable* table : {&ShapeCommands(), &SceneCommands(), &RepeatCommands()}) {
    const auto command = table->find(name);
    if (command == table->end()) continue;
    (*command)(player, words);
    return true;
  }
  return false;
}

}  // namespace orv::artwork
