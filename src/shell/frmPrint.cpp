#include "shell/frmPrint.h"

#include <QRegularExpression>
#include <algorithm>

#include "base/FileName.h"
#include "base/Quietly.h"
#include "base/RuntimeError.h"
#include "base/Settings.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "print/PrintSheets.h"
#include "state/modData.h"

namespace orv {
namespace {

const QString kTitle = QStringLiteral("Print sheets");
const QString kSection = QStringLiteral("Print");
const QRegularExpression kLineEnds(QStringLiteral("[\r\n]+"));

// The chosen path; empty after Cancel.
QString AskForFile(const QString& name) {
  CommonDialog dialog;
  dialog.DialogTitle = QStringLiteral("Save sheets as");
  dialog.FileName = AsFileName(name) + QStringLiteral(".pdf");
  dialog.Filter = QStringLiteral("All files(*.*)|*.*|PDF file (*.pdf)|*.pdf");
  dialog.DefaultExt = QStringLiteral("pdf");
  dialog.FilterIndex = 2;
  dialog.Flags = 0x280806;
  dialog.CancelError = true;
  return Quietly({kErrCancel}, [&] { dialog.ShowSave(); }) ? dialog.FileName : QString();
}

}  // namespace

Control& PrintForm::Field::First() const {
  if (text != nullptr) return *text;
  return choice != nullptr ? static_cast<Control&>(*choice) : *kinds.front();
}

// All kinds are as good as none named, so that a kind to come is among them.
QString PrintForm::Field::Text() const {
  if (text != nullptr) return text->Text();
  if (choice != nullptr) return choice->Text();
  QStringList ticked;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds[i]->Value() == 1) ticked += QLatin1String(kPrintKinds[i].name);
  }
  return ticked.size() == std::ssize(kinds) ? QString() : ticked.join(u',');
}

void PrintForm::Field::SetText(const QString& value) {
  if (text != nullptr) text->SetText(value);
  if (choice != nullptr) choice->SetText(value);
  PrintOptions options;
  SetPrintOption(options, QLatin1String(option.name), value);
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    kinds[i]->SetValue(options.Wants(QLatin1String(kPrintKinds[i].name)) ? 1 : 0);
  }
}

PrintForm::PrintForm()
    : Form(FormKind::Dialog, Places::WithFont),
      fields(MakeFields()),
      lblHint(*this),
      lblFindings(*this, QStringLiteral("Print would show bad&ly:")),
      txtFindings(*this, TextBox::MultiLine),
      lblProgress(*this),
      cmdCheck(*this, QStringLiteral("Ch&eck")),
      cmdTestSheet(*this, QStringLiteral("&Test sheet...")),
      cmdPrint(*this, QStringLiteral("Print to &file...")),
      cmdDone(*this, QStringLiteral("Done")) {
  SetCaption(kTitle);
  Arrange();
  cmdCheck.Click = [this] { Run([this](const PrintOptions& options) { Check(options); }); };
  cmdTestSheet.Click = [this] { cmdTestSheet_Click(); };
  cmdPrint.Click = [this] { cmdPrint_Click(); };
  cmdDone.Click = [this] { cmdDone_Click(); };
  txtFindings.SetLocked(true);
  txtFindings.GotFocus = [this] {
    lblHint.SetCaption(QStringLiteral("A click on a line, or Enter, leads to its record."));
  };
  txtFindings.LineChosen = [this](int line) { ChooseFinding(line); };
}

std::vector<std::unique_ptr<PrintForm::Field>> PrintForm::MakeFields() {
  std::vector<std::unique_ptr<Field>> made;
  for (const PrintOption& option : AllPrintOptions()) {
    made.push_back(std::unique_ptr<Field>(
        new Field{option, FormLabel(*this, QLatin1String(option.label)), nullptr, nullptr, {}}));
    Field& field = *made.back();
    const auto hint = [this, &option] { ShowHint(option); };
    if (option.takes_print_kinds) {
      for (const PrintKind& kind : kPrintKinds) {
        field.kinds.push_back(std::make_unique<CheckBox>(*this, QLatin1String(kind.words)));
        field.kinds.back()->GotFocus = [this] { lblHint.SetCaption(QStringLiteral("What is printed.")); };
      }
    } else if (option.choices.isEmpty()) {
      field.text = std::make_unique<TextBox>(*this);
      field.text->GotFocus = hint;
    } else {
      field.choice = std::make_unique<ComboBox>(*this);
      for (const QString& choice : option.choices) field.choice->AddItem(choice);
      field.choice->GotFocus = hint;
    }
    field.label.SetBuddy(field.First());
  }
  return made;
}

void PrintForm::Arrange() {
  constexpr int kRow = 420;
  constexpr int kKindWidths[] = {960, 1380};
  int top = 120;
  for (const auto& field : fields) {
    field->label.Place(120, top + 45, 2100, 255);
    if (field->kinds.empty()) field->First().Place(2280, top, 2340, 330);
    for (std::size_t i = 0; i < field->kinds.size(); ++i) {
      if (i == 2) top += kRow - 60;
      field->kinds[i]->Place(i % 2 == 0 ? 2280 : 2280 + kKindWidths[0], top + 45, kKindWidths[i % 2], 255);
    }
    top += kRow;
  }
  SetClientSize(10440, top + 900);
  lblHint.Place(120, top + 60, 10200, 255);
  lblHint.SetMuted();
  lblFindings.Place(4920, 45, 5400, 345);
  txtFindings.Place(4920, 420, 5400, top - 1020);
  lblFindings.SetBuddy(txtFindings);
  lblProgress.Place(4920, top - 480, 5400, 255);
  top += 420;
  cmdCheck.Place(2880, top, 1800, 375);
  cmdTestSheet.Place(4760, top, 1800, 375);
  cmdPrint.Place(6640, top, 1800, 375);
  cmdDone.Place(8520, top, 1800, 375);
  cmdDone.SetCancel(true);
}

