#pragma once

#include <QObject>

namespace orv {

// Raises HelpAsked for F1, wherever the keyboard is: no control, list or box gets to see the key.
class HelpKey : public QObject {
 public:
  // Watches the whole application, which owns it.
  HelpKey();
  bool eventFilter(QObject* object, QEvent* event) override;
};

}  // namespace orv
