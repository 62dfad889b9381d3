#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace orv::delivery {

// All pictures of the drawing scripts as files: JPG, and BMP for those so small that a JPG would blur them.
class Gallery {
 public:
  // Draws them, on as many threads as the machine has. std::runtime_error for a faulty script.
  explicit Gallery(const QString& script_folder);
  // std::runtime_error for an unknown picture.
  QByteArray Bytes(const QString& picture) const;

 private:
  QMap<QString, QByteArray> files_;
};

}  // namespace orv::delivery
