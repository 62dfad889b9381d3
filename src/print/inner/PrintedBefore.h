#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include "print/PrintedCard.h"

namespace orv {

// How the records of the current set looked on the user's last sheet of each: a file of digests in the user's
// own folder, one for each set of a database, which knows nothing of it.
class PrintedBefore {
 public:
  // Reads it; a file that can't be read is as good as none.
  PrintedBefore();
  // Whether a record looks as it did.
  bool Knows(const PrintedCard& card) const;
  // Takes a record as it looks now; on the disk when Keep was called.
  void Take(const PrintedCard& card);
  // RuntimeError if the file can't be written.
  void Keep() const;

 private:
  static QByteArray LooksOf(const PrintedCard& card);

  QString path_;
  QMap<QString, QByteArray> looks_;  // by the record's key
};

}  // namespace orv
