#include "print/PrintSheets.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "forms/PageWriter.h"
#include "print/PrintedCards.h"
#include "print/inner/PrintedBefore.h"
#include "print/inner/SheetLayout.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kErrInvalidCall = 5;
constexpr double kMarkThickness = 0.1;
constexpr Colour kHairlineColour = Rgb(0x80, 0x80, 0x80);
// The ruler stands above the strip that most printers leave white.
constexpr double kRulerFoot = 5;    // of its line, from the lower edge
constexpr double kRulerHeight = 3;  // of its longest tick
constexpr double kRulerLength = 100;
constexpr double kRulerLeft = 10;
constexpr double kFooterText = 3;  // height of a line

// Ends the writing of a file that is not to be.
struct NoFile {};

// Fills sheets with cards, of one size a sheet, and writes each as soon as it is full.
class SheetFiller {
 public:
  SheetFiller(const PrintOptions& options, PageWriter& pages, PrintOutcome& outcome)
      : options_(options), pages_(pages), outcome_(outcome), scale_(PrintScale(options)) {}

  void Add(const PrintedCard& card) {
    if (!card.failure.isEmpty()) outcome_.not_drawn.append(card.record + QStringLiteral(": ") + card.failure);
    const QSize dots = PlaceOf(card).size();
    if (dots != dots_) {
      EndSheet();
      dots_ = dots;
      layout_ = LayOut(options_, dots, scale_);
    }
    for (int copy = 0; copy < card.copies; ++copy) {
      cards_.push_back(card);
      ++outcome_.cards;
      if (static_cast<int>(cards_.size()) == layout_.Count()) EndSheet();
    }
  }

  void EndSheet() {
    if (cards_.empty()) return;
    ++outcome_.sheets;
    WriteFronts();
    const bool has_backs =
        std::ranges::any_of(cards_, [](const PrintedCard& card) { return !card.back.isNull(); });
    if (OnOwnSheets() && has_backs) WriteBacks();
    cards_.clear();
  }

 private:
  bool OnOwnSheets() const { return options_.backs == Backs::Long || options_.backs == Backs::Short; }

  // What one place of the sheet takes: the front, with the back beside it where they are folded.
  QRect PlaceOf(const PrintedCard& card) const {
    return options_.backs == Backs::Fold ? card.front | card.back : card.front;
  }

  void WriteFronts() {
    pages_.NewPage(layout_.page_width, layout_.page_height);
    for (int i = 0; i < static_cast<int>(cards_.size()); ++i) {
      DrawCard(cards_[i], PlaceOf(cards_[i]), layout_.Front(i), false);
    }
    if (options_.paper == Paper::Card) return TellCut();
    DrawCuts();
    if (options_.ruler) DrawRuler();
  }

  void WriteBacks() {
    pages_.NewPage(layout_.page_width, layout_.page_height);
    for (int i = 0; i < static_cast<int>(cards_.size()); ++i) {
      if (!cards_[i].back.isNull() && cards_[i].failure.isEmpty()) {
        DrawCard(cards_[i], cards_[i].back, layout_.Back(i), !layout_.mirrored_across);
      }
    }
    if (options_.paper == Paper::Card) TellCut();
  }

  // The same for both sides: a shift makes up for the printer's.
  void TellCut() {
    const SheetLayout::Point at = layout_.Front(0);
    pages_.Cut({at.x, at.y, layout_.card_width, layout_.card_height, options_.bleed});
  }

  void DrawCard(const PrintedCard& card, const QRect& part, SheetLayout::Point at, bool turned) {
    if (card.failure.isEmpty()) {
      pages_.Draw(card.sheet, {at.x, at.y, scale_, part, options_.bleed, turned});
      return;
    }
    const double right = at.x + layout_.card_width;
    const double bottom = at.y + layout_.card_height;
    pages_.Line(at.x, at.y, right, bottom, 2 * kMarkThickness);
    pages_.Line(right, at.y, at.x, bottom, 2 * kMarkThickness);
  }

  void DrawCuts() {
    if (options_.cuts == Cuts::Marks) {
      for (const SheetLayout::Line& mark : layout_.CutMarks(options_.bleed, Foot())) {
        pages_.Line(mark.from.x, mark.from.y, mark.to.x, mark.to.y, kMarkThickness);
      }
    } else if (options_.cuts == Cuts::Hairlines) {
      for (int i = 0; i < static_cast<int>(cards_.size()); ++i) DrawHairlines(layout_.Front(i));
    }
  }

  void DrawHairlines(SheetLayout::Point at) {
    const double right = at.x + layout_.card_width;
    const double bottom = at.y + layout_.card_height;
    const auto line = [&](double x1, double y1, double x2, double y2) {
      pages_.Line(x1, y1, x2, y2, kMarkThickness, kHairlineColour);
    };
    line(at.x, at.y, right, at.y);
    line(at.x, bottom, right, bottom);
    line(at.x, at.y, at.x, bottom);
    line(right, at.y, right, bottom);
  }

  double Foot() const { return options_.ruler ? kRulerFoot + kRulerHeight + 1 : 0; }

