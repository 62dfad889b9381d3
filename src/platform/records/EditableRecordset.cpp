#include "records/inner/EditableRecordset.h"

#include <algorithm>

#include "base/RuntimeError.h"

namespace orv {

EditableRecordset::EditableRecordset(std::shared_ptr<ConnectionImpl> connection, const QString& sql)
    : connection_(std::move(connection)),
      query_(Translate(sql)),
      shape_(ExamineQuery(*connection_, query_)),
      writer_(connection_, shape_),
      long_reader_(*connection_, shape_),
      row_(shape_.columns.size()) {
  QStringList names;
  for (const ResultColumn& column : shape_.columns) names.append(column.name);
  SetColumnNames(names);
  row_statement_ = connection_->Prepared(RowStatement());
  ReadKeys();
  Step(0, 1);
}

void EditableRecordset::ReadKeys() {
  const QString& key = shape_.key.expression;
  const QString order = query_.order.isEmpty() ? key : query_.order + QStringLiteral(", ") + key;
  Statement statement(connection_->database,
                      QStringLiteral("SELECT %1 %2 ORDER BY %3").arg(key, query_.source, order));
  while (statement.Step()) {
    // A join may show a row twice; it is one row to edit.
    if (!statement.IsNull(0) && !positions_.contains(statement.Integer(0))) AppendKey(statement.Integer(0));
  }
}

void EditableRecordset::AppendKey(std::int64_t id) {
  positions_.insert(id, Size());
  keys_.push_back({id});
  ++alive_;
}

// Rows of a single table are read by their key alone, so that a change that leaves the query's condition
// doesn't lose them.
QString EditableRecordset::SourceOfKey(const QString& parameter) const {
  const bool conditional = query_.joined && !query_.where.isEmpty();
  return QStringLiteral("%1 WHERE %2%3 = %4")
      .arg(query_.from, conditional ? u'(' + query_.where + QStringLiteral(") AND ") : QString(),
           shape_.key.expression, parameter);
}

QString EditableRecordset::RowStatement() const {
  QStringList expressions;
  for (const ResultColumn& column : shape_.columns) {
    if (!column.is_long) expressions.append(column.expression);
  }
  return QStringLiteral("SELECT %1 %2")
      .arg(expressions.join(QStringLiteral(", ")), SourceOfKey(QStringLiteral("?1")));
}

bool EditableRecordset::Load(int position) {
  const Key& key = keys_[static_cast<size_t>(position)];
  if (key.gone) return false;
  long_reader_.Close();
  stale_ = false;
  const StatementUse statement(row_statement_);
  statement->Bind(1, Value(static_cast<long long>(key.id)));
  if (!statement->Step()) {
    Lose(position);
    return false;
  }
  int result = 0;
  for (size_t i = 0; i < row_.size(); ++i) {
    if (!shape_.columns[i].is_long) row_[i] = statement->Column(result++);
  }
  return true;
}

void EditableRecordset::Lose(int position) {
  keys_[static_cast<size_t>(position)].gone = true;
  --alive_;
}

void EditableRecordset::Refresh() {
  if (!stale_ || Load(position_)) return;
  current_ = false;
  throw RuntimeError(kErrNoCurrentRecord);
}

const Value* EditableRecordset::PendingValue(int column) const {
  const auto found = pending_.find(column);
  return found == pending_.end() ? nullptr : &found->second;
}

const QByteArray* EditableRecordset::PendingBytes(int column) const {
  const auto found = chunks_.find(column);
  return found == chunks_.end() ? nullptr : &found->second;
}

bool EditableRecordset::IsInMemory(int column) const {
  return !IsLong(column) || adding_ || PendingBytes(column) != nullptr || PendingValue(column) != nullptr;
}

Value EditableRecordset::Get(int column) {
  CheckCurrent();
  if (const QByteArray* bytes = PendingBytes(column)) return Value(*bytes);
  if (const Value* value = PendingValue(column)) return *value;
  if (adding_) return Value::Null();
  Refresh();
  return IsLong(column) ? long_reader_.Whole(column, CurrentKey()) : row_[static_cast<size_t>(column)];
}

void EditableRecordset::Set(int column, const Value& value) {
  CheckCurrent();
  writer_.CheckWritable(column);
  chunks_.erase(column);
  pending_[column] = value;
}

bool EditableRecordset::IsNull(int column) {
  CheckCurrent();
  return IsInMemory(column) ? Get(column).IsNull() : long_reader_.IsNull(column, CurrentKey());
}

QByteArray EditableRecordset::Bytes(int column) {
  CheckCurrent();
  if (!IsInMemory(column)) return long_reader_.Bytes(column, CurrentKey());
  const Value value = Get(column);
  return value.IsNull() ? QByteArray() : value.Bytes();
}

QByteArray EditableRecordset::NextBytes(int column) {
  CheckCurrent();
  for (size_t next = static_cast<size_t>(position_) + 1; next < keys_.size(); ++next) {
    if (!keys_[next].gone) return long_reader_.Bytes(column, keys_[next].id);
  }
  return {};
}

std::int64_t EditableRecordset::ActualSize(int column) {
  CheckCurrent();
  offsets_.remove(column);
  return IsInMemory(column) ? Bytes(column).size() : long_reader_.Size(column, CurrentKey());
}

QByteArray EditableRecordset::GetChunk(int column, std::int64_t length) {
  CheckCurrent();
  std::int64_t& offset = offsets_[column];
  const QByteArray chunk = IsInMemory(column) ? Bytes(column).mid(offset, std::max<std::int64_t>(length, 0))
                                              : long_reader_.Read(column, CurrentKey(), offset, length);
  offset += chunk.size();
  return chunk;
}

void EditableRecordset::AppendChunk(int column, const QByteArray& bytes) {
  CheckCurrent();
  writer_.CheckWritable(column);
  pending_.erase(column);
  chunks_[column].append(bytes);
}

void EditableRecordset::AddNew() {
  CheckOpen();
  Post();
  offsets_.clear();
  long_reader_.Close();
  adding_ = true;
}

void EditableRecordset::Update() {
  CheckOpen();
  Post();
}

void EditableRecordset::CancelUpdate() {
  CheckOpen();
  DropChange();
}

void EditableRecordset::DropChange() {
  pending_.clear();
  chunks_.clear();
  adding_ = false;
}

RowChange EditableRecordset::TakeChange() const {
  RowChange change = pending_;
  for (const auto& [column, bytes] : chunks_) change[column] = Value(bytes);
  return change;
}

void EditableRecordset::Post() {
  if (adding_) {
    PostNew();
  } else if (!pending_.empty() || !chunks_.empty()) {
    PostChange();
  }
}

void EditableRecordset::PostNew() {
  const RowChange change = TakeChange();
  // Whatever comes of it, the row waits no longer: a failure leaves none behind.
  DropChange();
  const std::int64_t id = writer_.Insert(change);
  AppendKey(id);
  position_ = Size() - 1;
  current_ = true;
  stale_ = true;
  offsets_.clear();
  NoteMembership(id, change, true);
}

// A change that can't be written goes on waiting, unless its row is gone.
void EditableRecordset::PostChange() {
  const RowChange change = TakeChange();
  long_reader_.Close();
  if (!writer_.Update(CurrentKey(), change)) {
    DropChange();
    Lose(position_);
    current_ = false;
    throw RuntimeError(kErrNoCurrentRecord, QStringLiteral("No current record: it was deleted elsewhere"));
  }
  DropChange();
  stale_ = true;
  offsets_.clear();
  NoteMembership(CurrentKey(), change, false);
}

void EditableRecordset::NoteMembership(std::int64_t id, const RowChange& change, bool added) {
  if (query_.where.isEmpty() || query_.joined) return;
  const bool concerned = added || std::ranges::any_of(change, [this](const auto& entry) {
                           return query_.where.contains(shape_.columns[static_cast<size_t>(entry.first)].name,
                                                        Qt::CaseInsensitive);
                         });
  if (!concerned) return;
  StatementUse statement(*connection_, QStringLiteral("SELECT 1 %1 WHERE (%2) AND %3 = ?1")
                                           .arg(query_.from, query_.where, shape_.key.expression));
  statement->Bind(1, Value(static_cast<long long>(id)));
  if (statement->Step()) {
    outside_.remove(id);
  } else {
    outside_.insert(id);
  }
}

void EditableRecordset::Delete() {
  CheckOpen();
  if (adding_) return DropChange();
  CheckCurrent();
  DropChange();
  long_reader_.Close();
  writer_.Delete(CurrentKey());
  Lose(position_);
  current_ = false;
}

QString EditableRecordset::ExpressionOf(const QString& name) const {
  for (const ResultColumn& column : shape_.columns) {
    if (column.name.compare(name, Qt::CaseInsensitive) == 0) return column.expression;
  }
  return {};
}

// The query's own condition goes along, so that an index over it serves.
int EditableRecordset::Search(const QString& text, int start) {
  const Criterion criterion =
      TranslateCriterion(text, [this](const QString& name) { return ExpressionOf(name); });
  int found = Size();
  const auto look = [&](const QString& sql, const std::int64_t* key) {
    StatementUse statement(*connection_, sql);
    int parameter = 0;
    for (const Value& value : criterion.values) statement->Bind(++parameter, value);
    if (key != nullptr) statement->Bind(++parameter, Value(static_cast<long long>(*key)));
    while (statement->Step()) {
      const int position = positions_.value(statement->Integer(0), -1);
      if (position >= start && !keys_[static_cast<size_t>(position)].gone) found = std::min(found, position);
    }
  };
  const QString select = QStringLiteral("SELECT %1 %2 WHERE ").arg(shape_.key.expression, query_.from);
  const QString condition =
      query_.where.isEmpty() ? QString() : u'(' + query_.where + QStringLiteral(") AND ");
  look(select + condition + u'(' + criterion.sql + u')', nullptr);
  for (const std::int64_t key : outside_) {
    look(QStringLiteral("%1(%2) AND %3 = @key").arg(select, criterion.sql, shape_.key.expression), &key);
  }
  return found < Size() ? found : -1;
}

void EditableRecordset::SetFilter(const QString&) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Database error: an editable recordset has no filter"));
}

void EditableRecordset::Release() {
  long_reader_.Close();
  keys_.clear();
  positions_.clear();
  alive_ = 0;
}

}  // namespace orv
