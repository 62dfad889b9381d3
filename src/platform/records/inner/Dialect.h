#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "base/Value.h"

namespace orv {

// The program's query texts name texts in double quotes, join texts with & (Null counting as empty) and
// expect text to sort and compare without regard to case. This turns such a text into what SQLite runs.
// It works on tokens and leaves alone what it does not know.
struct Query {
  struct Item {
    QString expression;
    QString alias;     // empty without AS
    bool all = false;  // * or table.*
  };

  QString sql;  // the whole statement in SQLite's dialect
  // Its parts, for an editable recordset that reads keys and single rows.
  QString columns;          // between SELECT and FROM
  QString source;           // from FROM up to ORDER BY, exclusive
  QString order;            // the terms behind ORDER BY with their collation, empty if there is none
  QString tail;             // from LIMIT on
  QString from;             // the source up to WHERE, exclusive
  QString where;            // the condition behind WHERE, empty if there is none
  std::vector<Item> items;  // the columns one by one
  bool joined = false;      // more than one table
  bool plain = true;        // each row is one row of the source: not grouped, distinct, limited or a union
};

// RuntimeError 3000 for a text that is no SELECT or has an unclosed literal or bracket.
Query Translate(const QString& text);

// A criterion of Find or Filter such as "Nr = 5", in SQLite's dialect.
QString TranslateCriterion(const QString& text);

// A criterion with its numbers and texts as the parameters @v1, @v2 ..., so that one statement serves all
// values.
struct Criterion {
  QString sql;
  std::vector<Value> values;
};
// `column` gives what stands for a column's name; an empty text leaves the name as it is.
Criterion TranslateCriterion(const QString& text, const std::function<QString(const QString& name)>& column);

}  // namespace orv
