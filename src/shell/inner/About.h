#pragma once

#include "forms/Controls.h"
#include "forms/Form.h"

namespace orv {

// Tells the program's version, its licence, and those of what it links and carries.
class AboutForm : public Form {
 public:
  AboutForm();

  FormLabel lblName;
  FormLabel lblVersion;
  FormLabel lblLicence;
  FormLabel lblOthers;
  TextBox txtLicences;
  CommandButton cmdClose;
};

inline FormInstance<AboutForm> frmAbout;

}  // namespace orv
