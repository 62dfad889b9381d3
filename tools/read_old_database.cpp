// Reads a database of an older version (a Jet 4 file) and writes its rows to the standard output as OldRows.h
// tells. A process of its own, since a damaged file can bring the library that reads it to loop or to fail.
#include <glib.h>  // first, since the next would have it in C

#include <mdbtools.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <stdexcept>

#include "exchange/OldRows.h"

namespace orv {
namespace {

using old_rows::Cell;
using old_rows::Message;

constexpr rlim_t kMostMemory = rlim_t{1} << 30;
constexpr rlim_t kMostSeconds = 300;
constexpr std::uint32_t kMostBytes = 256u << 20;  // of one value

// In the header of the file, from kCodedAt on under a key that all such files share.
constexpr qsizetype kVersionAt = 0x14;
constexpr qsizetype kCodedAt = 0x18;
constexpr qsizetype kPasswordAt = 0x42;
constexpr qsizetype kPasswordSize = 40;
constexpr qsizetype kMadeAt = 0x72;  // the date on which the file was made, which masks the password
constexpr qsizetype kHeaderSize = 0x7A;
constexpr std::array<unsigned char, 4> kHeaderKey{0xC7, 0xDA, 0x39, 0x6B};

// Of a long value in its row: the length with flags in its highest bits, where the bytes begin, and unused.
constexpr std::size_t kLongHeader = 12;
constexpr std::uint32_t kInRow = 0x80000000;  // they follow
constexpr std::uint32_t kInOne = 0x40000000;  // all in one row of a page
constexpr std::uint32_t kLengthBits = 0x3FFFFFFF;
constexpr std::size_t kNextSize = 4;  // in a chain each piece begins with the place of the next

struct Damaged : std::runtime_error {
  Damaged() : std::runtime_error("The file is damaged.") {}
};

void LimitMyself() {
  const auto limit = [](__rlimit_resource what, rlim_t most) {
    const rlimit both{most, most};
    setrlimit(what, &both);
  };
#ifndef __SANITIZE_ADDRESS__  // which takes far more of the address space than is there
  limit(RLIMIT_AS, kMostMemory);
#endif
  limit(RLIMIT_CPU, kMostSeconds);
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_CORE, 0);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
}

class Output {
 public:
  Output() { file_.open(stdout, QIODevice::WriteOnly); }

  template <class... Items>
  void Send(Message message, const Items&... items) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(old_rows::kStreamVersion);
    stream << static_cast<quint8>(message);
    ((stream << items), ...);
    Send(bytes);
  }
  void Send(const QByteArray& message) {
    QByteArray length;
    QDataStream(&length, QIODevice::WriteOnly) << static_cast<quint32>(message.size());
    // Nobody reads on: there is nothing left to do.
    if (file_.write(length + message) < 0) std::_Exit(old_rows::kRefused);
  }
  void Flush() { file_.flush(); }

 private:
  QFile file_;
};

