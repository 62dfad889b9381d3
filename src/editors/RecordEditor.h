#pragma once

#include <array>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "base/Event.h"
#include "editors/ShownRecord.h"
#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/Soon.h"
#include "forms/Surface.h"
#include "output/OutputKinds.h"
#include "print/PrintedCard.h"
#include "records/Recordset.h"

namespace orv {

// An editor was closed and is gone: its name, such as "frmCard2nd".
inline Event<const QString& /*form name*/> EditorClosed;

// What the record on show in an editor looks like on paper, each time that it may look otherwise than before:
// one for each sheet. Nothing where no editor in front has a record to show.
inline Event<const std::vector<PrintedCard>& /*cards*/> PaperChanged;

// The user asks for the close look.
inline Event<> CloseLookAsked;

// What tells the editors of cards, large cards and characters apart where walking, adding and deleting
// are concerned.
struct RecordKind {
  const char* form_name;
  const char* table;
  const char* key;
  const char* noun;  // what a user calls a record
  Recordset& rows;   // the shared recordset of the kind
  const OutputKind& output;
  bool can_delete = true;       // the button works
  const char* title = "Title";  // the column
};

// An editor of the records of one kind in the current set, one at a time. There is no save command: each
// handler writes its field into the record on show and updates it at once. Nr is kept dense.
//
// The recordset is shared and may stand elsewhere or be opened anew under the editor. It then goes back to
// the record on show before it writes or deletes; where that is gone, the current one is shown and nothing is
// written.
//
// An editor may show a record that is gone: its set was deleted, or another editor has opened the shared
// recordset for a set without records. It goes on showing it, but takes no edits until it has a record again.
class RecordEditor : public Form {
 public:
  ~RecordEditor() override;
  // There is no set any more, and nothing to do in any editor until one is initialised again.
  static void LockAll();

  void Form_Load() override;
  void Form_Unload() override;
  void Form_ActiveChanged() override { paper_.Ask(); }
  bool Claims(const KeyEvent& key) const override;
  void Form_KeyDown(const KeyEvent& key) override;
  // The keys that it claims, wherever the focus is in it.
  static QStringList Commands();

  // Follows the current set, if the editor was set up for another one or for another language or edition of
  // it.
  void FollowSet();
  // Draws the current record on the preview.
  virtual void DrawRecord() = 0;
  // Shows again what may have changed elsewhere, on the same record.
  void UpdateDisplay();
  // The key of the record on show; 0 before the first.
  std::int32_t ShownKey() const { return record_.Key(); }
  // Shows the record with a key, or the first one where there is none with it.
  void ShowRecord(std::int32_t key);
  // Its name, such as "frmCard2nd".
  QString FormName() const { return QString::fromLatin1(kind_.form_name); }
  // The editor that has the keyboard, or had it last; nothing without.
  static RecordEditor* Active();
  // The same if it has a record to show.
  static RecordEditor* InFront();
  // Puts a copy of the record on show behind it and shows the copy.
  void Duplicate();
  // Deletes the record on show if the user says so.
  void DeleteAfterQuestion();
  // What is written and printed of its records.
  const OutputKind& Output() const { return kind_.output; }
  // The keyboard goes to the field of a column; to the first one for a null one, or one without a field.
  void FocusField(const char* column);
  // Works out anew, soon, what its record looks like on paper.
  void AskForPaper() { paper_.Ask(); }
  // What a user calls its records.
  QString Noun() const { return QLatin1String(kind_.noun); }
  // Puts a copy of it at the end of another set.
  void CopyToSet(std::int32_t set_id);
  // A run over all records is over, and the last one is drawn and current: shows it in the fields too, and
  // its number as the highest.
  void ShowLast(int number);

  Panel pnlBar;                             // the row with what is below
  std::array<CommandButton, 4> cmdCardNav;  // first, previous, next, last
  FormLabel lblCurrentCard;
  CommandButton cmdCardAdd;
  CommandButton cmdCardDelete;
  FormLabel lblHint;  // how to begin, while there is no record to show
  Notice ntcPaper;    // which texts don't fit on paper

