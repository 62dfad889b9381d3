#pragma once

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>

namespace orv::delivery {

// All pictures of the drawing scripts as files: JPG, and BMP for those so small that a JPG would blur them.
class Gallery {
 public:
  // Times its size, of an enlarged picture.
  static constexpr int kEnlargement = 4;

  // Draws them, and those of `enlarged` once more, on as many threads as the machine has.
  // std::runtime_error for a faulty script.
  Gallery(const QString& script_folder, const QSet<QString>& enlarged);
  // std::runtime_error for an unknown picture.
  QByteArray Bytes(const QString& picture) const { return Find(files_, picture); }
  QByteArray Enlarged(const QString& picture) const { return Find(enlarged_, picture); }

  // A line for each picture: the SHA-256 of its file in hexadecimal digits, and its name.
  QByteArray Digests() const;

 private:
  using Files = QMap<QString, QByteArray>;
  static QByteArray Find(const Files& files, const QString& picture);

  Files files_, enlarged_;
};

}  // namespace orv::delivery
