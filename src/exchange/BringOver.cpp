#include "exchange/BringOver.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "exchange/inner/ColumnValue.h"
#include "exchange/inner/OldDatabase.h"
#include "records/DatabaseFile.h"
#include "records/FileLock.h"
#include "records/NewDatabase.h"
#include "records/Recordset.h"
#include "schema/Schema.h"

namespace orv {
namespace {

using schema::Kind;
using schema::Table;

constexpr qsizetype kMarkAt = 4;
constexpr char kMark[] = "Standard Jet DB";

[[noreturn]] void Refuse(const QString& cause) {
  throw RuntimeError(kErrDatabase, cause);
}

// What the long values and texts of a table come to.
struct Content {
  qint64 rows = 0;
  qint64 bytes = 0;
  bool operator==(const Content&) const = default;
};

bool HasBytes(Kind kind) {
  return kind == Kind::kText || kind == Kind::kFilledText || kind == Kind::kLongBinary;
}

qint64 BytesOf(const Value& value) {
  if (IsText(value)) return value.Text().toUtf8().size();
  return IsBytes(value) ? value.Bytes().size() : 0;
}

const Table* FindTable(const QString& name) {
  const auto& tables = schema::Tables();
  const auto found = std::ranges::find_if(tables, [&](const Table& table) {
    return name.compare(QLatin1String(table.name), Qt::CaseInsensitive) == 0;
  });
  return found == tables.end() ? nullptr : &*found;
}

// Adds the rows of the old file to the new one.
class Importer {
 public:
  Importer(const Connection& connection, const Progress& progress)
      : connection_(connection), progress_(progress) {}

  void Read(const QString& old_path, const BringOverLimits& limits) {
    const OldDatabaseSink sink{
        .total = [this](qint64 rows) { total_ = rows; },
        .table = [this](const OldTable& table) { Begin(table); },
        .row = [this](const std::vector<Value>& row) { Add(row); },
    };
    ReadOldDatabase(old_path, sink, limits.silence);
    for (const Table& table : schema::Tables()) {
      if (!contents_.contains(table.name))
        Refuse(QStringLiteral("The file has no table %1, so it is none of this program.")
                   .arg(QLatin1String(table.name)));
    }
  }

  // Rows whose owner is missing, which the old file may have kept and the new one would never show.
  void LeaveOutOrphans() {
    for (const Table& table : schema::Tables()) {
      for (const schema::Column& column : table.columns) {
        if (column.kind == Kind::kOwner) LeaveOutOrphans(table, QLatin1String(column.name));
      }
    }
  }

  // RuntimeError 3000 where the new file, read anew, doesn't have what was read of the old one.
  static void Check(const Connection& connection, const std::map<QString, Content>& contents) {
    for (const auto& [name, content] : contents) {
      if (ContentOf(connection, *FindTable(name), {}) == content) continue;
      Refuse(QStringLiteral("The rows of %1 did not arrive as they were.").arg(name));
    }
  }

  const std::map<QString, Content>& Contents() const { return contents_; }
  const QStringList& LeftOut() const { return left_out_; }

 private:
  void Begin(const OldTable& old) {
    table_ = FindTable(old.name);
    targets_.clear();
    if (table_ == nullptr) {
      left_out_.append(
          QStringLiteral("the table %1, which is unknown, with %2 rows").arg(old.name).arg(old.rows));
      return;
    }
    if (contents_.contains(table_->name)) Refuse(QStringLiteral("The file is damaged."));
    contents_[table_->name] = {};
    for (const QString& column : old.columns) {
      const auto found = std::ranges::find_if(table_->columns, [&](const schema::Column& known) {
        return column.compare(QLatin1String(known.name), Qt::CaseInsensitive) == 0;
      });
      targets_.push_back(found == table_->columns.end() ? nullptr : &*found);
      if (targets_.back() == nullptr)
        left_out_.append(QStringLiteral("the column %1 of %2, which is unknown").arg(column, old.name));
    }
    PrepareStatements();
  }

