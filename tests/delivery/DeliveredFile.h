#pragma once

#include <QImage>

#include "records/Connection.h"
#include "records/Recordset.h"

namespace orv {

// Rows of the delivered database as the build made it.
inline Recordset Delivered(const QString& sql) {
  static const Connection connection = Connection::Open(ORV_DELIVERED_DATABASE);
  return Recordset::OpenSnapshot(connection, sql);
}

// Calls an action with the rows standing on each in turn.
template <class Action>
void ForEach(Recordset rows, Action action) {
  for (; !rows.IsEOF(); rows.MoveNext()) action(rows);
}

// Size of a stored picture, in pixels.
inline QSize SizeOf(const Field& picture) {
  return QImage::fromData(picture.Bytes()).size();
}

}  // namespace orv
