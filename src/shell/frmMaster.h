#pragma once

#include "editors/RecordEditor.h"
#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/Surface.h"
#include "forms/Toolbar.h"
#include "print/PrintSheets.h"

namespace orv {

// The main window: the toolbar, the panel for choosing and maintaining sets, and the editors inside it.
// The set chosen here is the current one for the whole program.
class MasterForm : public Form {
 public:
  MasterForm();
  void Form_Load() override;
  void Form_Unload() override;
  // The commands of the editor in front work in the toolbar and the panel, too.
  bool Claims(const KeyEvent& key) const override;
  void Form_KeyDown(const KeyEvent& key) override;

  // Opens rsSet anew and fills the list of sets; the current set, or the first by name, is chosen.
  void InitialiseSet();
  // The keyboard goes to the list of sets, or without one to the button that makes the first.
  void FocusSets();
  // Makes the editors follow the current set.
  void SetChange();
  // The set, the editors and their records as the user left this database, as far as they are still there.
  void ShowWhereLeft();
  // Makes a set current that has come in; nothing for 0.
  void ShowBroughtIn(std::int32_t set_id);
  // Sets the toolbar button that belongs to a form to pressed (1) or released (0); no button for an unknown
  // name.
  void FixButton(const QString& form_name, int value);

  Toolbar tbar;
  Panel picSet;
  FormLabel Label1;
  ComboBox cboSet;
  CommandButton cmdNew;
  CommandButton cmdEdit;
  CommandButton cmdDelete;
  Panel ptSet;
  CheckBox chkAutonumber;
  FormLabel Label11;
  CommandButton cmdSymbolAdd;
  CommandButton cmdSymbolDel;
  Surface picSetSymbol;
  SurfaceView viewSetSymbol;

 private:
  void Arrange();
  void Subscribe();
  void UpdateSetDisplay();
  void ShowNoSet();
  void DisableDelete();
  void RedrawEditors();
  void LoadWindowPosition();
  void SaveWindowPosition();
  void KeepWhereLeft() const;
  void ExportToText();
  void PrintSheetsOfSet();
  void ShowBadCard(const BadCard& bad);
  // In front, on a record.
  void ShowEditor(RecordEditor& editor, std::int32_t record);
  void WriteSet();
  void ShowSymbol(const Picture& symbol, bool use);

  void tbar_ButtonClick(const QString& key);
  void cboSet_Click();
  void cmdNew_Click();
  void cmdEdit_Click();
  void cmdDelete_Click();
  void chkAutonumber_Click();
  void cmdSymbolAdd_Click();
  void TakeSymbol(const DataObject& data);
  void cmdSymbolDel_Click();
  void CreateAll();

  bool Loading = false;
};

inline FormInstance<MasterForm> frmMaster;

}  // namespace orv
