#include "shell/inner/CloseLook.h"

#include <algorithm>
#include <cmath>

#include "editors/RecordEditor.h"
#include "forms/ControlHelpers.h"
#include "forms/Layout.h"

namespace orv {
namespace {

constexpr double kStep = 1.25;

}  // namespace

struct CloseLookForm::Key {
  const char* keys;
  void (CloseLookForm::*press)();
};

const CloseLookForm::Key CloseLookForm::kKeys[] = {
    {"Ctrl++", &CloseLookForm::Larger}, {"Ctrl+-", &CloseLookForm::Smaller},
    {"Ctrl+0", &CloseLookForm::InDots}, {"Ctrl+1", &CloseLookForm::Whole},
    {"F8", &CloseLookForm::Close},      {"Esc", &CloseLookForm::Close},
};

QStringList CloseLookForm::Commands() {
  QStringList keys;
  for (const Key& key : kKeys) keys += QLatin1String(key.keys);
  return keys;
}

CloseLookForm::CloseLookForm()
    : Form(FormKind::Aside, Places::WithFont),
      cmdSmaller(*this, QStringLiteral("-")),
      lblZoom(*this, QString(), Alignment::Centre),
      cmdLarger(*this, QStringLiteral("+")),
      cmdWhole(*this, QStringLiteral("&Whole card")),
      lblWords(*this),
      view(*this) {
  SetCaption(QStringLiteral("Close look"));
  SetClientSize(9000, 8400, true);
  Arrange();
  cmdSmaller.Click = [this] { Smaller(); };
  cmdLarger.Click = [this] { Larger(); };
  cmdWhole.Click = [this] { Whole(); };
  view.ZoomChanged = [this] {
    lblZoom.SetCaption(QStringLiteral("%1 %").arg(std::lround(view.Zoom() * 100)));
  };
}

void CloseLookForm::Arrange() {
  Explain(cmdSmaller, QStringLiteral("Smaller (Ctrl+-)"));
  Explain(cmdLarger, QStringLiteral("Larger (Ctrl++)"));
  cmdWhole.SetToolTip(QStringLiteral("As large as there is room (Ctrl+1)"));
  view.SetAccessibleName(QStringLiteral("The card as it will be on paper"));
  BoxLayout column(*this, BoxLayout::Column);
  BoxLayout bar = column.AddBox(BoxLayout::Row);
  bar.Add(cmdSmaller);
  bar.Add(lblZoom);
  bar.Add(cmdLarger);
  bar.AddSpace(12);
  bar.Add(cmdWhole);
  bar.AddStretch();
  for (CommandButton* button : {&cmdSmaller, &cmdLarger}) SetFixedWidth(*button, 40);
  SetMinimumSize(lblZoom, 60, 0);
  lblWords.SetWordWrap(true);
  column.Add(lblWords);
  column.Add(view, 1);
}

void CloseLookForm::Form_Load() {
  ShowCards({});
  PaperChanged = [this](const std::vector<PrintedCard>& cards) { ShowCards(cards); };
  if (RecordEditor* const editor = RecordEditor::Active()) editor->AskForPaper();
}

void CloseLookForm::Form_Unload() {
  PaperChanged = nullptr;
}

bool CloseLookForm::Claims(const KeyEvent& key) const {
  return std::ranges::any_of(kKeys, [&](const Key& each) { return KeyOf(QLatin1String(each.keys)) == key; });
}

void CloseLookForm::Form_KeyDown(const KeyEvent& key) {
  for (const Key& each : kKeys) {
    if (KeyOf(QLatin1String(each.keys)) == key) return (this->*each.press)();
  }
}

void CloseLookForm::ShowCards(const std::vector<PrintedCard>& cards) {
  std::vector<ZoomView::Row> rows;
  QStringList words;
  for (const PrintedCard& card : cards) {
    if (!card.failure.isEmpty()) {
      words += QStringLiteral("Print leaves this out: %1: %2").arg(card.record, card.failure);
      continue;
    }
    rows.push_back({{card.sheet, card.front}});
    if (!card.back.isNull()) rows.back().push_back({card.sheet, card.back});
  }
  if (cards.empty()) words += QStringLiteral("Open an editor on a record to look at it closely.");
  words.removeDuplicates();
  lblWords.SetCaption(words.join(QStringLiteral("\n")));
  lblWords.SetVisible(!words.isEmpty());
  view.SetRows(rows);
}

void CloseLookForm::Larger() {
  view.SetZoom(view.Zoom() * kStep);
}
void CloseLookForm::Smaller() {
  view.SetZoom(view.Zoom() / kStep);
}
void CloseLookForm::InDots() {
  view.SetZoom(1);
}
void CloseLookForm::Whole() {
  view.Fit();
}
void CloseLookForm::Close() {
  frmCloseLook.Unload();
}

void ToggleCloseLook(const Form& beside) {
  if (frmCloseLook.IsVisible()) return frmCloseLook.Unload();
  frmCloseLook->ShowBeside(beside);
}

}  // namespace orv
