#pragma once

#include <QObject>

namespace orv {

// Keeps commands from controls. What a form claims is for no control in it, whatever the control's own keys
// are on this system. What would take a command for letters doesn't: with Alt they type nothing, and with Alt
// or Ctrl they choose nothing in a list. They go on to the form; a list that is open closes for them.
class CommandKeys : public QObject {
 public:
  // Watches the whole application, which owns it.
  CommandKeys();
  bool eventFilter(QObject* object, QEvent* event) override;
};

}  // namespace orv
