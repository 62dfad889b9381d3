#pragma once

#include <QDataStream>

// What tools/read_old_database writes to its standard output for an old database: messages, each its length
// (32 bits) and then, by QDataStream in this version, its kind and what belongs to it.
namespace orv::old_rows {

inline constexpr auto kStreamVersion = QDataStream::Qt_6_0;

enum class Message : quint8 {
  kTotal,   // first: the number of rows in all tables (qint64)
  kTable,   // its name (QString), the number of rows that it tells (qint64), its columns (QStringList)
  kRow,     // of the last table: for each column a Cell and its value
  kRefuse,  // why the file can't be read (QString); the last message
  kEnd,     // the last message of a file that was read to its end
};

enum class Cell : quint8 {
  kNull,
  kInteger,  // qint64
  kReal,     // double
  kText,     // QString
  kBytes,    // QByteArray
};

// The exit status of the program for each end that it comes to by itself.
inline constexpr int kRead = 0;
inline constexpr int kRefused = 1;

}  // namespace orv::old_rows
