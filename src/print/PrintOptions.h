#pragma once

#include <QString>
#include <QStringList>
#include <span>
#include <utility>
#include <vector>

namespace orv {

enum class Paper { A4, Letter, A3, Card };  // Card: a page is a card with its bleed
enum class Backs { None, Long, Short, Fold };
enum class Cuts { None, Marks, Hairlines };

// How a set goes to paper. Lengths in millimetres.
struct PrintOptions {
  Paper paper = Paper::A4;
  double margin = 10;
  double gap = 0;
  double bleed = 0;
  double scale = 100;  // per cent of the true size
  double width = 0;    // of an upright card, instead of a scale; 0 for none
  Backs backs = Backs::Long;
  double back_right = 0, back_down = 0;  // by which a back is shifted against its front
  Cuts cuts = Cuts::Marks;
  bool ruler = true;
  QStringList kinds;                         // of kPrintKinds; none stands for all
  std::vector<std::pair<int, int>> numbers;  // from, to; none stands for all
  bool changed = false;                      // only what looks other than on the user's last sheet of it

  bool Wants(const QString& kind) const { return kinds.isEmpty() || kinds.contains(kind); }
  bool WantsNumber(int number) const;
};

struct PrintKind {
  const char* name;
  const char* words;
};
inline constexpr PrintKind kPrintKinds[] = {
    {"cards", "Cards"}, {"characters", "Characters"}, {"pieces", "Pieces"}, {"large", "Large cards"}};

// An option as a user writes it: on a command line, and in the settings.
struct PrintOption {
  const char* name;
  const char* label;
  const char* placeholder;  // empty for one that is set by being named, to Yes
  const char* help;
  QStringList choices = {};        // none for free text
  bool takes_print_kinds = false;  // any of kPrintKinds
};
std::span<const PrintOption> AllPrintOptions();

// An option as SetPrintOption takes it, unless told otherwise.
QString DefaultOf(const PrintOption& option);

// Sets an option by its name and text. What is wrong with the text, or the empty text.
QString SetPrintOption(PrintOptions& options, const QString& name, const QString& text);

}  // namespace orv
