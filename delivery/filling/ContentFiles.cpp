#include "filling/ContentFiles.h"

#include <QStringList>
#include <stdexcept>

#include "base/Files.h"

namespace orv::delivery {
namespace {

[[noreturn]] void Fail(const QString& path, qsizetype line, const QString& what) {
  throw std::runtime_error(QString("%1:%2: %3").arg(path).arg(line + 1).arg(what).toStdString());
}

QStringList ReadLines(const QString& path) {
  return QString::fromUtf8(ReadWhole(path)).split('\n');
}

}  // namespace

std::vector<Fields> ReadTable(const QString& path) {
  const QStringList lines = ReadLines(path);
  const QStringList columns = lines[0].split('|');
  std::vector<Fields> rows;
  for (qsizetype i = 1; i < lines.size(); ++i) {
    if (lines[i].isEmpty()) continue;
    const QStringList words = lines[i].split('|');
    if (words.size() != columns.size()) Fail(path, i, "wrong number of columns");
    Fields row;
    for (qsizetype c = 0; c < columns.size(); ++c) row[columns[c]] = words[c];
    rows.push_back(row);
  }
  return rows;
}

std::vector<Block> ReadBlocks(const QString& path) {
  const QStringList lines = ReadLines(path);
  std::vector<Block> blocks;
  QString* text = nullptr;  // the value that a paragraph goes on
  bool first_paragraph = true;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const QString& line = lines[i];
    if (line.startsWith('|')) {
      if (text == nullptr) Fail(path, i, "a paragraph without a field");
      if (!first_paragraph) *text += "\r\n";
      *text += line.mid(line.startsWith("| ") ? 2 : 1);
      first_paragraph = false;
    } else if (line.startsWith('[') && line.endsWith(']')) {
      blocks.push_back({line.mid(1, line.size() - 2), {}});
      text = nullptr;
    } else if (const qsizetype colon = line.indexOf(':'); colon > 0 && !blocks.empty()) {
      const QString name = line.left(colon);
      if (blocks.back().fields.contains(name)) Fail(path, i, "this field stands twice");
      text = &blocks.back().fields[name];
      *text = line.mid(colon + 1).trimmed();
      first_paragraph = text->isEmpty();
    } else if (!line.isEmpty()) {
      Fail(path, i, "neither a block, a field nor a paragraph");
    }
  }
  return blocks;
}

}  // namespace orv::delivery
