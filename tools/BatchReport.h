#pragma once

#include <QString>

#include "forms/Dialogs.h"
#include "output/RunTally.h"

namespace orv {

// Takes the place of the user in a run without a window: what the program would say in a box goes to the
// standard error with the record that it is about and its title, each file that is written to the standard
// output.
class BatchReport : public DialogResponder {
 public:
  BatchReport();

  Answer OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) override;
  QString OnInputBox(const QString& prompt, const QString& title, const QString& initial) override;
  QString OnFile(const CommonDialog& dialog, bool save) override;
  bool OnColor(CommonDialog& dialog) override;
  QString OnFolder(const QString& title) override;
  bool OnModal(Form& form) override;

  // Names that two records share and records for which this run has written no file are told on the standard
  // error, and the counts in a last line on the standard output.
  void Conclude();

  // A text for the standard error, with the record that the run is at.
  void Tell(const QString& text);

  bool ToldFailure() const { return told_failure_; }

 private:
  RunTally tally_;
  bool told_failure_ = false;
};

}  // namespace orv