  void DrawRuler() {
    const double y = layout_.page_height - kRulerFoot;
    pages_.Line(kRulerLeft, y, kRulerLeft + kRulerLength, y, kMarkThickness);
    for (int mm = 0; mm <= kRulerLength; ++mm) {
      const double height = mm % 10 == 0 ? kRulerHeight : mm % 5 == 0 ? 2 : 1;
      pages_.Line(kRulerLeft + mm, y, kRulerLeft + mm, y - height, kMarkThickness);
    }
    pages_.Text(
        kRulerLeft + kRulerLength + 2, y - kFooterText, kFooterText,
        QStringLiteral("100 mm   %1   %2").arg(modData::rsSet["SetName"].TextOrEmpty()).arg(outcome_.sheets));
  }

  const PrintOptions& options_;
  PageWriter& pages_;
  PrintOutcome& outcome_;
  const double scale_;
  SheetLayout layout_{};
  QSize dots_;
  std::vector<PrintedCard> cards_;  // of the sheet that is being filled
};

void DrawGrid(PageWriter& pages, const SheetLayout& layout, double right, double down, Colour colour) {
  constexpr double kStep = 10;
  constexpr double kArm = 50;  // of the scale at the middle
  const double middle_x = layout.page_width / 2 + right;
  const double middle_y = layout.page_height / 2 + down;
  const int across = static_cast<int>(layout.page_width / 2 / kStep) - 1;
  const int along = static_cast<int>(layout.page_height / 2 / kStep) - 1;
  for (int i = -across; i <= across; ++i) {
    const double x = middle_x + i * kStep;
    pages.Line(x, middle_y - along * kStep, x, middle_y + along * kStep, i == 0 ? 0.2 : 0.1, colour);
    pages.Text(x + 0.5, middle_y + 0.5, kFooterText, QString::number(i * kStep));
  }
  for (int i = -along; i <= along; ++i) {
    const double y = middle_y + i * kStep;
    pages.Line(middle_x - across * kStep, y, middle_x + across * kStep, y, i == 0 ? 0.2 : 0.1, colour);
    if (i != 0) pages.Text(middle_x + 0.5, y + 0.5, kFooterText, QString::number(i * kStep));
  }
  for (double mm = -kArm; mm <= kArm; ++mm) {
    pages.Line(middle_x + mm, middle_y - 1, middle_x + mm, middle_y + 1, 0.1, colour);
    pages.Line(middle_x - 1, middle_y + mm, middle_x + 1, middle_y + mm, 0.1, colour);
  }
}

void Remember(const PrintedBefore& printed, PrintOutcome& outcome) {
  try {
    printed.Keep();
  } catch (const RuntimeError& error) {
    outcome.forgotten = error.NumberAndDescription();
  }
}

}  // namespace

PrintOutcome PrintSheets(const PrintOptions& options, const QString& path, const PrintProgress& progress) {
  const int all = CountPrintedCards(options);
  if (all == 0) throw RuntimeError(kErrInvalidCall, QStringLiteral("There is nothing to print."));
  PrintOutcome outcome;
  PrintedBefore printed;
  const auto write = [&](const QString& temporary) {
    PageWriter pages(temporary, modData::rsSet["SetName"].TextOrEmpty());
    SheetFiller filler(options, pages, outcome);
    int done = 0;
    ForEachPrintedCard(options, [&](const PrintedCard& card) {
      if (options.changed && printed.Knows(card)) {
        ++outcome.unchanged;
      } else {
        filler.Add(card);
        if (card.copies > 0) printed.Take(card);
      }
      outcome.stopped = !progress(++done, all);
      return !outcome.stopped;
    });
    if (outcome.stopped) throw NoFile();
    filler.EndSheet();
    if (outcome.sheets == 0 && outcome.unchanged > 0) throw NoFile();
    if (outcome.sheets == 0)
      throw RuntimeError(kErrInvalidCall, QStringLiteral("No card has a copy to print."));
    pages.Finish();
  };
  try {
    ReplaceFile(path, write);
  } catch (const NoFile&) {
    return outcome;
  }
  Remember(printed, outcome);
  return outcome;
}

std::vector<BadCard> CheckSheets(const PrintOptions& options, const PrintProgress& progress) {
  const int all = CountPrintedCards(options);
  int done = 0;
  std::vector<BadCard> bad;
  const PrintedBefore printed;
  ForEachPrintedCard(options, [&](const PrintedCard& card) {
    if (options.changed && printed.Knows(card)) return progress(++done, all);
    const auto add = [&](const QString& text, const char* column) {
      bad.push_back({card.record + QStringLiteral(": ") + text, card.kind, card.id, column});
    };
    if (!card.failure.isEmpty()) add(QStringLiteral("can't be drawn: ") + card.failure, nullptr);
    for (const Finding& finding : card.findings) add(finding.text, finding.column);
    return progress(++done, all);
  });
  return bad;
}

void PrintTestSheet(const PrintOptions& options, const QString& path) {
  const SheetLayout layout = LayOut(options, QSize(1, 1), 1);
  ReplaceFile(path, [&](const QString& temporary) {
    PageWriter pages(temporary, QStringLiteral("Test sheet"));
    pages.NewPage(layout.page_width, layout.page_height);
    DrawGrid(pages, layout, 0, 0, Rgb(0xC0, 0, 0));
    pages.NewPage(layout.page_width, layout.page_height);
    DrawGrid(pages, layout, options.back_right, options.back_down, Rgb(0, 0, 0xC0));
    pages.Finish();
  });
}

}  // namespace orv
