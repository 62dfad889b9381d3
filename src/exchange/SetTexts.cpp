#include "exchange/SetTexts.h"

#include <QHash>
#include <QMap>
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
      : connection_(connection), types_(TypesOf(connection, set_id)) {
    for (Recordset rows = CardsOf(connection, set_id); !rows.IsEOF(); rows.MoveNext()) {
      Card card{rows["CardID"].Int32(), rows[kTitle].TextOrEmpty(), rows["CardTypeID"].Int32Or(0), {}};
      for (const TextColumn& column : kColumns) card.texts.append(rows[column.column].TextOrEmpty());
      alike_[NameOf(rows["Nr"].TextOrEmpty(), card.title)].cards.push_back(card);
    }
  }

  int Read(const std::vector<CsvRecord>& records) {
    if (records.empty()) Refuse(1, QStringLiteral("there is no table."));
    ReadHeader(records.front());
    int changed = 0;
    for (std::size_t i = 1; i < records.size(); ++i) changed += ReadCard(records[i]);
    for (const Alike& alike : alike_) {
      if (alike.seen > 0 && alike.seen < alike.cards.size())
        Refuse(alike.line, QStringLiteral("the set has %1 such cards, so there must be a line for each.")
                               .arg(alike.cards.size()));
    }
    return changed;
  }

 private:
  struct Card {
    std::int32_t key;
    QString title;
    std::int32_t type;
    QStringList texts;  // of kColumns
  };

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
    const Card& card = CardOf(record);
    QStringList assignments;
    std::vector<Value> values;
    const auto change = [&](const char* column, const Value& value) {
      values.push_back(value);
      assignments.append(QStringLiteral("%1 = ?%2").arg(column).arg(values.size()));
    };
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      const TextColumn& column = kColumns[i];
      if (!places_.contains(column.header)) continue;
      const QString text = WithLineEnds(record.fields[places_[column.header]]);
      if (text == WithLineEnds(card.texts[static_cast<qsizetype>(i)])) continue;
      change(column.column,
             QLatin1String(column.column) == u"Copies" ? Copies(record.line, text) : Value(text));
    }
    const QString title = places_.contains(kNewTitle) ? record.fields[places_[kNewTitle]] : QString();
    if (!title.isEmpty() && title != card.title) change(kTitle, title);
    if (places_.contains(kType)) {
      const std::int32_t type = TypeOfText(card, record.line, record.fields[places_[kType]]);
      if (type != card.type) change("CardTypeID", type);
    }
    if (values.empty()) return false;
    values.push_back(card.key);
    connection_.Execute(QStringLiteral("UPDATE tblCard SET %1 WHERE CardID = ?%2")
                            .arg(assignments.join(QStringLiteral(", ")))
                            .arg(values.size()),
                        values);
    return true;
  }

  // The card of the line. Of cards with one number and title each takes the next.
  const Card& CardOf(const CsvRecord& record) {
    const QString nr = record.fields[places_[kNr]].trimmed();
    const QString title = record.fields[places_[kTitle]];
    const auto alike = alike_.find(NameOf(nr, title));
    if (alike == alike_.end())
      Refuse(record.line, QStringLiteral("the set has no card %1 with the title \"%2\".").arg(nr, title));
    if (alike->seen == alike->cards.size())
      Refuse(record.line, QStringLiteral("card %1 stood in a line before.").arg(nr));
    alike->line = record.line;
    return alike->cards[alike->seen++];
  }

  static std::pair<QString, QString> NameOf(const QString& nr, const QString& title) {
    return {nr, WithLineEnds(title)};
  }

  static Value Copies(int line, const QString& text) {
    bool is_number = false;
    const int copies = text.trimmed().toInt(&is_number);
    if (!is_number || copies < 0 || copies > INT16_MAX)
      Refuse(line, QStringLiteral("\"%1\" is no number of copies.").arg(text));
    return copies;
  }

  // The card's own type where that reads so, since two may read alike.
  std::int32_t TypeOfText(const Card& card, int line, const QString& text) const {
    if (types_.value(card.type) == text) return card.type;
    std::int32_t found = 0;
    for (auto type = types_.begin(); type != types_.end(); ++type) {
      if (type.value() == text && (found == 0 || type.key() < found)) found = type.key();
    }
    if (found == 0) Refuse(line, QStringLiteral("the set is offered no type \"%1\".").arg(text));
    return found;
  }

  const Connection& connection_;
  const QHash<std::int32_t, QString> types_;
  QHash<QString, qsizetype> places_;  // of the columns
  qsizetype width_ = 0;
  // The cards of one number and title, and the lines that were read for them.
  struct Alike {
    std::vector<Card> cards;
    std::size_t seen = 0;
    int line = 0;  // the last of these
  };
  QMap<std::pair<QString, QString>, Alike> alike_;
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