  // A column that the old file lacks is left to its default.
  void PrepareStatements() {
    const auto statement = [&](const char* suffix, bool longs) {
      QStringList names, values;
      for (const schema::Column* target : targets_) {
        if (target == nullptr || (target->kind != Kind::kKey && (target->kind == Kind::kLongBinary) != longs))
          continue;
        names.append(QLatin1String(target->name));
        values.append(u'?' + QString::number(names.size()));
      }
      return QStringLiteral("INSERT INTO %1%2 (%3) VALUES (%4)")
          .arg(QLatin1String(table_->name), QLatin1String(suffix), names.join(QStringLiteral(", ")),
               values.join(QStringLiteral(", ")));
    };
    const bool apart = table_->HasLongBinaries();
    insert_row_ = statement(apart ? "_rows" : "", false);
    insert_long_ = apart ? statement("_long", true) : QString();
    const bool has_key = std::ranges::any_of(
        targets_, [](const schema::Column* target) { return target && target->kind == Kind::kKey; });
    if (!has_key)
      Refuse(QStringLiteral("The table %1 has no keys, so the file is none of this program.")
                 .arg(QLatin1String(table_->name)));
  }

  void Add(const std::vector<Value>& row) {
    if (total_ > 0) progress_(static_cast<int>(std::min<qint64>(++done_ * 100 / total_, 100)));
    if (table_ == nullptr) return;
    std::vector<Value> shorts, longs;
    bool any_long = false;
    Content& content = contents_[table_->name];
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (targets_[i] == nullptr) continue;
      const Value value = Converted(*targets_[i], row[i]);
      content.bytes += BytesOf(value);
      const bool is_long = targets_[i]->kind == Kind::kLongBinary;
      if (!is_long) shorts.push_back(value);
      if (is_long || targets_[i]->kind == Kind::kKey) longs.push_back(value);
      any_long = any_long || (is_long && !value.IsNull());
    }
    ++content.rows;
    connection_.Execute(insert_row_, shorts);
    if (any_long) connection_.Execute(insert_long_, longs);
  }

  Value Converted(const schema::Column& column, const Value& value) const {
    try {
      return ColumnValue(column.kind, value);
    } catch (const RuntimeError& error) {
      Refuse(QStringLiteral("The file is damaged: %1 in row %2 of %3 is no such value (%4).")
                 .arg(QLatin1String(column.name))
                 .arg(contents_.at(table_->name).rows + 1)
                 .arg(QLatin1String(table_->name), error.Description()));
    }
  }

  void LeaveOutOrphans(const Table& table, const QString& owner) {
    const QString key = QLatin1String(table.columns.front().name);
    const QString condition =
        QStringLiteral("%1 IS NULL OR %1 NOT IN (SELECT %1 FROM %2)").arg(owner, OwnerTable(owner));
    const Content lost = ContentOf(connection_, table, condition);
    if (lost.rows == 0) return;
    for (Recordset rows =
             Recordset::OpenSnapshot(connection_, QStringLiteral("SELECT %1, %2 FROM %3 WHERE %4 ORDER BY %1")
                                                      .arg(key, owner, QLatin1String(table.name), condition));
         !rows.IsEOF(); rows.MoveNext()) {
      left_out_.append(
          QStringLiteral("row %1 of %2, whose %3 (%4) is missing")
              .arg(rows[key].Text(), QLatin1String(table.name), owner, rows[owner].TextOrEmpty()));
    }
    connection_.Execute(QStringLiteral("DELETE FROM %1 WHERE %2").arg(QLatin1String(table.name), condition));
    contents_[table.name].rows -= lost.rows;
    contents_[table.name].bytes -= lost.bytes;
  }

  static QString OwnerTable(const QString& key) {
    for (const Table& table : schema::Tables()) {
      if (key == QLatin1String(table.columns.front().name)) return QLatin1String(table.name);
    }
    return {};
  }

