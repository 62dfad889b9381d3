#include "artwork/Player.h"

#include <stdexcept>

namespace orv::artwork {
namespace {

QString Filled(QString word, const QMap<QString, QString>& values) {
  const qsizetype at = word.indexOf('$');
  if (at < 0) return word;
  const QString name = word.mid(at + 1);
  if (!values.contains(name)) throw std::runtime_error(("no parameter " + name).toStdString());
  return word.left(at) + values[name];
}

}  // namespace

void Player::Run(const Script::Block& block, const QMap<QString, QString>& values) {
  if (++depth_ > 20) throw std::runtime_error("shapes draw each other without end");
  for (const Script::Line& line : block.lines) {
    try {
      RunLine(line, values);
    } catch (const std::runtime_error& error) {
      // The innermost line is the one to look at.
      const QString what = error.what();
      if (what.contains(".art:")) throw;
      line.Fail(what);
    }
  }
  --depth_;
}

void Player::RunLine(const Script::Line& line, const QMap<QString, QString>& values) {
  QStringList words;
  for (const QString& word : line.words) words << Filled(word, values);
  const QString name = words.takeFirst();
  const Words rest(words);
  if (run_command_(*this, name, rest)) return;
  if (!script_.IsShape(name)) throw std::runtime_error(("no command or shape " + name).toStdString());
  QMap<QString, QString> given = rest.AllNamed();
  const double turn = given.take("turn").toDouble();
  const bool flip = given.take("flip") == "1";
  if (rest.Count() < 2) throw std::runtime_error("a shape needs a place");
  Place(name, rest.Number(0), rest.Number(1), rest.Count() > 2 ? rest.Number(2) : 1, turn, flip, given);
}

void Player::Place(const QString& shape, double x, double y, double scale, double turn, bool flip,
                   const QMap<QString, QString>& values) {
  const Script::Block& block = script_.Shape(shape);
  QMap<QString, QString> all = block.defaults;
  for (auto it = values.begin(); it != values.end(); ++it) {
    if (!all.contains(it.key())) throw std::runtime_error((shape + " has no " + it.key()).toStdString());
    all[it.key()] = it.value();
  }
  const QTransform before = canvas_.transform;
  const Style style = canvas_.style;
  canvas_.transform = QTransform::fromScale(flip ? -scale : scale, scale) * QTransform().rotate(turn) *
                      QTransform::fromTranslate(x, y) * before;
  canvas_.style = Style();
  Run(block, all);
  canvas_.transform = before;
  canvas_.style = style;
}

void Player::Outline(const QPainterPath& path) {
  if (joint_) {
    *joint_ = joint_->united(path);
  } else {
    canvas_.Paint(path);
  }
}

void Player::PaintJoint() {
  if (!joint_) throw std::runtime_error("no joint to end");
  const QPainterPath path = *joint_;
  joint_.reset();
  canvas_.Paint(path);
}

}  // namespace orv::artwork
