#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "forms/Controls.h"
#include "forms/Form.h"
#include "print/PrintSheets.h"

namespace orv {

// The dialog that writes the current set as sheets for print. Its options are the user's and not the set's:
// they are kept in the settings.
class PrintForm : public Form {
 public:
  PrintForm();
  void Form_Load() override;
  void Form_Unload() override;

  // The field of an option: its text, one of its choices, or a box for each kind.
  struct Field {
    const PrintOption& option;
    FormLabel label;
    std::unique_ptr<TextBox> text;
    std::unique_ptr<ComboBox> choice;
    std::vector<std::unique_ptr<CheckBox>> kinds;
    Control& First() const;  // that takes the focus
    QString Text() const;
    void SetText(const QString& value);
  };
  Field& FieldOf(const QString& option);

  // The record whose line the user has chosen among the findings; none after any other end.
  std::optional<BadCard> Chosen;

  std::vector<std::unique_ptr<Field>> fields;
  FormLabel lblHint;
  FormLabel lblFindings;
  TextBox txtFindings;  // what print would show badly
  FormLabel lblProgress;
  CommandButton cmdCheck;
  CommandButton cmdTestSheet;
  CommandButton cmdPrint;
  CommandButton cmdDone;  // stops what runs, else ends the dialog

 private:
  // In the order in which Tab goes through them, before all other controls.
  std::vector<std::unique_ptr<Field>> MakeFields();
  void Arrange();
  void ShowHint(const PrintOption& option);
  // The options as the fields have them, stored; false, with a box, where one makes no sense.
  bool TakeOptions(PrintOptions& options);
  bool Progress(int done, int all);
  void Run(const std::function<void(const PrintOptions&)>& action);
  void Check(const PrintOptions& options);
  void ChooseFinding(int line);
  void WriteSheets(const PrintOptions& options, const QString& path);
  void cmdPrint_Click();
  void cmdTestSheet_Click();
  void cmdDone_Click();

  std::vector<BadCard> bad_;  // of which each line of the findings tells
  bool running_ = false;
  bool stop_ = false;
};

inline FormInstance<PrintForm> frmPrint;

}  // namespace orv