  // The navigation: 0 first, 1 previous, 2 next, 3 last, any other stays. Does not wrap around.
  void cmdCardNav_Click(int Index);

 protected:
  explicit RecordEditor(const RecordKind& kind);

  // Opens the recordset of the current set anew, notes its highest number and shows its first record.
  void Initialise();
  // Opens the recordset anew; a change that waits in the former one is dropped.
  void OpenCards();
  // Shows the current record, on the preview and in the fields.
  void ShowCurrent();
  // Adds a record behind the last one and shows it.
  void Add();
  // Deletes the current record without a question, closes the gap in the numbers and shows the record that
  // took its place, or the last one.
  void Delete();

  virtual void FillLists() {}
  virtual void EnableCardControls(bool show);
  virtual void SetCardDefaults() = 0;
  // Copies the current record into the controls, with Loading set, and composes it.
  virtual void ShowCard() = 0;
  // Where a text of the record is typed or chosen; null for a column without a field.
  virtual Control* FieldOf(std::string_view column) = 0;
  // Where the user types first in a new record.
  virtual TextBox& FirstField() = 0;
  // The picture that a record made of a file gets.
  virtual class PictureFitter& FirstPicture() = 0;
  // The picture that takes what is pasted.
  virtual PictureFitter& PastedPicture() { return FirstPicture(); }

  // Arranges the bar: the navigation, and more buttons of the kind behind it.
  void ArrangeBar(std::initializer_list<Control*> more);
  // Arranges the form: the bar over the previews and the input side, which takes the room that is left.
  void ArrangeSides(Control& previews, Control& input);

  ShownRecord& Record() { return record_; }
  // Writes one field of the record on show; false where it is gone.
  [[nodiscard]] bool Write(const char* column, const Value& value);
  // The same for a text that the preview shows on a label; nothing while Loading.
  void WriteText(const char* column, TextBox& box, Label& label);
  // "number (highest)" on the label, and the highest number as its tag.
  void ShowPosition(int number, int highest);
  // The highest number when the position was last shown, as the label's tag keeps it.
  int Highest() const { return lblCurrentCard.Tag().toInt(); }
  void ShowCurrentPosition();

  // True while code fills the controls: a handler that writes a field then does nothing.
  bool Loading = false;
  bool HasCards = false;

 private:
  // What the user may do: nothing, walk and add, or edit too.
  enum class Access { Locked, Bar, All };
  void SetAccess(Access access);
  void WordHint();
  // What an editor's lists and highest number were taken from.
  struct SetUp {
    std::int16_t set = 0, edition = 0, language = 0;
    bool operator==(const SetUp&) const = default;
  };
  static SetUp CurrentSetUp();
  // Fills the lists and notes the highest number, for the current set.
  void TakeSetUp();
  // There is a set, and what the editor was set up for is another one.
  bool IsOfAnotherSet() const;
  // The highest number among the records of the current set, in whatever order the recordset has them; 0 for
  // none.
  int HighestNumber() const;
  // The record on show is gone: shows the current one, and takes the keyboard off the fields, so that the
  // rest of what is being typed doesn't go there; or takes no edits while there is none.
  void ShowWhatIsLeft();
  // The recordset was opened anew or has grown: tells the other editors of it.
  void TellOthers();
  static std::vector<RecordEditor*>& Living();
  struct Command;
  static const Command kCommands[];

  void CloseGap(int deleted);
  void Paste();
  void FocusFirstField();
  void LookAtPaper();
  void AskForCloseLook() { CloseLookAsked(); }
  void AddFromPictures(const DataObject& data);
  const RecordKind kind_;
  ShownRecord record_;
  SetUp set_up_;
  std::array<Control*, 2> sides_{};  // the previews and the input side
  Soon paper_;
  std::vector<const char*> paper_columns_;  // of the lines of ntcPaper
};

}  // namespace orv