std::uint32_t Number32(std::span<const unsigned char> bytes, std::size_t at) {
  if (at + 4 > bytes.size()) throw Damaged();
  return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
         static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

// RC4 under the key of the header.
void DecodeHeader(QByteArray& header) {
  std::array<unsigned char, 256> state;
  for (std::size_t i = 0; i < state.size(); ++i) state[i] = static_cast<unsigned char>(i);
  for (std::size_t i = 0, j = 0; i < state.size(); ++i) {
    j = (j + state[i] + kHeaderKey[i % kHeaderKey.size()]) % state.size();
    std::swap(state[i], state[j]);
  }
  std::size_t i = 0, j = 0;
  for (qsizetype at = kCodedAt; at < header.size(); ++at) {
    i = (i + 1) % state.size();
    j = (j + state[i]) % state.size();
    std::swap(state[i], state[j]);
    header[at] = static_cast<char>(header[at] ^ state[(state[i] + state[j]) % state.size()]);
  }
}

bool HasPassword(QByteArray header) {
  DecodeHeader(header);
  double made = 0;
  std::memcpy(&made, header.constData() + kMadeAt, sizeof made);
  const auto date = made > -1e9 && made < 1e9 ? static_cast<std::int32_t>(made) : 0;
  std::array<char, 4> mask;
  std::memcpy(mask.data(), &date, mask.size());
  for (qsizetype i = 0; i < kPasswordSize; ++i) {
    if (header[kPasswordAt + i] != mask[static_cast<std::size_t>(i) % mask.size()]) return true;
  }
  return false;
}

void CheckHeader(const char* path) {
  QFile file(QFile::decodeName(path));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("The file can't be read.");
  const QByteArray header = file.read(kHeaderSize);
  if (header.size() < kHeaderSize) throw Damaged();
  if (header[kVersionAt] != MDB_VER_JET4)
    throw std::runtime_error("The file is of another version than the program has ever used (Jet 4).");
  if (HasPassword(header))
    throw std::runtime_error("The file has a password. Remove it in the program that has set it.");
}

// A text as it lies in the file: UTF-16, or where that is marked a byte for each letter below 256, with a
// zero byte before and behind what is UTF-16 after all.
QString Decoded(const QByteArray& bytes) {
  const auto utf16 = [](QByteArrayView part) {
    QString text(part.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), part.data(), static_cast<std::size_t>(text.size()) * 2);
    return text;
  };
  if (!bytes.startsWith("\xFF\xFE")) return utf16(bytes);
  QString text;
  bool narrow = true;
  for (qsizetype at = 2; at <= bytes.size();) {
    qsizetype end = bytes.indexOf('\0', at);
    // A zero byte within UTF-16 is half of a letter unless it stands at the place of a first half.
    while (!narrow && end >= 0 && (end - at) % 2 != 0) end = bytes.indexOf('\0', end + 1);
    if (end < 0) end = bytes.size();
    const QByteArrayView part = QByteArrayView(bytes).sliced(at, end - at);
    text += narrow ? QString::fromLatin1(part) : utf16(part);
    narrow = !narrow;
    at = end + 1;
  }
  return text;
}

class Reader {
 public:
  explicit Reader(const char* path) : mdb_(mdb_open(path, MDB_NOFLAGS)) {
    if (mdb_ == nullptr || mdb_read_catalog(mdb_, MDB_TABLE) == nullptr) throw Damaged();
  }

  void Read(Output& output) {
    qint64 total = 0;
    ForEachTable([&](MdbTableDef& table) { total += table.num_rows; });
    output.Send(Message::kTotal, total);
    ForEachTable([&](MdbTableDef& table) { ReadTable(table, output); });
  }

