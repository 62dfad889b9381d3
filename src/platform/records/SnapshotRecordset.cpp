#include "records/inner/SnapshotRecordset.h"

#include <algorithm>
#include <numeric>

#include "base/RuntimeError.h"
#include "records/inner/Dialect.h"
#include "records/inner/QueryShape.h"
#include "records/inner/RowCriterion.h"

namespace orv {
namespace {

// A query in SQLite's dialect, with the key behind its ORDER BY where that can be had.
QString StatementOf(ConnectionImpl& connection, const QString& sql) {
  const Query query = Translate(sql);
  if (query.order.isEmpty()) return query.sql;
  const QString key = TieBreaker(connection, query, *connection.Prepared(query.sql));
  if (key.isEmpty()) return query.sql;
  const QString ordered = query.sql + QStringLiteral(", ") + key;
  try {
    connection.Prepared(ordered);
    return ordered;
  } catch (const RuntimeError&) {
    return query.sql;  // several tables of a join have a column of that name
  }
}

// A damaged file may show the same bytes in ever so many rows.
constexpr std::int64_t kMaxSnapshot = std::int64_t{2} << 30;

std::int64_t SizeOf(const Value& value) {
  const auto* bytes = std::get_if<QByteArray>(&value.data());
  const auto* text = std::get_if<QString>(&value.data());
  return 32 + (bytes != nullptr ? bytes->size() : 0) + (text != nullptr ? 2 * text->size() : 0);
}

[[noreturn]] void RefuseChange() {
  throw RuntimeError(kErrDatabase, QStringLiteral("Database error: the recordset is read-only"));
}

}  // namespace

SnapshotRecordset::SnapshotRecordset(ConnectionImpl& connection, const QString& sql) {
  const StatementUse statement(connection,
                               connection.Translated(sql, [&] { return StatementOf(connection, sql); }));
  // The first step sees the columns as they are now, also where another program has added one.
  bool row_follows = statement->Step();
  QStringList names;
  for (int i = 0; i < statement->ColumnCount(); ++i) names.append(statement->ColumnName(i));
  SetColumnNames(names);
  std::int64_t size = 0;
  for (; row_follows; row_follows = statement->Step()) {
    Row row;
    row.reserve(static_cast<size_t>(names.size()));
    for (int i = 0; i < names.size(); ++i) {
      row.push_back(statement->Column(i));
      size += SizeOf(row.back());
    }
    if (size > kMaxSnapshot) throw RuntimeError(kErrOutOfMemory);
    rows_.push_back(std::move(row));
  }
  SetFilter({});
}

void SnapshotRecordset::SetFilter(const QString& criterion) {
  CheckOpen();
  std::vector<size_t> shown;
  if (criterion.trimmed().isEmpty()) {
    shown.resize(rows_.size());
    std::iota(shown.begin(), shown.end(), size_t{0});
  } else {
    RowCriterion meets(criterion, ColumnNames());
    for (size_t i = 0; i < rows_.size(); ++i) {
      if (meets.IsMetBy(rows_[i])) shown.push_back(i);
    }
  }
  shown_ = std::move(shown);
  Step(0, 1);
}

int SnapshotRecordset::Search(const QString& criterion, int start) {
  RowCriterion meets(criterion, ColumnNames());
  for (int i = start; i < Size(); ++i) {
    if (meets.IsMetBy(rows_[shown_[static_cast<size_t>(i)]])) return i;
  }
  return -1;
}

const Value& SnapshotRecordset::Current(int column) const {
  CheckCurrent();
  return rows_[shown_[static_cast<size_t>(position_)]][static_cast<size_t>(column)];
}

Value SnapshotRecordset::Get(int column) {
  return Current(column);
}

bool SnapshotRecordset::IsNull(int column) {
  return Current(column).IsNull();
}

QByteArray SnapshotRecordset::Bytes(int column) {
  const Value& value = Current(column);
  return value.IsNull() ? QByteArray() : value.Bytes();
}

QByteArray SnapshotRecordset::NextBytes(int column) {
  CheckCurrent();
  const size_t next = static_cast<size_t>(position_) + 1;
  if (next == shown_.size()) return {};
  const Value& value = rows_[shown_[next]][static_cast<size_t>(column)];
  return value.IsNull() ? QByteArray() : value.Bytes();
}

std::int64_t SnapshotRecordset::ActualSize(int column) {
  offsets_.remove(column);
  return Bytes(column).size();
}

QByteArray SnapshotRecordset::GetChunk(int column, std::int64_t length) {
  std::int64_t& offset = offsets_[column];
  QByteArray chunk = Bytes(column).mid(offset, std::max<std::int64_t>(length, 0));
  offset += chunk.size();
  return chunk;
}

void SnapshotRecordset::Release() {
  rows_.clear();
  shown_.clear();
}

void SnapshotRecordset::Set(int, const Value&) {
  RefuseChange();
}
void SnapshotRecordset::AppendChunk(int, const QByteArray&) {
  RefuseChange();
}
void SnapshotRecordset::AddNew() {
  RefuseChange();
}
void SnapshotRecordset::Update() {
  RefuseChange();
}
void SnapshotRecordset::CancelUpdate() {
  CheckOpen();
}
void SnapshotRecordset::Delete() {
  RefuseChange();
}

}  // namespace orv
