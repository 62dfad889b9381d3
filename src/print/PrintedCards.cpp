#include "print/PrintedCards.h"

#include <algorithm>
#include <vector>

#include "base/Instance.h"
#include "base/RuntimeError.h"
#include "composition/CardPreview.h"
#include "database/ListHelpers.h"
#include "forms/Dialogs.h"
#include "output/OutputKinds.h"
#include "output/Saving.h"
#include "pictures/PicturesAhead.h"
#include "pictures/frmClip.h"
#include "print/Artwork.h"
#include "print/inner/BadPrint.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr double kMmPerDot = 25.4 / 96;
constexpr int kMostCopies = 999;

// Takes what drawing tells in a box: for print it is the cause why a card can't be drawn.
class Boxes : public DialogResponder {
 public:
  Answer OnMsgBox(const QString& prompt, Icon, const QString&, Buttons buttons) override {
    if (!told_.isEmpty()) told_ += u' ';
    told_ += QString(prompt).replace(QStringLiteral("\r\n"), QStringLiteral(" ")).simplified();
    return buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  }
  QString OnInputBox(const QString&, const QString&, const QString&) override { return {}; }
  QString OnFile(const CommonDialog&, bool) override { return {}; }
  bool OnColor(CommonDialog&) override { return false; }
  QString OnFolder(const QString&) override { return {}; }
  bool OnModal(Form&) override { return true; }
  const QString& Told() const { return told_; }

 private:
  QString told_;
};

QString KeyOf(const char* table) {
  return QLatin1String(table).mid(3) + QStringLiteral("ID");
}

// Puts a recordset back on the row on which it stood.
class PlaceKeeper {
 public:
  PlaceKeeper(Recordset& rows, const char* table) : rows_(rows), key_(KeyOf(table)), value_(Current()) {}
  ~PlaceKeeper() {
    try {
      if (value_ != 0 && value_ != Current()) FindByKey(rows_, key_.toLatin1().constData(), value_);
    } catch (const RuntimeError&) {
      // The row is gone.
    }
  }
  PlaceKeeper(const PlaceKeeper&) = delete;
  PlaceKeeper& operator=(const PlaceKeeper&) = delete;

  // Stands on a row; false where there is none with the key.
  bool GoTo(std::int32_t value) {
    if (value == 0 || rows_.IsEmpty()) return false;
    if (value != Current()) FindByKey(rows_, key_.toLatin1().constData(), value);
    return !rows_.IsEOF();
  }

 private:
  std::int32_t Current() const {
    return !rows_.IsOpen() || rows_.IsBOF() || rows_.IsEOF() ? 0 : rows_[key_].Int32Or(0);
  }
  Recordset& rows_;
  QString key_;
  std::int32_t value_ = 0;
};

// What drawing a record looks up stays where it stood, too.
struct ListKeepers {
  PlaceKeeper types{modData::rsCardType, "tblCardType"};
  PlaceKeeper backs{modData::rsCardBack, "tblCardBack"};
  PlaceKeeper character_backs{modData::rsCharacterBack, "tblCharacterBack"};
};

struct Pass {
  const char* name;
  const OutputKind& kind;
  const SheetKind& sheet;
  bool has_copies;
};

// On paper a card of the 3rd edition has its own back.
const SheetKind& SheetOfCard3rd() {
  static const SheetKind kind = [] {
    SheetKind own = kSheetOfCard3rd;
    own.back = []() -> const Surface& { return CardPreviewOf(3).picBack; };
    return own;
  }();
  return kind;
}

std::vector<Pass> AllPasses() {
  return {{"cards", kCards2nd, kSheetOfCard2nd, true},
          {"cards", kCards3rd, SheetOfCard3rd(), true},
          {"characters", kCharacters2nd, kSheetOfCharacter, false},
          {"pieces", kCharacters2nd, kSheetOfPiece, false},
          {"large", kLargeCards2nd, kSheetOfLargeCard, true}};
}

std::vector<Pass> PassesFor(const PrintOptions& options) {
  std::vector<Pass> passes;
  for (const Pass& pass : AllPasses()) {
    const bool of_edition = (pass.kind.edition == 2) == (modData::CurrentEditionID == 2);
    const Recordset& rows = pass.kind.records;
    if (of_edition && options.Wants(QLatin1String(pass.name)) && rows.IsOpen() && !rows.IsEmpty()) {
      passes.push_back(pass);
    }
  }
  return passes;
}