PrintForm::Field& PrintForm::FieldOf(const QString& option) {
  for (const auto& field : fields) {
    if (option == QLatin1String(field->option.name)) return *field;
  }
  throw RuntimeError(kErrItemNotFound);
}

void PrintForm::Form_Load() {
  for (const auto& field : fields) {
    const QString usual = DefaultOf(field->option);
    const QString stored = GetSetting(kSection, QLatin1String(field->option.name), usual);
    PrintOptions scratch;
    const bool makes_sense = SetPrintOption(scratch, QLatin1String(field->option.name), stored).isEmpty();
    field->SetText(makes_sense ? stored : usual);
  }
  // Which records are wanted is a matter of the set on show.
  for (const char* name : {"numbers", "changed"}) {
    Field& field = FieldOf(QLatin1String(name));
    field.SetText(DefaultOf(field.option));
  }
}

void PrintForm::Form_Unload() {
  stop_ = true;
}

void PrintForm::ShowHint(const PrintOption& option) {
  lblHint.SetCaption(QLatin1String(option.help));
}

bool PrintForm::TakeOptions(PrintOptions& options) {
  for (const auto& field : fields) {
    const QString name = QLatin1String(field->option.name);
    const bool no_kind = !field->kinds.empty() && std::ranges::none_of(field->kinds, [](const auto& box) {
      return box->Value() == 1;
    });
    const QString wrong = no_kind ? QStringLiteral("Tick at least one of the kinds.")
                                  : SetPrintOption(options, name, field->Text());
    if (!wrong.isEmpty()) {
      MsgBox(wrong, Icon::Exclamation, kTitle);
      field->First().SetFocus();
      return false;
    }
    SaveSetting(kSection, name, field->Text());
  }
  return true;
}

bool PrintForm::Progress(int done, int all) {
  lblProgress.SetCaption(QStringLiteral("%1 of %2").arg(done).arg(all));
  lblProgress.Refresh();
  Application::HandleInput();
  return !stop_;
}

// While it runs nothing but the button that stops it can be used.
void PrintForm::Run(const std::function<void(const PrintOptions&)>& action) {
  PrintOptions options;
  if (running_ || !TakeOptions(options)) return;
  running_ = true;
  stop_ = false;
  const auto enable = [this](bool enabled) {
    for (Control* control : {&cmdCheck, &cmdTestSheet, &cmdPrint}) control->SetEnabled(enabled);
    cmdDone.SetCaption(enabled ? QStringLiteral("Done") : QStringLiteral("Stop"));
  };
  enable(false);
  try {
    action(options);
  } catch (const RuntimeError& error) {
    MsgBox(QStringLiteral("The sheets are not printed.\r\n\r\n") + error.NumberAndDescription(),
           Icon::Critical, kTitle);
  }
  enable(true);
  lblProgress.SetCaption(QString());
  running_ = false;
}

void PrintForm::Check(const PrintOptions& options) {
  bad_ = CheckSheets(options, [this](int done, int all) { return Progress(done, all); });
  QStringList lines;
  for (const BadCard& bad : bad_) lines.append(QString(bad.line).replace(kLineEnds, QStringLiteral(" ")));
  txtFindings.SetText(lines.isEmpty() ? QStringLiteral("Nothing.") : lines.join(QStringLiteral("\r\n")));
}

// Ends the dialog: who opened it shows the record.
void PrintForm::ChooseFinding(int line) {
  if (running_ || line < 0 || line >= std::ssize(bad_)) return;
  Chosen = bad_[line];
  Hide();
}

void PrintForm::cmdPrint_Click() {
  Run([this](const PrintOptions& options) {
    Check(options);
    if (stop_) return;
    const QString path = AskForFile(modData::rsSet["SetName"].TextOrEmpty());
    if (!path.isEmpty()) WriteSheets(options, path);
  });
}

void PrintForm::WriteSheets(const PrintOptions& options, const QString& path) {
  const PrintOutcome outcome =
      PrintSheets(options, path, [this](int done, int all) { return Progress(done, all); });
  if (outcome.stopped) {
    MsgBox(QStringLiteral("Stopped: nothing is written."), Icon::Information, kTitle);
    return;
  }
  if (outcome.sheets == 0) {
    MsgBox(QStringLiteral("No card has changed since its last sheet: nothing is written."), Icon::Information,
           kTitle);
    return;
  }
  QString text = QStringLiteral("Cards: %1, sheets: %2.").arg(outcome.cards).arg(outcome.sheets);
  if (outcome.unchanged > 0)
    text += QStringLiteral("\r\nLeft out for being unchanged: %1.").arg(outcome.unchanged);
  if (!outcome.forgotten.isEmpty()) {
    text += QStringLiteral("\r\n\r\nWhat changes from now on can't be told: ") + outcome.forgotten;
  }
  if (!outcome.not_drawn.isEmpty()) {
    text += QStringLiteral("\r\n\r\nNot drawn:\r\n") + outcome.not_drawn.join(QStringLiteral("\r\n"));
  }
  MsgBox(text, outcome.not_drawn.isEmpty() ? Icon::Information : Icon::Exclamation, kTitle);
}

void PrintForm::cmdTestSheet_Click() {
  Run([](const PrintOptions& options) {
    const QString path = AskForFile(QStringLiteral("Test sheet"));
    if (!path.isEmpty()) PrintTestSheet(options, path);
  });
}

void PrintForm::cmdDone_Click() {
  stop_ = true;
  if (!running_) Hide();
}

}  // namespace orv
