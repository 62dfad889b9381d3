#include "schema/Schema.h"

#include <algorithm>
#include <functional>

namespace orv::schema {
namespace {

using Columns = std::vector<Column>;

constexpr int kLineWidth = 108;

// As an older file has it.
Kind Older(Kind kind) {
  return kind == Kind::kFilledText ? Kind::kText : kind;
}

const char* TypeOf(Kind kind) {
  switch (kind) {
    case Kind::kKey:
      return "INTEGER PRIMARY KEY AUTOINCREMENT";
    case Kind::kOwner:
    case Kind::kFont:
    case Kind::kInteger:
      return "INTEGER";
    case Kind::kCount:
    case Kind::kBoolean:
      return "INTEGER NOT NULL DEFAULT 0";
    case Kind::kReal:
      return "REAL";
    case Kind::kText:
      return "TEXT";
    case Kind::kFilledText:
      return "TEXT NOT NULL DEFAULT ''";
    case Kind::kLongBinary:
      return "BLOB";
  }
  return "";
}

// The names in a pattern such as "NEW.%1".
QStringList Each(const Columns& columns, const QString& pattern = QStringLiteral("%1")) {
  QStringList items;
  for (const Column& column : columns)
    items.append(QString(pattern).replace("%1", QLatin1String(column.name)));
  return items;
}

// What is stored of what another program writes to a view.
QString NewValue(const Column& column) {
  const QString type = QLatin1String(TypeOf(column.kind));
  const QString value = QStringLiteral("NEW.") + QLatin1String(column.name);
  if (!type.contains("DEFAULT")) return value;
  return QStringLiteral("IFNULL(%1, %2)").arg(value, type.section(u' ', -1));
}

QStringList NewValues(const Columns& columns, const QString& pattern = QStringLiteral("%2")) {
  QStringList items;
  for (const Column& column : columns)
    items.append(QString(pattern).replace("%1", QLatin1String(column.name)).replace("%2", NewValue(column)));
  return items;
}

// A list in indented lines.
QString Lines(const QStringList& items) {
  QString text, line = QStringLiteral("   ");
  for (qsizetype i = 0; i < items.size(); ++i) {
    const QString item = i + 1 < items.size() ? items[i] + u',' : items[i];
    if (line.size() + 1 + item.size() > kLineWidth) {
      text += line + u'\n';
      line = QStringLiteral("   ");
    }
    line += u' ' + item;
  }
  return text + line;
}

QString List(const QStringList& items) {
  return items.join(QStringLiteral(", "));
}

Table OfAge(Age age, Table table) {
  if (age == Age::kNew) return table;
  for (Column& column : table.columns) column.kind = Older(column.kind);
  return table;
}

Columns Picked(const Table& table, const std::function<bool(Kind)>& wanted) {
  Columns columns;
  std::ranges::copy_if(table.columns, std::back_inserter(columns),
                       [&](const Column& column) { return wanted(column.kind); });
  return columns;
}

QString RowsOf(const Table& table) {
  return QLatin1String(table.name) + QLatin1String(table.HasLongBinaries() ? "_rows" : "");
}

// The table whose key this is.
const Table& OwnerOf(const QString& key) {
  return *std::ranges::find_if(
      Tables(), [&](const Table& table) { return key == QLatin1String(table.columns.front().name); });
}

// A record takes the originals of its pictures along. These triggers stand beside the table's own, so that
// these are the same in a file without originals.
void RelateOriginals(std::vector<Object>& objects) {
  for (const Table& table : Tables()) {
    if (!table.HasLongBinaries()) continue;
    const QString name = QStringLiteral("tblOriginal_of") + QString(QLatin1String(table.name)).mid(3);
    objects.push_back(
        {"trigger", name,
         QStringLiteral("CREATE TRIGGER %1 AFTER DELETE ON %2 BEGIN\n"
                        "  DELETE FROM tblOriginal_rows WHERE TableName = '%3' AND RecordID = OLD.%4;\n"
                        "END")
             .arg(name, RowsOf(table), QLatin1String(table.name),
                  QLatin1String(table.columns.front().name))});
  }
}

// Makes the objects of one table.
class Maker {
 public:
  Maker(const Table& table, std::vector<Object>& objects)
      : objects_(objects),
        table_(table),
        name_(QLatin1String(table.name)),
        key_(QLatin1String(table.columns.front().name)),
        short_(Picked(table, [](Kind kind) { return kind != Kind::kLongBinary; })),
        long_(Picked(table, [](Kind kind) { return kind == Kind::kLongBinary; })),
        written_(short_.begin() + 1, short_.end()) {}

