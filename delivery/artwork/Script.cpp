#include "artwork/Script.h"

#include <QDir>
#include <QFile>
#include <stdexcept>

#include "artwork/Words.h"

namespace orv::artwork {
namespace {

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

}  // namespace

void Script::Line::Fail(const QString& what) const {
  throw std::runtime_error(QString("%1:%2: %3").arg(file).arg(number).arg(what).toStdString());
}

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
      if (open == nullptr) line.Fail("a line outside of pictures and shapes");
      open->lines.push_back(line);
      continue;
    }
    if (line.words.size() < 2) line.Fail("a name is missing");
    QMap<QString, Block>& blocks = picture ? pictures_ : shapes_;
    if (blocks.contains(line.words[1])) line.Fail("this name is taken");
    open = &(blocks[line.words[1]] = Head(line));
  }
}

const Script::Block& Script::Picture(const QString& name) const {
  const auto found = pictures_.constFind(name);
  if (found == pictures_.constEnd()) throw std::runtime_error(("no picture " + name).toStdString());
  return *found;
}

const Script::Block& Script::Shape(const QString& name) const {
  const auto found = shapes_.constFind(name);
  if (found == shapes_.constEnd()) throw std::runtime_error(("no shape " + name).toStdString());
  return *found;
}

}  // namespace orv::artwork
