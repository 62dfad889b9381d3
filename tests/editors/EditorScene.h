#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "editors/RecordEditor.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {

struct EditorParts {
  RecordEditor& editor;
  TextBox& title;
  std::vector<Control*> sides;        // the previews and the input side
  std::vector<Control*> for_records;  // its own buttons in the bar that need a record
};

// An editor as the tests of all editors know it.
struct EditorKind {
  const char* form_name;
  int edition;
  const char* table;
  const char* title_column;
  int (TestDatabase::*add)(int set, int nr, const QString& title);
  EditorParts (*parts)();
  const char* first_title;  // of a new record in an empty set
  // What a new record has, and its text behind three others whose last was renumbered to 7.
  const char* defaults;
  const char* added;
};
// Names the runs of a test that takes each kind.
inline std::string FormName(const testing::TestParamInfo<const EditorKind*>& info) {
  return info.param->form_name;
}
extern const EditorKind kCard2nd, kCard3rd, kCharacter, kLargeCard;

// One edit by a user: what it leaves in a column of the first record and, if it says so, on the preview.
struct Edit {
  const char* column;
  std::function<void()> edit;
  const char* stored;
  std::function<QString()> shown = [] { return QString(); };
  const char* preview = "";
};

// A set in the editor of one kind.
class EditorScene {
 protected:
  explicit EditorScene(const EditorKind& kind);

  void Add(int nr, const QString& title) { (database_.*kind_.add)(set_, nr, title); }
  // Gives the set records 1, 2, 3 and so on, "RECORD 1" and so on, and shows the editor.
  void Open(int records);
  RecordEditor& Editor() { return kind_.parts().editor; }
  // "number (highest)", as the label shows it.
  QString Position();
  // What the file holds for a record, not what waits in the recordset: an expression on its columns.
  QString Stored(const QString& expression, int nr = 1);
  // Does the edits one after the other, and expects that each is stored at once and that none reaches the
  // second record.
  void ExpectEdits(const std::vector<Edit>& edits);

  const EditorKind& kind_;
  TestDatabase database_;
  DialogScript dialogs_;
  DialogResponderScope scope_{dialogs_};
  int set_;
};

// Drags a handle by some pixels.
void DragHandle(Label& handle, int button, double across);

}  // namespace orv
