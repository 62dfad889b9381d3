#pragma once

#include <cstdint>

#include "forms/Controls.h"
#include "forms/Form.h"

namespace orv {

// The dialog for a set's name, language and edition.
class SetNameForm : public Form {
 public:
  SetNameForm();
  // Fills the dialog; 0 as the language chooses the first one, an edition other than 3 the 2nd.
  void Init(const QString& name, std::int32_t LanguageID, std::int16_t EditionID);

  bool OK = false;  // left with "OK"

  FormLabel lblName;
  TextBox txtName;
  FormLabel lblLanguage;
  ComboBox cboLanguage;
  FormLabel lblEdition;
  OptionButton opt2nd;
  OptionButton opt3rd;
  CommandButton cmdOK;
  CommandButton cmdCancel;

 private:
  void cmdOK_Click();
};

inline FormInstance<SetNameForm> frmSetName;

}  // namespace orv
