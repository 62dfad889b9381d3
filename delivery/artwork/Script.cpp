#include "artwork/Script.h"

#include <QDir>
#include <QFile>
#include <stdexcept>

#include "artwork/Player.h"

namespace orv::artwork {
namespace {

[[noreturn]] void Fail(const Script::Line& line, const QString& what) {
  throw std::runtime_error(QString("%1:%2: %3").arg(line.file).arg(line.number).arg(what).toStdString());
}

Script::Block Head(const Script::Line& line) {
  Script::Block block;
  if (line.words[0] == "picture") {
    const Words words(line.words.mid(2));
    block.width = static_cast<int>(words.Number(0));
    block.height = static_cast<int>(words.Number(1));
  } else {
    block.defaults = Words(line.words.mid(2)).AllNamed();
  }
  return block;
}

QString Filled(QString word, const QMap<QString, QString>& values) {
  const qsizetype at = word.indexOf('$');
  if (at < 0) return word;
  const QString name = word.mid(at + 1);
  if (!values.contains(name)) throw std::runtime_error(("no parameter " + name).toStdString());
  return word.left(at) + values[name];
}

}  // namespace

Script Script::Load(const QString& folder) {
  Script script;
  const QDir dir(folder);
  for (const QString& name : dir.entryList({"*.art"}, QDir::Files, QDir::Name))
    script.ReadFile(dir.filePath(name));
  return script;
}

void Script::ReadFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(("cannot read " + path).toStdString());
  const QString name = QFileInfo(path).fileName();
  Block* open = nullptr;
  int number = 0;
  for (const QString& text : QString::fromUtf8(file.readAll()).split('\n')) {
    Line line{name, ++number, text.section("//", 0, 0).simplified().split(' ', Qt::SkipEmptyParts)};
    if (line.words.isEmpty()) continue;
    const bool picture = line.words[0] == "picture";
    if (!picture && line.words[0] != "shape") {
      if (open == nullptr) Fail(line, "a line outside of pictures and shapes");
      open->lines.push_back(line);
      continue;
    }
    if (line.words.size() < 2) Fail(line, "a name is missing");
    QMap<QString, Block>& blocks = picture ? pictures_ : shapes_;
    if (blocks.contains(line.words[1])) Fail(line, "this name is taken");
    open = &(blocks[line.words[1]] = Head(line));
  }
}

QImage Script::Draw(const QString& picture) const {
  if (!pictures_.contains(picture)) throw std::runtime_error(("no picture " + picture).toStdString());
  const Block& block = pictures_[picture];
  Canvas canvas(block.width, block.height);
  Player(*this, canvas, block.width, block.height).Run(block, {});
  return canvas.Finished();
}

void Player::Run(const Script::Block& block, const QMap<QString, QString>& values) {
  if (++depth_ > 20) throw std::runtime_error("shapes draw each other without end");
  for (const Script::Line& line : block.lines) {
    try {
      RunLine(line, values);
    } catch (const std::runtime_error& error) {
      // The innermost line is the one to look at.
      const QString what = error.what();
      if (what.contains(".art:")) throw;
      Fail(line, what);
    }
  }
  --depth_;
}

void Player::RunLine(const Script::Line& line, const QMap<QString, QString>& values) {
  QStringList words;
  for (const QString& word : line.words) words << Filled(word, values);
  const QString name = words.takeFirst();
  const Words rest(words);
  if (RunCommand(*this, name, rest)) return;
  if (!IsShape(name)) throw std::runtime_error(("no command or shape " + name).toStdString());
  QMap<QString, QString> given = rest.AllNamed();
  const double turn = given.take("turn").toDouble();
  const bool flip = given.take("flip") == "1";
  if (rest.Count() < 2) throw std::runtime_error("a shape needs a place");
  Place(name, rest.Number(0), rest.Number(1), rest.Count() > 2 ? rest.Number(2) : 1, turn, flip, given);
}

void Player::Place(const QString& shape, double x, double y, double scale, double turn, bool flip,
                   const QMap<QString, QString>& values) {
  const Script::Block& block = script_.shapes_[shape];
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