  void Make() {
    MakeTable(RowsOf(table_), short_, QLatin1String(TypeOf(Kind::kKey)));
    if (table_.HasLongBinaries()) {
      Columns columns = long_;
      columns.insert(columns.begin(), table_.columns.front());
      MakeTable(name_ + "_long", columns, QStringLiteral("INTEGER PRIMARY KEY"));
    }
    for (const Index& index : table_.indexes) {
      const QString name = name_ + u'_' + QLatin1String(index.suffix);
      Add("index", name,
          QStringLiteral("CREATE INDEX %1 ON %2 (%3)")
              .arg(name, RowsOf(table_), QLatin1String(index.columns)));
    }
    if (table_.HasLongBinaries()) {
      MakeView();
      MakeWritable();
    }
    MakeRelations();
  }

 private:
  void Add(const char* type, const QString& name, const QString& sql) {
    objects_.push_back({type, name, sql});
  }

  void AddTrigger(const char* suffix, const QString& event, const QString& body) {
    const QString name = name_ + u'_' + QLatin1String(suffix);
    Add("trigger", name, QStringLiteral("CREATE TRIGGER %1 %2 BEGIN\n%3END").arg(name, event, body));
  }

  void MakeTable(const QString& name, const Columns& columns, const QString& key_type) {
    qsizetype width = 0;
    for (const QString& column : Each(columns)) width = std::max(width, column.size());
    QStringList lines;
    for (const Column& column : columns) {
      const QString type = column.kind == Kind::kKey ? key_type : QLatin1String(TypeOf(column.kind));
      lines.append("  " + QString(QLatin1String(column.name)).leftJustified(width) + u' ' + type);
    }
    Add("table", name,
        QStringLiteral("CREATE TABLE %1 (\n%2\n)").arg(name, lines.join(QStringLiteral(",\n"))));
  }

  void MakeView() {
    QStringList sources;
    for (const Column& column : table_.columns)
      sources.append((column.kind == Kind::kLongBinary ? "l." : "r.") + QString(QLatin1String(column.name)));
    Add("view", name_,
        QStringLiteral("CREATE VIEW %1 (\n%2\n) AS SELECT\n%3\n"
                       "  FROM %1_rows AS r LEFT JOIN %1_long AS l ON l.%4 = r.%4")
            .arg(name_, Lines(Each(table_.columns)), Lines(sources), key_));
  }

