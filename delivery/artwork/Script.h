#pragma once

#include <QImage>
#include <QMap>
#include <QString>
#include <QStringList>
#include <vector>

namespace orv::artwork {

// Pictures told in a small drawing language (content/art/README.md says it). A script holds pictures
// and shapes; a shape is drawn by its name, in a place and at a scale of its own.
class Script {
 public:
  // Reads all files *.art of a folder. std::runtime_error with file and line for what is no script.
  static Script Load(const QString& folder);

  // Names of all pictures, in alphabetical order.
  QStringList Pictures() const { return pictures_.keys(); }
  // 24-bit RGB. std::runtime_error if there is no such picture or a line of it fails.
  QImage Draw(const QString& picture) const;

  struct Line {
    QString file;
    int number = 0;
    QStringList words;
  };
  // A picture (with width and height) or a shape (with parameters and their values when not given).
  struct Block {
    int width = 0, height = 0;
    QMap<QString, QString> defaults;
    std::vector<Line> lines;
  };

 private:
  void ReadFile(const QString& path);
  QMap<QString, Block> pictures_;
  QMap<QString, Block> shapes_;
  friend class Player;
};

}  // namespace orv::artwork
