#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "forms/Dialogs.h"

namespace orv {

// Takes the place of the user in a run without a window: what the program would say in a box goes to the
// standard error with its title, each file that is written to the standard output.
class BatchReport : public DialogResponder {
 public:
  // Follows the save operations while it lives.
  BatchReport();
  ~BatchReport() override;

  Answer OnMsgBox(const QString& prompt, Icon icon, const QString& title, Buttons buttons) override;
  QString OnInputBox(const QString& prompt, const QString& title, const QString& initial) override;
  QString OnFile(const CommonDialog& dialog, bool save) override;
  bool OnColor(CommonDialog& dialog) override;
  QString OnFolder(const QString& title) override;
  bool OnModal(Form& form) override;

  // Holds the folder against the records: names that two records share and records without a file are
  // told on the standard error, and the counts in a last line on the standard output.
  void Conclude();

  bool ToldFailure() const { return told_failure_; }

 private:
  struct Sheet {
    QString path;
    QString record;
  };
  void Saved(const QString& path, const QString& record, bool saved);

  std::vector<Sheet> sheets_;
  int written_ = 0;
  bool told_failure_ = false;
};

}  // namespace orv
