#include "print/PrintOptions.h"

#include <algorithm>
#include <functional>

namespace orv {
namespace {

using Take = std::function<bool(PrintOptions&, const QString&)>;

Take Length(double PrintOptions::*field, double least, double most) {
  return [=](PrintOptions& options, const QString& text) {
    bool is_number = false;
    const double value = QString(text).replace(u',', u'.').toDouble(&is_number);
    if (!is_number || !(value >= least && value <= most)) return false;
    options.*field = value;
    return true;
  };
}

// One of some words, which stand in the order of the enumeration.
template <class Enum>
Take OneOf(Enum PrintOptions::*field, const QStringList& words) {
  return [=](PrintOptions& options, const QString& text) {
    const auto index = words.indexOf(text.trimmed().toLower());
    if (index < 0) return false;
    options.*field = static_cast<Enum>(index);
    return true;
  };
}

bool TakeKinds(PrintOptions& options, const QString& text) {
  QStringList kinds;
  for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) {
    const QString kind = part.trimmed().toLower();
    if (std::ranges::find(kPrintKinds, kind, [](const char* name) { return QLatin1String(name); }) ==
        std::end(kPrintKinds)) {
      return false;
    }
    kinds.append(kind);
  }
  options.kinds = kinds;
  return true;
}

bool TakeNumbers(PrintOptions& options, const QString& text) {
  std::vector<std::pair<int, int>> numbers;
  for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) {
    const QStringList ends = part.split(u'-');
    bool first_ok = false, last_ok = false;
    const int first = ends.first().trimmed().toInt(&first_ok);
    const int last = ends.last().trimmed().toInt(&last_ok);
    if (ends.size() > 2 || !first_ok || !last_ok || first < 1 || last < first) return false;
    numbers.emplace_back(first, last);
  }
  options.numbers = numbers;
  return true;
}

bool TakeRuler(PrintOptions& options, const QString& text) {
  if (text != u"yes" && text != u"no") return false;
  options.ruler = text == u"yes";
  return true;
}

struct Row {
  PrintOption option;
  Take take;
};

const std::vector<Row>& Rows() {
  static const std::vector<Row> rows = {
      {{"paper", "PAPER", "a4, letter, a3, or card: a page for each card with its bleed."},
       OneOf(&PrintOptions::paper, {"a4", "letter", "a3", "card"})},
      {{"margin", "MM", "The margin of the paper, 0 to 50; 10 unless told."},
       Length(&PrintOptions::margin, 0, 50)},
      {{"gap", "MM", "Between the cards, 0 to 50."}, Length(&PrintOptions::gap, 0, 50)},
      {{"bleed", "MM", "So far a card's edge goes on beyond the cut, 0 to 5."},
       Length(&PrintOptions::bleed, 0, 5)},
      {{"scale", "PERCENT", "Of the true size, 10 to 400."}, Length(&PrintOptions::scale, 10, 400)},
      {{"width", "MM", "The width of an upright card instead of a scale, 10 to 200; 0 for none."},
       Length(&PrintOptions::width, 0, 200)},
      {{"backs", "WHERE",
        "none; long or short: on sheets of their own, for paper that is turned about this "
        "edge; fold: beside the front."},
       OneOf(&PrintOptions::backs, {"none", "long", "short", "fold"})},
      {{"back-right", "MM", "Shifts the backs to the right, -20 to 20."},
       Length(&PrintOptions::back_right, -20, 20)},
      {{"back-down", "MM", "Shifts the backs down, -20 to 20."}, Length(&PrintOptions::back_down, -20, 20)},
      {{"cuts", "LINES", "none, marks in the margins, or hairlines."},
       OneOf(&PrintOptions::cuts, {"none", "marks", "hairlines"})},
      {{"ruler", "YES/NO", "A ruler of 100 mm and the set's name at the lower edge."}, TakeRuler},
      {{"kinds", "KINDS", "Some of cards,characters,pieces,large; all unless told."}, TakeKinds},
      {{"numbers", "NUMBERS", "Of the records, such as 1-5,9; all unless told."}, TakeNumbers},
  };
  return rows;
}

}  // namespace

bool PrintOptions::WantsNumber(int number) const {
  return numbers.empty() || std::ranges::any_of(numbers, [number](const auto& range) {
           return range.first <= number && number <= range.second;
         });
}

std::span<const PrintOption> AllPrintOptions() {
  static const std::vector<PrintOption> options = [] {
    std::vector<PrintOption> all;
    for (const Row& row : Rows()) all.push_back(row.option);
    return all;
  }();
  return options;
}

QString SetPrintOption(PrintOptions& options, const QString& name, const QString& text) {
  for (const Row& row : Rows()) {
    if (name != QLatin1String(row.option.name)) continue;
    if (row.take(options, text)) return {};
    return QStringLiteral("\"%1\" is no value for %2. %3").arg(text, name, QLatin1String(row.option.help));
  }
  return QStringLiteral("There is no option %1.").arg(name);
}

}  // namespace orv
