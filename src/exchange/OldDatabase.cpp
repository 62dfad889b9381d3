#include "exchange/inner/OldDatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QtEndian>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "exchange/OldRows.h"
#include "state/Product.h"

namespace orv {
namespace {

using old_rows::Cell;
using old_rows::Message;

constexpr quint32 kLongestMessage = 600u << 20;  // several long values in a row

[[noreturn]] void Refuse(const QString& cause) {
  throw RuntimeError(kErrDatabase, cause);
}

[[noreturn]] void RefuseDamaged() {
  Refuse(QStringLiteral("The file is damaged."));
}

// The program beside this one, or where an installation puts what no user starts.
QString ReaderProgram() {
  const QString name = QStringLiteral("read_old_database");
  const QString folder = QCoreApplication::applicationDirPath();
  const QString beside = JoinPath(folder, name);
  if (FileExists(beside)) return beside;
  const QString installed =
      QStringLiteral("%1/../libexec/%2/%3").arg(folder, TheProgram().package_name, name);
  if (FileExists(installed)) return installed;
  throw RuntimeError(kErrFileNotFound, QStringLiteral("File not found: ") + beside);
}

class ReaderProcess {
 public:
  ReaderProcess(const QString& path, int silence) : silence_(silence) {
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.start(ReaderProgram(), {path}, QIODevice::ReadOnly);
  }
  ~ReaderProcess() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished();
  }

  QByteArray NextMessage() {
    const QByteArray length = Take(sizeof(quint32));
    const auto size = qFromBigEndian<quint32>(length.constData());
    if (size == 0 || size > kLongestMessage) RefuseDamaged();
    return Take(size);
  }

 private:
  QByteArray Take(qint64 size) {
    while (process_.bytesAvailable() < size) {
      // A process that has ended leaves what it has written to be read.
      if (process_.waitForReadyRead(silence_)) continue;
      if (process_.bytesAvailable() >= size) break;
      RefuseDamaged();
    }
    return process_.read(size);
  }

  const int silence_;
  QProcess process_;
};

Value ReadCell(QDataStream& stream) {
  const auto as = [&]<class T>(T value) {
    stream >> value;
    return value;
  };
  switch (static_cast<Cell>(as(quint8{}))) {
    case Cell::kNull:
      return {};
    case Cell::kInteger:
      return static_cast<long long>(as(qint64{}));
    case Cell::kReal:
      return as(double{});
    case Cell::kText:
      return as(QString{});
    case Cell::kBytes: {
      const QByteArray bytes = as(QByteArray{});
      return bytes.isNull() ? QByteArray("") : bytes;  // no bytes are not Null
    }
  }
  RefuseDamaged();
}

std::vector<Value> ReadRow(QDataStream& stream, qsizetype columns) {
  std::vector<Value> row;
  for (qsizetype i = 0; i < columns; ++i) row.push_back(ReadCell(stream));
  if (stream.status() != QDataStream::Ok || !stream.atEnd()) RefuseDamaged();
  return row;
}

}  // namespace

void ReadOldDatabase(const QString& path, const OldDatabaseSink& sink, int silence) {
  ReaderProcess process(path, silence);
  OldTable table;
  qint64 rows = 0;
  const auto check_count = [&] {
    if (rows == table.rows) return;
    Refuse(QStringLiteral("The file is damaged: %1 of the %2 rows of %3 were found.")
               .arg(rows)
               .arg(table.rows)
               .arg(table.name));
  };
  for (;;) {
    const QByteArray message = process.NextMessage();
    QDataStream stream(message);
    stream.setVersion(old_rows::kStreamVersion);
    quint8 kind = 0;
    stream >> kind;
    switch (static_cast<Message>(kind)) {
      case Message::kTotal: {
        qint64 total = 0;
        stream >> total;
        sink.total(total);
        break;
      }
      case Message::kTable:
        check_count();
        stream >> table.name >> table.rows >> table.columns;
        rows = 0;
        sink.table(table);
        break;
      case Message::kRow:
        sink.row(ReadRow(stream, table.columns.size()));
        ++rows;
        break;
      case Message::kRefuse: {
        QString reason;
        stream >> reason;
        Refuse(reason);
      }
      case Message::kEnd:
        check_count();
        return;
      default:
        RefuseDamaged();
    }
  }
}

}  // namespace orv