// The corners of an outline, both inclusive.
QRect Inside(const Corners& corners) {
  return {QPoint(corners.left, corners.top), QPoint(corners.right, corners.bottom)};
}

std::vector<QByteArray> PicturesOf(const OutputKind& kind) {
  std::vector<QByteArray> files;
  for (const char* column : kind.pictures) files.push_back(kind.records[column].Bytes());
  return files;
}

// Draws, composes and assembles the current record.
void Draw(const Pass& pass, PrintedCard& card) {
  const ReadScope reading(modData::cn);
  pass.kind.draw();
  pass.kind.compose();
  AssembleSheet(pass.sheet, true);
  card.sheet = frmClip->picDone.Picture();
}

PrintedCard CardOf(const Pass& pass, const PrintOptions& options, PicturesAhead& ahead) {
  const Recordset& record = pass.kind.records;
  PrintedCard card;
  const char* const name = pass.sheet.fills_name_from_title ? "Title" : pass.sheet.name_column;
  card.record =
      QStringLiteral("%1 %2 %3")
          .arg(QLatin1String(pass.sheet.kind_code), record["Nr"].TextOrEmpty(), record[name].TextOrEmpty());
  card.kind = &pass.kind;
  card.id = record[KeyOf(pass.kind.table)].Int32Or(0);
  card.key = QStringLiteral("%1 %2").arg(QLatin1String(pass.sheet.kind_code)).arg(card.id);
  if (pass.has_copies) card.copies = std::clamp(record["Copies"].Int32Or(1), 0, kMostCopies);
  const QRect second = Inside(pass.sheet.second_outline);
  card.front = Inside(pass.sheet.first_outline);
  if (pass.sheet.may_leave_out_back) {
    card.back = second;
  } else {
    card.front |= second;  // both halves are one piece to fold
  }
  Boxes boxes;
  const DialogResponderScope answers(boxes);
  try {
    ahead.Advance(PicturesOf(pass.kind));
    Draw(pass, card);
    card.failure = boxes.Told();
  } catch (const RuntimeError& error) {
    card.failure = error.NumberAndDescription();
  }
  card.findings = FindBadPrint(pass.sheet, card, PrintScale(options));
  if (!card.failure.isEmpty()) card.sheet = {};
  return card;
}

bool IsWanted(const Pass& pass, const PrintOptions& options) {
  return options.WantsNumber(pass.kind.records["Nr"].Int32Or(0));
}

// Goes over the wanted records, until `take` says false.
bool Walk(const Pass& pass, const PrintOptions& options, const std::function<bool()>& take) {
  Recordset& rows = pass.kind.records;
  const PlaceKeeper keeper(rows, pass.kind.table);
  for (rows.MoveFirst(); !rows.IsEOF(); rows.MoveNext()) {
    if (IsWanted(pass, options) && !take()) return false;
  }
  return true;
}

}  // namespace

double PrintScale(const PrintOptions& options) {
  if (options.width > 0) return options.width / CardLayoutOf(modData::CurrentEditionID).card.width;
  return kMmPerDot * options.scale / 100;
}

int CountPrintedCards(const PrintOptions& options) {
  int count = 0;
  for (const Pass& pass : PassesFor(options)) {
    Walk(pass, options, [&count] { return ++count > 0; });
  }
  return count;
}

// How records are drawn for paper.
struct PaperScope {
  PaperScope() { DrawArtworkAnew(); }
  KeepDrawings keep;
  OffScreen unseen;
  ListKeepers lists;
  PicturesAhead ahead;
};

void ForEachPrintedCard(const PrintOptions& options, const std::function<bool(const PrintedCard&)>& take) {
  PaperScope paper;
  for (const Pass& pass : PassesFor(options)) {
    if (!Walk(pass, options, [&] { return take(CardOf(pass, options, paper.ahead)); })) return;
  }
}

std::vector<PrintedCard> PrintedCardsOf(const OutputKind& kind, std::int32_t key) {
  std::vector<PrintedCard> cards;
  if (!kind.records.IsOpen()) return cards;
  PaperScope paper;
  PlaceKeeper place(kind.records, kind.table);
  if (!place.GoTo(key)) return cards;
  for (const Pass& pass : AllPasses()) {
    if (&pass.kind == &kind) cards.push_back(CardOf(pass, {}, paper.ahead));
  }
  return cards;
}

}  // namespace orv
