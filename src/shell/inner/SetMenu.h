#pragma once

#include <cstdint>

#include "forms/Controls.h"
#include "forms/Form.h"

// What the menu of the main window does with whole sets and with copies of records.
namespace orv {

// Asks for another set of the current edition.
class ChooseSetForm : public Form {
 public:
  ChooseSetForm();
  // Lists the other sets; false if there are none.
  bool Fill();

  bool OK = false;  // left with "OK"

  FormLabel lblSet;
  ComboBox cboSet;
  CommandButton cmdOK;
  CommandButton cmdCancel;
};

inline FormInstance<ChooseSetForm> frmChooseSet;

// Writes the current set to a file that the user names.
void SaveSetAs();
// Adds the set of a file that the user chooses; its key, 0 for none.
std::int32_t BringInSet();
// Asks whether to add the sets of a file that the user has opened, and does so; the key of the first, 0 for
// none.
std::int32_t OfferSet(const QString& path);
// Puts a copy of the record in the editor in front behind it.
void DuplicateInEditor();
// Puts a copy of that record at the end of a set that the user chooses.
void CopyToAnotherSet();
// Deletes what the editor in front shows, after a question.
void DeleteInEditor();

}  // namespace orv