  static Content ContentOf(const Connection& connection, const Table& table, const QString& condition) {
    QStringList sizes{QStringLiteral("0")};
    for (const schema::Column& column : table.columns) {
      if (HasBytes(column.kind))
        sizes.append(QStringLiteral("IFNULL(LENGTH(CAST(%1 AS BLOB)), 0)").arg(QLatin1String(column.name)));
    }
    const Recordset row = Recordset::OpenSnapshot(
        connection,
        QStringLiteral("SELECT COUNT(*) AS RowCount, IFNULL(SUM(%1), 0) AS ByteCount FROM %2 WHERE %3")
            .arg(sizes.join(QStringLiteral(" + ")), QLatin1String(table.name),
                 condition.isEmpty() ? QStringLiteral("1") : condition));
    return {row["RowCount"].Get().Int64(), row["ByteCount"].Get().Int64()};
  }

  const Connection& connection_;
  const Progress& progress_;
  const Table* table_ = nullptr;  // nothing while an unknown table is read
  std::vector<const schema::Column*>
      targets_;  // for each column of the old table, nothing for an unknown one
  QString insert_row_, insert_long_;
  std::map<QString, Content> contents_;
  QStringList left_out_;
  qint64 total_ = 0, done_ = 0;
};

// Fills a new file at a path.
BroughtOver Make(const QString& old_path, const QString& path, const Progress& progress,
                 const BringOverLimits& limits) {
  MakeDatabase(path, schema::Script());
  BroughtOver result;
  std::map<QString, Content> contents;
  {
    const Connection connection = Connection::Open(path);
    Importer importer(connection, progress);
    Transaction transaction(connection);
    importer.Read(old_path, limits);
    importer.LeaveOutOrphans();
    transaction.Commit();
    contents = importer.Contents();
    result.left_out = importer.LeftOut();
  }
  const Connection anew = Connection::Open(path);
  Importer::Check(anew, contents);
  for (const auto& [name, content] : contents)
    result.counts.append(QStringLiteral("%1 rows in %2").arg(content.rows).arg(name));
  return result;
}

// The first name of its kind that no file has.
QString NameToKeep(const QString& path) {
  const QFileInfo file(path);
  const QString base = JoinPath(file.absolutePath(), file.completeBaseName() + QStringLiteral("-old"));
  const QString suffix = u'.' + file.suffix();
  for (int n = 2;; ++n) {
    const QString name =
        n == 2 ? base + suffix : QStringLiteral("%1 (%2)%3").arg(base).arg(n - 1).arg(suffix);
    if (!FileExists(name)) return name;
  }
}

// Gives a file a second name, or where the file system knows none a copy.
void Keep(const QString& path, const QString& kept) {
  std::error_code failure;
  const auto native = [](const QString& name) {
    return std::filesystem::path(QFile::encodeName(name).toStdString());
  };
  std::filesystem::create_hard_link(native(path), native(kept), failure);
  if (failure && !QFile::copy(path, kept)) throw RuntimeError(kErrPathFileAccess);
  Synchronise(kept);
}

}  // namespace

bool IsOldDatabase(const QString& path) {
  QFile file(path);
  return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && file.seek(kMarkAt) &&
         file.read(sizeof kMark - 1) == kMark;
}

BroughtOver BringOver(const QString& old_path, const QString& new_path, const Progress& progress,
                      const BringOverLimits& limits) {
  if (!FileExists(old_path)) throw RuntimeError(kErrFileNotFound);
  if (!IsOldDatabase(old_path)) Refuse(QStringLiteral("The file is no database of an older version."));
  if (FileExists(new_path))
    throw RuntimeError(kErrPathFileAccess, new_path + QStringLiteral(" is there already."));
  BroughtOver result;
  ReplaceFile(new_path,
              [&](const QString& temporary) { result = Make(old_path, temporary, progress, limits); });
  return result;
}

BroughtOver BringOverInPlace(const QString& path, const Progress& progress, QString& kept) {
  const ExclusiveFileLock alone(path);
  BroughtOver result;
  ReplaceFile(path, [&](const QString& temporary) {
    result = Make(path, temporary, progress, {});
    kept = NameToKeep(path);
    Keep(path, kept);
    KeepJournalOf(path, kept);
  });
  return result;
}

}  // namespace orv