 private:
  template <class Action>
  void ForEachTable(Action action) {
    for (guint i = 0; i < mdb_->num_catalog; ++i) {
      auto* const entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb_->catalog, i));
      if (entry->object_type != MDB_TABLE || !mdb_is_user_table(entry)) continue;
      MdbTableDef* const table = mdb_read_table(entry);
      if (table == nullptr) throw Damaged();
      action(*table);
      mdb_free_tabledef(table);
    }
  }

  void ReadTable(MdbTableDef& table, Output& output) {
    if (mdb_read_columns(&table) == nullptr || table.num_cols > MDB_MAX_COLS) throw Damaged();
    QStringList names;
    for (guint i = 0; i < table.num_cols; ++i) names.append(QString::fromUtf8(ColumnOf(table, i).name));
    output.Send(Message::kTable, QString::fromUtf8(table.name), static_cast<qint64>(table.num_rows), names);
    mdb_rewind_table(&table);
    // No more rows than told: what follows would be a loop.
    for (guint i = 0; i <= table.num_rows && mdb_fetch_row(&table) != 0; ++i) ReadRow(table, output);
  }

  static const MdbColumn& ColumnOf(const MdbTableDef& table, guint index) {
    return *static_cast<MdbColumn*>(g_ptr_array_index(table.columns, index));
  }

  // The row that was fetched last, field by field: a bound value wouldn't tell Null from empty.
  void ReadRow(MdbTableDef& table, Output& output) {
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_row(mdb_, static_cast<int>(table.cur_row) - 1, &start, &size) != 0) throw Damaged();
    start &= 0x1FFF;  // without the flags
    std::array<MdbField, MDB_MAX_COLS> fields{};
    const int count = mdb_crack_row(&table, start, size, fields.data());
    if (count < 0 || static_cast<guint>(count) != table.num_cols) throw Damaged();
    // Following a long value reads other pages over this one.
    const QByteArray page(reinterpret_cast<const char*>(mdb_->pg_buf), MDB_PGSIZE);
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream.setVersion(old_rows::kStreamVersion);
    stream << static_cast<quint8>(Message::kRow);
    for (int i = 0; i < count; ++i) {
      const MdbField& field = fields[static_cast<std::size_t>(i)];
      const auto column = static_cast<guint>(field.colnum);
      if (column != static_cast<guint>(i)) throw Damaged();
      WriteCell(ColumnOf(table, column), field, page, stream);
    }
    output.Send(message);
  }

  void WriteCell(const MdbColumn& column, const MdbField& field, const QByteArray& page,
                 QDataStream& stream) {
    const auto put = [&](Cell kind, const auto& value) { stream << static_cast<quint8>(kind) << value; };
    // A truth value lies where others tell whether they are Null.
    if (column.col_type == MDB_BOOL) return put(Cell::kInteger, qint64{field.is_null ? 0 : -1});
    if (field.is_null) {
      stream << static_cast<quint8>(Cell::kNull);
      return;
    }
    if (field.start < 0 || field.siz < 0 || field.start + field.siz > page.size()) throw Damaged();
    QByteArray bytes = page.mid(field.start, field.siz);
    const auto as = [&]<class Number>(Number number) {
      if (bytes.size() < static_cast<qsizetype>(sizeof number)) throw Damaged();
      std::memcpy(&number, bytes.constData(), sizeof number);
      return number;
    };
    switch (column.col_type) {
      case MDB_BYTE:
        return put(Cell::kInteger, qint64{as(std::uint8_t{})});
      case MDB_INT:
        return put(Cell::kInteger, qint64{as(std::int16_t{})});
      case MDB_LONGINT:
        return put(Cell::kInteger, qint64{as(std::int32_t{})});
      case MDB_FLOAT:
        return put(Cell::kReal, double{as(float{})});
      case MDB_DOUBLE:
        return put(Cell::kReal, as(double{}));
      case MDB_TEXT:
        return put(Cell::kText, Decoded(bytes));
      case MDB_MEMO:
        return put(Cell::kText, Decoded(LongValue(bytes)));
      case MDB_OLE:
        return put(Cell::kBytes, LongValue(bytes));
      default:
        return put(Cell::kBytes, bytes);
    }
  }

  QByteArray LongValue(const QByteArray& header) {
    const auto* const data = reinterpret_cast<const unsigned char*>(header.constData());
    const std::span<const unsigned char> bytes(data, static_cast<std::size_t>(header.size()));
    if (bytes.size() < kLongHeader) throw Damaged();
    const std::uint32_t flags = Number32(bytes, 0);
    const std::uint32_t length = flags & kLengthBits;
    if (length > kMostBytes) throw Damaged();
    if ((flags & kInRow) != 0) return Exactly(length, header.mid(kLongHeader));
    std::uint32_t place = Number32(bytes, 4);
    if ((flags & kInOne) != 0) return Exactly(length, Piece(place));
    QByteArray value;
    while (static_cast<std::uint32_t>(value.size()) < length) {
      const QByteArray piece = Piece(place);
      if (piece.size() <= static_cast<qsizetype>(kNextSize)) throw Damaged();
      place = Number32({reinterpret_cast<const unsigned char*>(piece.constData()), kNextSize}, 0);
      value += piece.sliced(kNextSize);
    }
    return Exactly(length, value);
  }

  // What lies in one row of a page: `place` is the page's number and the row's in the low byte.
  QByteArray Piece(std::uint32_t place) {
    void* page = nullptr;
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_pg_row(mdb_, static_cast<int>(place), &page, &start, &size) != 0) throw Damaged();
    start &= 0x1FFF;
    if (static_cast<std::size_t>(start) + size > MDB_PGSIZE) throw Damaged();
    return {static_cast<const char*>(page) + start, static_cast<qsizetype>(size)};
  }

  static QByteArray Exactly(std::uint32_t length, const QByteArray& value) {
    if (static_cast<std::uint32_t>(value.size()) != length) throw Damaged();
    return value;
  }

  MdbHandle* mdb_;  // until the process ends
};

int Run(const char* path) {
  LimitMyself();
  Output output;
  int status = old_rows::kRead;
  try {
    CheckHeader(path);
    Reader(path).Read(output);
    output.Send(Message::kEnd);
  } catch (const std::exception& error) {
    output.Send(Message::kRefuse, QString::fromUtf8(error.what()));
    status = old_rows::kRefused;
  }
  output.Flush();
  std::_Exit(status);  // whatever a damaged file has left in memory
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  if (argc == 2) return orv::Run(argv[1]);
  std::fputs("usage: read_old_database FILE\n", stderr);
  return 2;
}
