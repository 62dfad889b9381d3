#include "records/inner/KnownObjects.h"

#include <QHash>
#include <algorithm>

#include "base/RuntimeError.h"
#include "records/inner/Sqlite.h"
#include "records/inner/Tokens.h"

namespace orv {
namespace {

[[noreturn]] void Refuse(const QString& why) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Database error: ") + why);
}

// What counts of a token: names and words without quotes and case, literals with both.
QString Canonical(const Token& token) {
  if (token.kind == TokenKind::kText && token.quote == u'\'') return token.quote + token.text;
  if (token.kind == TokenKind::kName) return token.text.mid(1).chopped(1).toLower();
  return token.text.toLower();
}

// Empty for what is no statement.
QStringList Canonical(const QString& statement) {
  QStringList canonical;
  try {
    for (const Token& token : Tokenize(statement)) {
      if (token.kind != TokenKind::kBlank) canonical += Canonical(token);
    }
  } catch (const RuntimeError&) {
    return {};
  }
  return canonical;
}

bool IsMadeBy(const QString& found, const QStringList& statements) {
  if (statements.contains(found)) return true;
  const QStringList canonical = Canonical(found);
  return std::ranges::any_of(statements,
                             [&](const QString& statement) { return Canonical(statement) == canonical; });
}

bool HoldsRows(const QString& type) {
  return type == u"table" || type == u"view";
}

}  // namespace

void CheckObjects(sqlite3* database, const std::vector<KnownObject>& objects) {
  QHash<QString, const KnownObject*> missing;
  for (const KnownObject& object : objects) missing.insert(object.name.toLower(), &object);
  const QHash<QString, const KnownObject*> known = missing;
  Statement statement(database, QStringLiteral("SELECT type, name, tbl_name, sql FROM sqlite_schema"));
  while (statement.Step()) {
    const QString type = statement.Column(0).TextOrEmpty();
    const QString name = statement.Column(1).TextOrEmpty();
    const QString table = statement.Column(2).TextOrEmpty();
    const KnownObject* object = known.value(name.toLower());
    if (object == nullptr) {
      if (type == u"trigger" && known.contains(table.toLower()))
        Refuse(QStringLiteral("trigger %1 on %2 is none of the program's").arg(name, table));
      continue;
    }
    if (type != object->type || !IsMadeBy(statement.Column(3).TextOrEmpty(), object->statements))
      Refuse(QStringLiteral("%1 %2 is not the program's").arg(type, name));
    missing.remove(name.toLower());
  }
  for (const KnownObject& object : objects) {
    if (HoldsRows(object.type) && missing.contains(object.name.toLower()))
      Refuse(QStringLiteral("no such table: ") + object.name);
  }
}

}  // namespace orv
