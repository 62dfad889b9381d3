#pragma once

#include "records/Connection.h"
#include "records/Recordset.h"

namespace orv {

// Rows of the delivered database as the build made it.
inline Recordset Delivered(const QString& sql) {
  static const Connection connection = Connection::Open(ORV_DELIVERED_DATABASE);
  return Recordset::OpenSnapshot(connection, sql);
}

}  // namespace orv
