#pragma once

#include <QStringList>
#include <vector>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/ZoomView.h"
#include "print/PrintedCard.h"

namespace orv {

// A window beside the editors that shows their record as it will be on paper: composed, in the fonts of the
// set, with originals in their own dots. It follows each edit and takes no keyboard from the editor.
class CloseLookForm : public Form {
 public:
  CloseLookForm();
  void Form_Load() override;
  void Form_Unload() override;
  bool Claims(const KeyEvent& key) const override;
  void Form_KeyDown(const KeyEvent& key) override;
  // Its keys.
  static QStringList Commands();

  CommandButton cmdSmaller;
  FormLabel lblZoom;
  CommandButton cmdLarger;
  CommandButton cmdWhole;  // as large as there is room
  FormLabel lblWords;      // in place of what can't be shown
  ZoomView view;

 private:
  struct Key;
  static const Key kKeys[];
  void Arrange();
  void ShowCards(const std::vector<PrintedCard>& cards);
  void Larger();
  void Smaller();
  void InDots();
  void Whole();
  void Close();
};

inline FormInstance<CloseLookForm> frmCloseLook;

// Opens it beside a window, or closes it.
void ToggleCloseLook(const Form& beside);

}  // namespace orv
