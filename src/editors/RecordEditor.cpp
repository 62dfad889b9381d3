#include "editors/RecordEditor.h"

#include <QFileInfo>
#include <QScopedValueRollback>
#include <algorithm>

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "base/Shortened.h"
#include "database/CurrentSet.h"
#include "database/ListHelpers.h"
#include "editors/PictureFitter.h"
#include "exchange/CopyRecord.h"
#include "forms/Application.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "forms/Layout.h"
#include "pictures/DroppedPicture.h"
#include "print/PrintedCards.h"
#include "state/modData.h"

namespace orv {

RecordEditor::RecordEditor(const RecordKind& kind)
    : Form(FormKind::Child),
      pnlBar(*this),
      cmdCardNav{CommandButton(pnlBar, QStringLiteral("<<")), CommandButton(pnlBar, QStringLiteral("<")),
                 CommandButton(pnlBar, QStringLiteral(">")), CommandButton(pnlBar, QStringLiteral(">>"))},
      lblCurrentCard(pnlBar, QStringLiteral("0 (0)"), Alignment::Centre),
      cmdCardAdd(pnlBar, QString(), QStringLiteral("add")),
      cmdCardDelete(pnlBar, QString(), QStringLiteral("delete")),
      lblHint(*this),
      ntcPaper(*this),
      kind_(kind),
      record_(kind.rows, kind.key, [this] { ShowWhatIsLeft(); }),
      paper_([this] { LookAtPaper(); }) {
  const char* const names[] = {"First", "Previous", "Next", "Last"};
  for (int i = 0; i < 4; ++i) {
    cmdCardNav[i].Click = [this, i] { cmdCardNav_Click(i); };
    Explain(cmdCardNav[i], QString::fromLatin1(names[i]));
  }
  cmdCardAdd.SetToolTip(QStringLiteral("Add (Ctrl+N)"));
  cmdCardAdd.SetAccessibleName(QStringLiteral("Add"));
  Explain(cmdCardDelete, QStringLiteral("Delete"));
  cmdCardAdd.Click = [this] { Add(); };
  if (kind_.can_delete) cmdCardDelete.Click = [this] { Delete(); };
  lblHint.SetMuted();
  Drop = [this](const DataObject& data) { AddFromPictures(data); };
  Living().push_back(this);
  ntcPaper.Click = [this](int line) { FocusField(paper_columns_[line]); };
  // Whatever has changed in the database: a text, the font of a set, a type.
  RowChanged = [] {
    if (RecordEditor* const editor = Active()) editor->paper_.Ask();
  };
}

RecordEditor::~RecordEditor() {
  std::erase(Living(), this);
}

std::vector<RecordEditor*>& RecordEditor::Living() {
  static std::vector<RecordEditor*> editors;
  return editors;
}

void RecordEditor::LockAll() {
  for (RecordEditor* editor : Living()) editor->SetAccess(Access::Locked);
}

void RecordEditor::TellOthers() {
  for (RecordEditor* editor : Living()) {
    if (editor == this || &editor->kind_.rows != &kind_.rows) continue;
    editor->SetAccess(kind_.rows.IsEmpty() ? Access::Bar : Access::All);
  }
}

void RecordEditor::SetAccess(Access access) {
  pnlBar.SetEnabled(access != Access::Locked);
  for (Control* side : sides_) side->SetEnabled(access == Access::All);
  WordHint();
}

void RecordEditor::WordHint() {
  const QString text =
      modData::CurrentSetID == 0
          ? QStringLiteral("There is no set yet. Press \"New set\" to make one first.")
          : QStringLiteral("This set has no %1s yet. Press + or Ctrl+N to add the first one.")
                .arg(QLatin1String(kind_.noun));
  lblHint.SetCaption(text);
}

void RecordEditor::ArrangeBar(std::initializer_list<Control*> more) {
  BoxLayout row(pnlBar, BoxLayout::Row, 0);
  row.Add(cmdCardNav[0]);
  row.Add(cmdCardNav[1]);
  row.Add(lblCurrentCard);
  row.Add(cmdCardNav[2]);
  row.Add(cmdCardNav[3]);
  row.AddSpace(12);
  row.Add(cmdCardAdd);
  row.Add(cmdCardDelete);
  row.AddSpace(12);
  Control* former = &cmdCardDelete;
  for (Control* control : more) {
    row.Add(*control);
    SetTabOrder(*former, *control);
    former = control;
  }
  row.AddStretch();
  for (CommandButton& button : cmdCardNav) SetFixedWidth(button, 40);
  for (CommandButton* button : {&cmdCardAdd, &cmdCardDelete}) SetFixedWidth(*button, 40);
  SetMinimumSize(lblCurrentCard, 80, 0);
}

void RecordEditor::ArrangeSides(Control& previews, Control& input) {
  sides_ = {&previews, &input};
  BoxLayout column(*this, BoxLayout::Column);
  column.Add(pnlBar);
  column.Add(lblHint);
  BoxLayout sides = column.AddBox(BoxLayout::Row, 1, 12);
  BoxLayout left = sides.AddBox(BoxLayout::Column);
  left.Add(previews);
  left.Add(ntcPaper);
  left.AddStretch();
  sides.Add(input, 1);
  SetTabOrder(previews, ntcPaper);
}

void RecordEditor::Form_Load() {
  Initialise();
}

void RecordEditor::Form_Unload() {
  if (Active() == nullptr) PaperChanged({});
  EditorClosed(FormName());
}

struct RecordEditor::Command {
  const char* keys;
  void (RecordEditor::*run)();
  bool (*claims)() = [] { return true; };
};

namespace {

// A field takes what has words, too.
bool OnlyAPictureToPaste() {
  return Clipboard::HasData() && !Clipboard::HasText();
}

}  // namespace

const RecordEditor::Command RecordEditor::kCommands[] = {
    {"Ctrl+N", &RecordEditor::Add},
    {"Ctrl+D", &RecordEditor::Duplicate},
    {"F8", &RecordEditor::AskForCloseLook},
    {"Ctrl+V", &RecordEditor::Paste, OnlyAPictureToPaste},
    {"Shift+Ins", &RecordEditor::Paste, OnlyAPictureToPaste},
};

QStringList RecordEditor::Commands() {
  QStringList keys;
  for (const Command& command : kCommands) keys += QLatin1String(command.keys);
  return keys;
}

bool RecordEditor::Claims(const KeyEvent& key) const {
  return std::ranges::any_of(kCommands, [&](const Command& command) {
    return KeyOf(QLatin1String(command.keys)) == key && command.claims();
  });
}

void RecordEditor::Form_KeyDown(const KeyEvent& key) {
  for (const Command& command : kCommands) {
    if (KeyOf(QLatin1String(command.keys)) == key) return (this->*command.run)();
  }
}

void RecordEditor::Initialise() {
  SetAccess(Access::All);
  OpenCards();
  TakeSetUp();
  HasCards = !kind_.rows.IsEmpty();
  EnableCardControls(HasCards);
  if (HasCards) {
    cmdCardNav_Click(-1);
  } else {
    ShowPosition(0, 0);
  }
}

RecordEditor::SetUp RecordEditor::CurrentSetUp() {
  return {modData::CurrentSetID, modData::CurrentEditionID, modData::CurrentLanguageID};
}

void RecordEditor::TakeSetUp() {
  set_up_ = CurrentSetUp();
  lblCurrentCard.SetTag(QString::number(HighestNumber()));
  const QScopedValueRollback loading(Loading, true);
  FillLists();
}

bool RecordEditor::IsOfAnotherSet() const {
  return modData::CurrentSetID != 0 && set_up_ != CurrentSetUp();
}

void RecordEditor::FollowSet() {
  if (IsOfAnotherSet()) Initialise();
}

int RecordEditor::HighestNumber() const {
  const Recordset highest =
      modData::OpenSnapshot(QStringLiteral("SELECT Max(Nr) AS Highest FROM %1 WHERE SetID = %2")
                                .arg(QLatin1String(kind_.table))
                                .arg(modData::CurrentSetID));
  return highest["Highest"].Int16Or(0);
}

void RecordEditor::OpenCards() {
  OpenRecordsOfSet(kind_.table, kind_.rows);
  TellOthers();
}

void RecordEditor::EnableCardControls(bool show) {
  cmdCardDelete.SetEnabled(show);
  lblCurrentCard.SetEnabled(show);
  for (CommandButton& button : cmdCardNav) button.SetEnabled(show);
  lblHint.SetVisible(!show);
}

void RecordEditor::cmdCardNav_Click(int Index) {
  Recordset& rows = kind_.rows;
  if (rows.IsEmpty()) {
    EnableCardControls(false);
    return;
  }
  try {
    if (Index == 0) rows.MoveFirst();
    if (Index == 1) rows.MovePrevious();
    if (Index == 2) rows.MoveNext();
    if (Index == 3) rows.MoveLast();
    if (rows.IsBOF()) rows.MoveFirst();
    if (rows.IsEOF()) rows.MoveLast();
  } catch (const RuntimeError&) {
    // A move that leads nowhere shows the same record again.
  }
  ShowCurrent();
}

void RecordEditor::ShowCurrent() {
  if (IsOfAnotherSet()) TakeSetUp();
  record_.Note();
  DrawRecord();
  ShowCard();
  paper_.Ask();
}

// Where there is no record, the sheets of the last one are gone too.
void RecordEditor::LookAtPaper() {
  std::vector<PrintedCard> cards;
  const bool has_record = HasCards && kind_.rows.IsOpen() && !kind_.rows.IsEmpty();
  if (IsShown() && has_record) {
    try {
      cards = PrintedCardsOf(kind_.output, record_.Key());
    } catch (const RuntimeError&) {
      // What can't be read is told where it is edited or printed.
    }
  }
  QStringList lines;
  paper_columns_.clear();
  for (const PrintedCard& card : cards) {
    for (const Finding& finding : card.findings) {
      if (finding.column == nullptr) continue;
      lines += finding.text.left(1).toUpper() + finding.text.mid(1);
      paper_columns_.push_back(finding.column);
    }
  }
  ntcPaper.SetLines(lines);
  if (Active() == this || Active() == nullptr) PaperChanged(cards);
}

void RecordEditor::FocusField(const char* column) {
  Control* const field = column != nullptr ? FieldOf(column) : nullptr;
  field != nullptr ? field->SetFocus() : FocusFirstField();
}

void RecordEditor::ShowRecord(std::int32_t key) {
  Recordset& rows = kind_.rows;
  if (!rows.IsOpen() || rows.IsEmpty()) return;
  FindByKey(rows, kind_.key, key);
  if (rows.IsEOF()) rows.MoveFirst();
  ShowCurrent();
}

void RecordEditor::ShowWhatIsLeft() {
  if (!kind_.rows.IsOpen() || kind_.rows.IsEmpty()) {
    SetAccess(Access::Bar);
    return;
  }
  ShowCurrent();
  cmdCardNav[0].SetFocus();
}

void RecordEditor::UpdateDisplay() {
  Recordset& rows = kind_.rows;
  if (!rows.IsOpen() || rows.IsEmpty()) return;
  if (rows.IsBOF() || rows.IsEOF()) rows.MoveFirst();
  const std::int32_t key = rows[kind_.key].Int32();
  rows.MoveLast();
  FindByKey(rows, kind_.key, key);
  cmdCardNav_Click(-1);
}

void RecordEditor::Add() {
  if (modData::CurrentSetID == 0) return;
  if (IsOfAnotherSet()) TakeSetUp();
  Recordset& rows = kind_.rows;
  const int last = HighestNumber();
  rows.AddNew();
  try {
    rows["Nr"] = static_cast<int>(ToInt16(last + 1));
    SetCardDefaults();
    rows.Update();
  } catch (const RuntimeError&) {
    rows.CancelUpdate();
    throw;
  }
  rows.MoveLast();
  SetAccess(Access::All);
  TellOthers();
  EnableCardControls(true);
  ShowCurrent();
  ShowPosition(last + 1, last + 1);
  FocusFirstField();
}

RecordEditor* RecordEditor::Active() {
  const auto active = [](const RecordEditor* editor) { return editor->IsShown() && editor->IsActive(); };
  const auto editor = std::ranges::find_if(Living(), active);
  return editor == Living().end() ? nullptr : *editor;
}

RecordEditor* RecordEditor::InFront() {
  RecordEditor* const editor = Active();
  return editor != nullptr && editor->kind_.rows.IsOpen() && !editor->kind_.rows.IsEmpty() ? editor : nullptr;
}

void RecordEditor::Duplicate() {
  Recordset& rows = kind_.rows;
  if (!rows.IsOpen() || rows.IsEmpty() || !record_.Hold()) return;
  rows.Update();
  const std::int32_t copy = DuplicateRecord(modData::cn, kind_.table, rows[kind_.key].Int32());
  OpenCards();
  FindByKey(rows, kind_.key, copy);
  ShowCurrent();
  ShowPosition(rows["Nr"].Int16Or(0), HighestNumber());
}

void RecordEditor::Paste() {
  if (kind_.rows.IsOpen() && !kind_.rows.IsEmpty()) PastedPicture().Paste();
}

void RecordEditor::DeleteAfterQuestion() {
  if (kind_.rows.IsEmpty() || !record_.Hold()) return;
  const QString question = QStringLiteral("Delete this %1? It can not be brought back.\r\n\r\n%2")
                               .arg(Noun(), Shortened(kind_.rows[kind_.title].TextOrEmpty()));
  if (MsgBox(question, Icon::Question, QStringLiteral("Delete"), Buttons::NoYes) == Answer::Yes) Delete();
}

void RecordEditor::CopyToSet(std::int32_t set_id) {
  if (!record_.Hold()) return;
  kind_.rows.Update();
  CopyRecordToSet(modData::cn, kind_.table, kind_.rows[kind_.key].Int32(), set_id);
}

// Pictures that were dropped beside the card make a record each, titled by the file's name.
void RecordEditor::AddFromPictures(const DataObject& data) {
  if (modData::CurrentSetID == 0 || data.IsEmpty()) return;
  std::vector<DataObject> each;
  for (const QString& file : data.Files) each.push_back({{file}, {}});
  if (each.empty()) each.push_back(data);
  const QString noun = QLatin1String(kind_.noun);
  const QString question =
      each.size() == 1
          ? QStringLiteral("Make a new %1 of this picture?").arg(noun)
          : QStringLiteral("Make a new %1 of each of these %2 pictures?").arg(noun).arg(each.size());
  if (MsgBox(question, Icon::Question, QStringLiteral("New %1").arg(noun), Buttons::YesNo) != Answer::Yes)
    return;
  for (const DataObject& picture : each) {
    // One that can't be read makes no record.
    if (PictureOf(picture, LoadUpright).IsEmpty()) continue;
    Add();
    FirstPicture().Take(picture);
    if (picture.Files.isEmpty()) continue;
    if (Write(kind_.title, QFileInfo(picture.Files.first()).completeBaseName())) ShowCurrent();
  }
}

void RecordEditor::Delete() {
  Recordset& rows = kind_.rows;
  if (rows.IsEmpty() || !record_.Hold()) return;
  const int deleted = rows["Nr"].Int16Or(0);
  {
    Transaction transaction(modData::cn);
    rows.Delete();
    CloseGap(deleted);
    rows.Close();
    transaction.Commit();
  }
  OpenCards();
  if (rows.IsEmpty()) {
    ShowPosition(0, 0);
    cmdCardAdd.SetFocus();
    EnableCardControls(false);
    return;
  }
  rows.MoveLast();
  const int last = rows["Nr"].Int16Or(0);
  FindByKey(rows, "Nr", deleted);
  if (rows.IsEOF()) rows.MoveLast();
  ShowCurrent();
  ShowPosition(rows["Nr"].Int16Or(0), last);
  // Not on the button, where the next Enter would delete one more.
  FocusFirstField();
}

void RecordEditor::FocusFirstField() {
  SelectText(FirstField());
  FirstField().SetFocus();
}

// The records behind the deleted one move up by one, as far as their numbers follow each other. Each
// change is posted by the next move, the last one by the closing of the recordset.
void RecordEditor::CloseGap(int deleted) {
  Recordset& rows = kind_.rows;
  if (rows.IsEmpty()) return;
  for (int number = deleted + 1;; ++number) {
    FindByKey(rows, "Nr", number);
    if (rows.IsEOF()) return;
    rows["Nr"] = number - 1;
  }
}

bool RecordEditor::Write(const char* column, const Value& value) {
  return record_.Write({{column, value}});
}

void RecordEditor::WriteText(const char* column, TextBox& box, Label& label) {
  if (Loading) return;
  if (Write(column, box.Text())) label.SetCaption(box.Text());
}

void RecordEditor::ShowLast(int number) {
  record_.Note();
  try {
    ShowCard();
  } catch (const RuntimeError&) {
    // A record that can be written out and not be shown is no failure of the run.
  }
  ShowPosition(number, number);
}

void RecordEditor::ShowPosition(int number, int highest) {
  lblCurrentCard.SetCaption(QStringLiteral("%1 (%2)").arg(number).arg(highest));
  lblCurrentCard.SetTag(QString::number(highest));
}

void RecordEditor::ShowCurrentPosition() {
  lblCurrentCard.SetCaption(kind_.rows["Nr"].TextOrEmpty() + QStringLiteral(" (") + lblCurrentCard.Tag() +
                            u')');
}

}  // namespace orv
