#pragma once

#include <QByteArrayView>
#include <QtEndian>

#include "imaging/inner/NewImage.h"

namespace orv {

// Reads little-endian numbers one after the other; RuntimeError 481 past the end.
class ByteReader {
 public:
  explicit ByteReader(QByteArrayView bytes) : bytes_(bytes) {}

  qsizetype Left() const { return bytes_.size() - at_; }
  qsizetype At() const { return at_; }

  QByteArrayView Take(qsizetype count) {
    if (count < 0 || count > Left()) BadPicture();
    at_ += count;
    return bytes_.sliced(at_ - count, count);
  }
  QByteArrayView TakeRest() { return Take(Left()); }
  void Skip(qsizetype count) { Take(count); }

  quint8 U8() { return Number<quint8>(); }
  quint16 U16() { return Number<quint16>(); }
  qint16 I16() { return Number<qint16>(); }
  quint32 U32() { return Number<quint32>(); }
  qint32 I32() { return Number<qint32>(); }

 private:
  template <typename T>
  T Number() {
    return qFromLittleEndian<T>(Take(sizeof(T)).data());
  }

  QByteArrayView bytes_;
  qsizetype at_ = 0;
};

}  // namespace orv
