#include "shell/frmSetName.h"

#include "database/ListHelpers.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "state/modData.h"

namespace orv {

SetNameForm::SetNameForm()
    : Form(FormKind::Dialog),
      lblName(*this, QStringLiteral("&Name:")),
      txtName(*this),
      lblLanguage(*this, QStringLiteral("&Language:")),
      cboLanguage(*this),
      lblEdition(*this, QStringLiteral("&Edition:")),
      opt2nd(*this, QStringLiteral("2nd")),
      opt3rd(*this, QStringLiteral("3rd")),
      cmdOK(*this, QStringLiteral("OK")),
      cmdCancel(*this, QStringLiteral("Cancel")) {
  SetCaption(QStringLiteral("Set"));
  SetClientSize(4785, 2655);
  lblName.Place(120, 240, 1050, 285);
  txtName.Place(1200, 240, 3375, 285);
  lblLanguage.Place(120, 720, 1050, 315);
  cboLanguage.Place(1200, 720, 3375, 315);
  lblEdition.Place(120, 1200, 1050, 255);
  opt2nd.Place(1200, 1200, 1500, 255);
  opt3rd.Place(1200, 1560, 1500, 255);
  cmdOK.Place(1860, 2100, 1305, 375);
  cmdCancel.Place(3270, 2100, 1305, 375);
  lblName.SetBuddy(txtName);
  lblLanguage.SetBuddy(cboLanguage);
  lblEdition.SetBuddy(opt2nd);
  cmdOK.SetDefault(true);
  cmdCancel.SetCancel(true);
  txtName.GotFocus = [this] { SelectText(txtName); };
  cmdOK.Click = [this] { cmdOK_Click(); };
  cmdCancel.Click = [this] { Hide(); };
}

void SetNameForm::Init(const QString& name, std::int32_t LanguageID, std::int16_t EditionID) {
  txtName.SetText(name);
  Recordset languages = modData::OpenSnapshot(QStringLiteral("SELECT * FROM tblLanguage"));
  FillCombo(cboLanguage, languages, QStringLiteral("Language"), QStringLiteral("LanguageID"));
  if (LanguageID == 0) {
    cboLanguage.SetListIndex(0);
  } else {
    SelectItemData(cboLanguage, LanguageID);
  }
  (EditionID == 3 ? opt3rd : opt2nd).SetValue(true);
  OK = false;
}

// The warning does not stop a set without a name: it is given, and the dialog ends as with a name.
void SetNameForm::cmdOK_Click() {
  if (txtName.Text().isEmpty()) {
    MsgBox(QStringLiteral("You must name the set."), Icon::Exclamation, QStringLiteral("Set name"));
    txtName.SetFocus();
  }
  OK = true;
  Hide();
}

}  // namespace orv
