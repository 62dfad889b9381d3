#pragma once

#include "forms/Controls.h"
#include "forms/Form.h"

namespace orv {

// Tells how far the bringing over has come.
class BringOverForm : public Form {
 public:
  BringOverForm();
  // Shows the share that is done, in percent, at once.
  void ShowShare(int percent);

  FormLabel lblWhat;
  FormLabel lblShare;

 private:
  int shown_ = -1;
};

inline FormInstance<BringOverForm> frmBringOver;

// Where the program's database is of an older version, asks whether to bring it over and does so. False where
// the program is to end: the user has refused or it has failed, which is told, and nothing has changed.
bool BringOverOldDatabase();

}  // namespace orv
