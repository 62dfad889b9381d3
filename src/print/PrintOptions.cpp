#include "print/PrintOptions.h"

#include <algorithm>
#include <functional>

namespace orv {
namespace {

using Take = std::function<bool(PrintOptions&, const QString&)>;

Take Length(double PrintOptions::* field, double least, double most) {
  return [=](PrintOptions& options, const QString& text) {
    bool is_number = false;
    const double value = QString(text).replace(u',', u'.').toDouble(&is_number);
    if (!is_number || !(value >= least && value <= most)) return false;
    options.*field = value;
    return true;
  };
}

// One of the option's choices, which stand in the order of the enumeration.
template <class Enum>
Take OneOf(Enum PrintOptions::* field, const QStringList& choices) {
  return [=](PrintOptions& options, const QString& text) {
    for (int index = 0; index < choices.size(); ++index) {
      if (choices[index].compare(text.trimmed(), Qt::CaseInsensitive) != 0) continue;
      options.*field = static_cast<Enum>(index);
      return true;
    }
    return false;
  };
}

bool TakeKinds(PrintOptions& options, const QString& text) {
  QStringList kinds;
  for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) {
    const QString kind = part.trimmed().toLower();
    if (std::ranges::find(kPrintKinds, kind, [](const PrintKind& each) {
          return QLatin1String(each.name);
        }) == std::end(kPrintKinds)) {
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

struct Row {
  PrintOption option;
  const char* unless_told;
  Take take;
};

const QStringList kPapers = {"A4", "Letter", "A3", "Card"};
const QStringList kBacks = {"None", "Long", "Short", "Fold"};
const QStringList kCuts = {"None", "Marks", "Hairlines"};
const QStringList kNoOrYes = {"No", "Yes"};

const std::vector<Row>& Rows() {
  using O = PrintOptions;
  static const std::vector<Row> rows = {
      {{"paper", "&Paper:", "PAPER", "A4, Letter, A3, or Card: a page for each card with its bleed.",
        kPapers},
       "A4",
       OneOf(&O::paper, kPapers)},
      {{"margin", "&Margin (mm):", "MM", "The margin of the paper, 0 to 50."},
       "10",
       Length(&O::margin, 0, 50)},
      {{"gap", "&Gap (mm):", "MM", "Between the cards, 0 to 50."}, "0", Length(&O::gap, 0, 50)},
      {{"bleed", "&Bleed (mm):", "MM", "So far a card's edge goes on beyond the cut, 0 to 5."},
       "0",
       Length(&O::bleed, 0, 5)},
      {{"scale", "&Scale (%):", "PERCENT", "Of the true size, 10 to 400."},
       "100",
       Length(&O::scale, 10, 400)},
      {{"width", "&Width of a card (mm):", "MM",
        "The width of an upright card instead of a scale, up to 200; 0 for none."},
       "0",
       Length(&O::width, 0, 200)},
      {{"backs", "Bac&ks:", "WHERE",
        "None; Long or Short: on sheets of their own, for paper that is turned about this edge; Fold: beside "
        "the front.",
        kBacks},
       "Long",
       OneOf(&O::backs, kBacks)},
      {{"back-right", "Backs to the &right (mm):", "MM", "Shifts the backs to the right, -20 to 20."},
       "0",
       Length(&O::back_right, -20, 20)},
      {{"back-down", "Backs d&own (mm):", "MM", "Shifts the backs down, -20 to 20."},
       "0",
       Length(&O::back_down, -20, 20)},
      {{"cuts", "&Cut lines:", "LINES", "None, Marks in the margins, or Hairlines.", kCuts},
       "Marks",
       OneOf(&O::cuts, kCuts)},
      {{"ruler", "R&uler:", "YES/NO", "A ruler of 100 mm and the set's name at the lower edge.", kNoOrYes},
       "Yes",
       OneOf(&O::ruler, kNoOrYes)},
      {{"kinds", "K&inds:", "KINDS", "Some of cards,characters,pieces,large; empty for all.", {}, true},
       "",
       TakeKinds},
      {{"numbers", "&Numbers:", "NUMBERS", "Of the records, such as 1-5,9; empty for all."}, "", TakeNumbers},
      {{"changed", "C&hanged only:", "", "Only cards that look other than on the last sheet that you wrote.",
        kNoOrYes},
       "No",
       OneOf(&O::changed, kNoOrYes)},
  };
  return rows;
}

const Row* RowOf(const QString& name) {
  const auto row = std::ranges::find_if(
      Rows(), [&name](const Row& each) { return name == QLatin1String(each.option.name); });
  return row == Rows().end() ? nullptr : &*row;
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

QString DefaultOf(const PrintOption& option) {
  return QLatin1String(RowOf(QLatin1String(option.name))->unless_told);
}

QString SetPrintOption(PrintOptions& options, const QString& name, const QString& text) {
  const Row* const row = RowOf(name);
  if (row == nullptr) return QStringLiteral("There is no option %1.").arg(name);
  if (row->take(options, text)) return {};
  return QStringLiteral("\"%1\" is no value for %2. %3").arg(text, name, QLatin1String(row->option.help));
}

}  // namespace orv
