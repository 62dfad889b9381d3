#include "records/inner/RowCriterion.h"

#include <algorithm>

#include "base/RuntimeError.h"
#include "records/inner/Collation.h"

namespace orv {
namespace {

int IndexOf(const QStringList& columns, const QString& name) {
  for (int i = 0; i < columns.size(); ++i) {
    if (columns[i].compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  throw RuntimeError(kErrItemNotFound, QStringLiteral("Item not found in this collection: %1").arg(name));
}

}  // namespace

struct RowCriterion::Engine {
  Engine() {
    CheckDatabase(database,
                  sqlite3_open_v2(":memory:", &database,
                                  SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr));
    RegisterCollation(database);
  }
  ~Engine() {
    spare.reset();
    sqlite3_close_v2(database);
  }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  // One for all criteria.
  static std::shared_ptr<Engine> Get() {
    static const auto engine = std::make_shared<Engine>();
    return engine;
  }

  // The last statement that was given back serves again if its text is the same: a form looks for one row
  // after another by the same column.
  std::unique_ptr<Statement> Take(const QString& sql) {
    if (spare != nullptr && spare_sql == sql) return std::move(spare);
    return std::make_unique<Statement>(database, sql);
  }
  void GiveBack(const QString& sql, std::unique_ptr<Statement> statement) {
    statement->Reset();
    spare_sql = sql;
    spare = std::move(statement);
  }

  sqlite3* database = nullptr;
  std::unique_ptr<Statement> spare;
  QString spare_sql;
};

RowCriterion::RowCriterion(const QString& text, const QStringList& columns) : engine_(Engine::Get()) {
  criterion_ = TranslateCriterion(text, [&](const QString& name) {
    columns_.push_back({IndexOf(columns, name), 0});
    return QStringLiteral("@c%1").arg(columns_.size());
  });
  sql_ = QStringLiteral("SELECT ") + criterion_.sql;
  statement_ = engine_->Take(sql_);
  for (size_t i = 0; i < columns_.size(); ++i) {
    columns_[i].parameter = statement_->ParameterIndex(QStringLiteral("@c%1").arg(i + 1));
  }
  for (size_t i = 0; i < criterion_.values.size(); ++i) {
    statement_->Bind(statement_->ParameterIndex(QStringLiteral("@v%1").arg(i + 1)), criterion_.values[i]);
  }
}

RowCriterion::~RowCriterion() {
  engine_->GiveBack(sql_, std::move(statement_));
}

bool RowCriterion::IsMetBy(const std::vector<Value>& row) {
  for (const NamedColumn& column : columns_) {
    statement_->Bind(column.parameter, row[static_cast<size_t>(column.index)]);
  }
  const bool met = statement_->Step() && statement_->Integer(0) != 0;
  statement_->Rewind();
  return met;
}

}  // namespace orv
