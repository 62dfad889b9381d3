#include "records/inner/ConnectionImpl.h"

namespace orv {
namespace {

// Texts of statements differ only where queries do; a program that makes ever new ones must not keep them
// all.
constexpr qsizetype kMaxPrepared = 200;

}  // namespace

ConnectionImpl::~ConnectionImpl() {
  prepared.clear();
  sqlite3_close_v2(database);
}

std::shared_ptr<Statement> ConnectionImpl::Prepared(const QString& sql) {
  auto& statement = prepared[sql];
  if (statement != nullptr && !statement->IsBusy()) return statement;
  std::shared_ptr<Statement> made;
  try {
    made = std::make_shared<Statement>(database, sql);
  } catch (...) {
    if (statement == nullptr) prepared.remove(sql);
    throw;
  }
  statement = made;
  if (prepared.size() > kMaxPrepared) prepared.clear();
  return made;
}

QString ConnectionImpl::Translated(const QString& sql, const std::function<QString()>& translate) {
  if (const auto found = translated.constFind(sql); found != translated.constEnd()) return *found;
  const QString made = translate();
  if (translated.size() > kMaxPrepared) translated.clear();
  translated.insert(sql, made);
  return made;
}

}  // namespace orv
