#pragma once

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
  struct Line {
    QString file;
    int number = 0;
    QStringList words;

    // std::runtime_error that names the line.
    [[noreturn]] void Fail(const QString& what) const;
  };
  // A picture (with width and height) or a shape (with parameters and their values when not given).
  struct Block {
    int width = 0, height = 0;
    QMap<QString, QString> defaults;
    std::vector<Line> lines;
  };
  // std::runtime_error if there is none of that name.
  const Block& Picture(const QString& name) const;
  const Block& Shape(const QString& name) const;
  bool IsShape(const QString& name) const { return shapes_.contains(name); }

 private:
  void ReadFile(const QString& path);
  QMap<QString, Block> pictures_;
  QMap<QString, Block> shapes_;
};

}  // namespace orv::artwork
