#include "exchange/SetTexts.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <vector>

#include "base/RuntimeError.h"
#include "database/ListHelpers.h"
#include "exchange/inner/Csv.h"
#include "records/Recordset.h"

namespace orv {
namespace {

constexpr const char* kNr = "Nr";
constexpr const char* kTitle = "Title";
constexpr const char* kNewTitle = "New title";
constexpr const char* kType = "Type";

// The columns of the table that are texts or numbers of the card itself.
struct TextColumn {
  const char* header;
  const char* column;
};
constexpr std::array<TextColumn, 5> kColumns{{
    {"Number", "Number"},
    {"Bold", "BoldText"},
    {"Information", "Information"},
    {"Copies", "Copies"},
    {"Artist", "Artist"},
}};

QStringList Headers() {
  QStringList headers{kNr, kTitle, kType};
  for (const TextColumn& column : kColumns) headers.append(column.header);
  return headers << kNewTitle;
}

[[noreturn]] void Refuse(int line, const QString& cause) {
  throw RuntimeError(kErrDatabase, QStringLiteral("Line %1: %2").arg(line).arg(cause));
}

Recordset CardsOf(const Connection& connection, std::int32_t set_id) {
  QStringList columns{"CardID", "Nr", "Title", "CardTypeID"};
  for (const TextColumn& column : kColumns) columns.append(column.column);
  return Recordset::OpenSnapshot(connection,
                                 QStringLiteral("SELECT %1 FROM tblCard WHERE SetID = %2 ORDER BY Nr")
                                     .arg(columns.join(QStringLiteral(", ")))
                                     .arg(set_id));
}

// The types that a set is offered, by key.
QHash<std::int32_t, QString> TypesOf(const Connection& connection, std::int32_t set_id) {
  QHash<std::int32_t, QString> types;
  for (Recordset rows = Recordset::OpenSnapshot(
           connection,
           QStringLiteral("SELECT t.* FROM tblCardType AS t, tblSet AS s WHERE s.SetID = %1 AND t.LanguageID "
                          "= s.LanguageID AND t.EditionID = s.EditionID AND (t.UsedInSet = 0 OR "
                          "t.UsedInSet = s.SetID)")
               .arg(set_id));
       !rows.IsEOF(); rows.MoveNext())
    types[rows["CardTypeID"].Int32()] = TypeText(rows);
  return types;
}

// As the program's text boxes end their lines; spreadsheets change it.
QString WithLineEnds(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\n', QStringLiteral("\r\n"));
}

class TextsReader {
 public:
  TextsReader(const Connection& connection, std::int32_t set_id)
      : connection_(connection), cards_(CardsOf(connection, set_id)), types_(TypesOf(connection, set_id)) {}

  int Read(const std::vector<CsvRecord>& records) {
    if (records.empty()) Refuse(1, QStringLiteral("there is no table."));
    ReadHeader(records.front());
    int changed = 0;
    for (std::size_t i = 1; i < records.size(); ++i) changed += ReadCard(records[i]);
    return changed;
  }

 private:
  void ReadHeader(const CsvRecord& record) {
    const QStringList headers = Headers();
    for (qsizetype i = 0; i < record.fields.size(); ++i) {
      const QString name = record.fields[i].trimmed();
      const auto known = std::ranges::find_if(
          headers, [&](const QString& header) { return header.compare(name, Qt::CaseInsensitive) == 0; });
      if (known == headers.end())
        Refuse(record.line, QStringLiteral("\"%1\" is no column of such a table.").arg(name));
      if (places_.contains(*known)) Refuse(record.line, QStringLiteral("%1 stands there twice.").arg(name));
      places_[*known] = i;
    }
    for (const char* needed : {kNr, kTitle}) {
      if (!places_.contains(needed))
        Refuse(record.line, QStringLiteral("there is no column %1.").arg(needed));
    }
    width_ = record.fields.size();
  }

