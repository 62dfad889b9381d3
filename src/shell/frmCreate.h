#pragma once

#include "forms/Controls.h"
#include "forms/Form.h"

namespace orv {

// The dialog that keeps the output options of the current set, each written to its record as it is
// changed, and writes out all cards of the set.
class CreateForm : public Form {
 public:
  CreateForm();
  void Form_Load() override;

  // Writes out the records of the set, kind by kind. A record's place in the order becomes its Nr.
  // There is nothing to compose for characters and large cards of the 3rd edition.
  void CreateAllCards(bool Card2nd, bool Character2nd, bool LargeCard2nd, bool Card3rd, bool Character3rd,
                      bool LargeCard3rd);

  Frame fraInfo;
  FormLabel lblSaveTo;
  TextBox txtSaveTo;
  CommandButton cmdSaveTo;
  FormLabel lblFilenamePrefix;
  TextBox txtFilenamePrefix;
  CheckBox chkFileNr;
  CheckBox chkNoBack;
  FormLabel lblSaveFormat;
  ComboBox cboSaveFormat;
  CheckBox chkReplaceSpace;
  Frame fraCreate;
  FormLabel lblEdition;
  CheckBox chk2ndCard, chk2ndChar, chk2ndLarge;
  FormLabel lblNr2ndCards, lblNr2ndChar, lblNr2ndLarge;
  CommandButton cmdCreate;
  CommandButton cmdDone;

 private:
  void Arrange();
  void ShowOptions();
  void SetLabelColour(Colour colour);
  void cmdCreate_Click();
  void cmdSaveTo_Click();
  void cboSaveFormat_Click();

  bool filling_ = false;
};

inline FormInstance<CreateForm> frmCreate;

}  // namespace orv
