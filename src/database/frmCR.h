#pragma once

#include "forms/Controls.h"
#include "forms/Form.h"

namespace orv {

// Asks whether to compact the database.
class CompactForm : public Form {
 public:
  enum Answers { Unanswered = 0, Yes = 1, No = 2, RemindLater = 3 };

  CompactForm();

  int Result = Unanswered;  // one of Answers

  FormLabel lblReason;
  FormLabel lblQuestion;
  CommandButton cmdYes;
  CommandButton cmdNo;
  CommandButton cmdRemind;

 private:
  void End(Answers answer);
};

inline FormInstance<CompactForm> frmCR;

}  // namespace orv
