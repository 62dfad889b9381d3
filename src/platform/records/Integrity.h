#pragma once

#include <QString>
#include <QStringList>

namespace orv {

// What is wrong with a database file, read from its first to its last byte: nothing for a sound one.
// `strays` are queries for rows that should not be, each row of which is a fault that its first column
// tells; they are asked of a file that is sound otherwise. RuntimeError for a file that can't be read.
QStringList FaultsOf(const QString& path, const QStringList& strays);

}  // namespace orv
