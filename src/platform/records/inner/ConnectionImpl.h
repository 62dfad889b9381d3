#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <memory>

#include "records/FileLock.h"
#include "records/inner/Sqlite.h"

namespace orv {

// The open database of a connection.
struct ConnectionImpl {
  ConnectionImpl() = default;
  ~ConnectionImpl();
  ConnectionImpl(const ConnectionImpl&) = delete;
  ConnectionImpl& operator=(const ConnectionImpl&) = delete;

  // A statement that stays prepared for its next use with the same text.
  std::shared_ptr<Statement> Prepared(const QString& sql);
  // What `translate` makes of a query's text, kept likewise.
  QString Translated(const QString& sql, const std::function<QString()>& translate);

  std::shared_ptr<LockedFile> lock;
  sqlite3* database = nullptr;
  int transactions = 0;  // depth of nesting
  QHash<QString, std::shared_ptr<Statement>> prepared;
  QHash<QString, QString> translated;
};

// One use of a prepared statement; its end gives up the rows and locks, also when an error passes by.
class StatementUse {
 public:
  StatementUse(ConnectionImpl& connection, const QString& sql) : statement_(connection.Prepared(sql)) {}
  explicit StatementUse(std::shared_ptr<Statement> statement) : statement_(std::move(statement)) {}
  ~StatementUse() {
    if (statement_ != nullptr) statement_->Reset();
  }
  StatementUse(StatementUse&&) = default;
  StatementUse& operator=(StatementUse&&) = delete;
  Statement* operator->() const { return statement_.get(); }

 private:
  std::shared_ptr<Statement> statement_;
};

}  // namespace orv