  bool ReadCard(const CsvRecord& record) {
    if (record.fields.size() != width_)
      Refuse(record.line,
             QStringLiteral("%1 fields where there should be %2.").arg(record.fields.size()).arg(width_));
    GoTo(record);
    QStringList assignments;
    std::vector<Value> values;
    const auto change = [&](const char* column, const Value& value) {
      values.push_back(value);
      assignments.append(QStringLiteral("%1 = ?%2").arg(column).arg(values.size()));
    };
    for (const TextColumn& column : kColumns) {
      if (!places_.contains(column.header)) continue;
      const QString text = WithLineEnds(record.fields[places_[column.header]]);
      if (text == WithLineEnds(cards_[column.column].TextOrEmpty())) continue;
      change(column.column,
             QLatin1String(column.column) == u"Copies" ? Copies(record.line, text) : Value(text));
    }
    const QString title = places_.contains(kNewTitle) ? record.fields[places_[kNewTitle]] : QString();
    if (!title.isEmpty() && title != cards_[kTitle].TextOrEmpty()) change(kTitle, title);
    if (places_.contains(kType)) {
      const std::int32_t type = TypeOfText(record.line, record.fields[places_[kType]]);
      if (type != cards_["CardTypeID"].Int32Or(0)) change("CardTypeID", type);
    }
    if (values.empty()) return false;
    values.push_back(cards_["CardID"].Get());
    connection_.Execute(QStringLiteral("UPDATE tblCard SET %1 WHERE CardID = ?%2")
                            .arg(assignments.join(QStringLiteral(", ")))
                            .arg(values.size()),
                        values);
    return true;
  }

  // The card of the line.
  void GoTo(const CsvRecord& record) {
    const QString nr = record.fields[places_[kNr]].trimmed();
    const QString title = record.fields[places_[kTitle]];
    const auto is_it = [&] {
      return cards_["Nr"].TextOrEmpty() == nr &&
             WithLineEnds(cards_[kTitle].TextOrEmpty()) == WithLineEnds(title);
    };
    if (!cards_.IsEmpty()) cards_.MoveFirst();
    while (!cards_.IsEOF() && !is_it()) cards_.MoveNext();
    if (cards_.IsEOF())
      Refuse(record.line, QStringLiteral("the set has no card %1 with the title \"%2\".").arg(nr, title));
    const std::int32_t key = cards_["CardID"].Int32();
    if (seen_.contains(key)) Refuse(record.line, QStringLiteral("card %1 stood in a line before.").arg(nr));
    seen_.insert(key);
  }

  static Value Copies(int line, const QString& text) {
    bool is_number = false;
    const int copies = text.trimmed().toInt(&is_number);
    if (!is_number || copies < 0 || copies > INT16_MAX)
      Refuse(line, QStringLiteral("\"%1\" is no number of copies.").arg(text));
    return copies;
  }

  // The card's own type where that reads so, since two may read alike.
  std::int32_t TypeOfText(int line, const QString& text) const {
    const std::int32_t own = cards_["CardTypeID"].Int32Or(0);
    if (types_.value(own) == text) return own;
    std::int32_t found = 0;
    for (auto type = types_.begin(); type != types_.end(); ++type) {
      if (type.value() == text && (found == 0 || type.key() < found)) found = type.key();
    }
    if (found == 0) Refuse(line, QStringLiteral("the set is offered no type \"%1\".").arg(text));
    return found;
  }

  const Connection& connection_;
  Recordset cards_;
  const QHash<std::int32_t, QString> types_;
  QHash<QString, qsizetype> places_;  // of the columns
  qsizetype width_ = 0;
  QSet<std::int32_t> seen_;
};

}  // namespace

QByteArray TextsOfSet(const Connection& connection, std::int32_t set_id) {
  const QHash<std::int32_t, QString> types = TypesOf(connection, set_id);
  QByteArray table = CsvLine(Headers());
  for (Recordset cards = CardsOf(connection, set_id); !cards.IsEOF(); cards.MoveNext()) {
    QStringList fields{cards["Nr"].TextOrEmpty(), cards[kTitle].TextOrEmpty(),
                       types.value(cards["CardTypeID"].Int32Or(0))};
    for (const TextColumn& column : kColumns) fields.append(cards[column.column].TextOrEmpty());
    table += CsvLine(fields << QString());
  }
  return table;
}

int BringInTexts(const Connection& connection, std::int32_t set_id, const QByteArray& table) {
  const std::vector<CsvRecord> records = ReadCsv(table);
  Transaction transaction(connection);
  const int changed = TextsReader(connection, set_id).Read(records);
  transaction.Commit();
  return changed;
}

}  // namespace orv
