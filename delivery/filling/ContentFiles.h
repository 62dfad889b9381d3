#pragma once

#include <QMap>
#include <QString>
#include <vector>

namespace orv::delivery {

// The text files of delivery/content (its README tells their form). Reading fails with a
// std::runtime_error that names file and line.

using Fields = QMap<QString, QString>;

// A table: a line of column names, then rows, parted by "|". Each row has all columns.
std::vector<Fields> ReadTable(const QString& path);

// A block "[kind]" and its fields; paragraphs of a text are parted by "\r\n".
struct Block {
  QString kind;
  Fields fields;
};
std::vector<Block> ReadBlocks(const QString& path);

}  // namespace orv::delivery
