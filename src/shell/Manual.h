#pragma once

#include <QStringList>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/PageBrowser.h"

namespace orv {

// The manual in a window beside the others: its contents at the left, a page at the right.
class ManualForm : public Form {
 public:
  ManualForm();
  bool Claims(const KeyEvent& key) const override;
  void Form_KeyDown(const KeyEvent& key) override;
  // Its keys.
  static QStringList Commands();

  CommandButton cmdBack;
  CommandButton cmdForward;
  FormLabel lblFind;
  TextBox txtFind;
  CommandButton cmdFind;
  FormLabel lblFound;
  ListView lvContents;
  PageBrowser pages;

 private:
  struct Key;
  static const Key kKeys[];
  void Arrange();
  void FillContents();
  void pages_Opened();
  void cmdFind_Click();
  QStringList all_;  // pages, in the order of the contents
};

inline FormInstance<ManualForm> frmManual;

// The page that tells of a form, or of the program as a whole.
QString ManualPageOf(const Form* form);

// Brings the manual to the front at that page.
void ShowManual(const Form* form);

}  // namespace orv
