#pragma once

#include <QObject>

namespace orv {

// Keeps commands from what would take them for letters: with Alt they type nothing, and with Alt or Ctrl they
// choose nothing in a list. They go on to the form; a list that is open closes for them.
class CommandKeys : public QObject {
 public:
  // Watches the whole application, which owns it.
  CommandKeys();
  bool eventFilter(QObject* object, QEvent* event) override;
};

}  // namespace orv