  // Reads as a table, and is written like one.
  void MakeWritable() {
    const QString long_names = List(Each(long_));
    const QString long_values = List(Each(long_, QStringLiteral("NEW.%1")));
    AddTrigger(
        "insert", QStringLiteral("INSTEAD OF INSERT ON ") + name_,
        QStringLiteral("  INSERT INTO %1_rows (\n%2)\n  VALUES (\n%3);\n"
                       "  INSERT INTO %1_long (%4, %5)\n  SELECT last_insert_rowid(), %6\n  WHERE %7;\n")
            .arg(name_, Lines(Each(short_)), Lines(NewValues(short_)), key_, long_names, long_values,
                 Each(long_, QStringLiteral("NEW.%1 IS NOT NULL")).join(QStringLiteral(" OR "))));
    AddTrigger("update",
               QStringLiteral("INSTEAD OF UPDATE OF\n%1\n  ON %2").arg(Lines(Each(written_)), name_),
               QStringLiteral("  UPDATE %1_rows SET\n%2\n  WHERE %3 = OLD.%3;\n")
                   .arg(name_, Lines(NewValues(written_, QStringLiteral("%1 = %2"))), key_));
    AddTrigger("updateLong", QStringLiteral("INSTEAD OF UPDATE OF %1 ON %2").arg(long_names, name_),
               QStringLiteral("  INSERT INTO %1_long (%2, %3)\n  VALUES (OLD.%2, %4)\n"
                              "  ON CONFLICT (%2) DO UPDATE SET\n%5;\n")
                   .arg(name_, key_, long_names, long_values,
                        Lines(Each(long_, QStringLiteral("%1 = excluded.%1")))));
    AddTrigger("delete", QStringLiteral("INSTEAD OF DELETE ON ") + name_,
               QStringLiteral("  DELETE FROM %1_rows WHERE %2 = OLD.%2;\n").arg(name_, key_));
  }

  // A deleted row takes its long binaries, the rows that it owns and its fonts along.
  void MakeRelations() {
    const QString deletion = QStringLiteral("  DELETE FROM %1 WHERE %2 = OLD.%2;\n");
    QString body;
    if (table_.HasLongBinaries()) body = deletion.arg(name_ + "_long", key_);
    for (const Table& other : Tables()) {
      const bool owned = std::ranges::any_of(other.columns, [&](const Column& column) {
        return column.kind == Kind::kOwner && key_ == QLatin1String(column.name);
      });
      if (owned) body += deletion.arg(RowsOf(other), key_);
    }
    const Columns fonts = Picked(table_, [](Kind kind) { return kind == Kind::kFont; });
    if (!fonts.empty()) {
      body += QStringLiteral("  DELETE FROM tblFont WHERE FontID IN (\n%1);\n")
                  .arg(Lines(Each(fonts, QStringLiteral("OLD.%1"))));
    }
    if (!body.isEmpty()) AddTrigger("deleted", QStringLiteral("AFTER DELETE ON ") + RowsOf(table_), body);
  }

  std::vector<Object>& objects_;
  const Table table_;
  const QString name_, key_;
  const Columns short_, long_, written_;  // `written_` is `short_` without the key
};

}  // namespace

std::vector<Object> Objects(Age age) {
  std::vector<Object> objects;
  for (const Table& table : Tables()) Maker(OfAge(age, table), objects).Make();
  return objects;
}

std::vector<Object> OriginalObjects() {
  std::vector<Object> objects;
  Maker(Originals(), objects).Make();
  RelateOriginals(objects);
  return objects;
}

QString Script(Age age) {
  QString script = QStringLiteral("BEGIN;\n");
  for (const std::vector<Object>& objects : {Objects(age), OriginalObjects()}) {
    for (const Object& object : objects) script += object.sql + QStringLiteral(";\n");
  }
  return script + QStringLiteral("COMMIT;\n");
}

QStringList StrayRows() {
  const QString query = QStringLiteral(
      "SELECT '%1 ' || %2 || ' belongs to no row of %3' FROM %1 WHERE %4 NOT IN (SELECT %4 FROM %3) "
      "ORDER BY %2");
  QStringList queries;
  for (const Table& table : Tables()) {
    const QString key = QLatin1String(table.columns.front().name);
    const QString name = QLatin1String(table.name);
    if (table.HasLongBinaries()) queries += query.arg(name + "_long", key, RowsOf(table), key);
    for (const Column& column : table.columns) {
      if (column.kind != Kind::kOwner) continue;
      const QString owner = QLatin1String(column.name);
      queries += query.arg(RowsOf(table), key, RowsOf(OwnerOf(owner)), owner);
    }
  }
  return queries;
}

}  // namespace orv::schema
