#pragma once

#include <functional>

namespace orv {

// Around the delivery of one event by the application. When the outermost event of a message loop is
// done, what RunLater put off meanwhile is run.
class EventScope {
 public:
  EventScope();
  ~EventScope();
  EventScope(const EventScope&) = delete;
  EventScope& operator=(const EventScope&) = delete;

 private:
  int former_level_;
};

// For the instances: runs `action` as soon as the event in hand is dealt with to its end, nested loops
// included, so that a form is never destroyed within one of its own handlers; at once outside of any event.
void RunLater(std::function<void()> action);
// For the instances: what unloads each loaded form, run in reverse order when the program ends. Kept for
// the whole run.
void AtShutdown(std::function<void()> action);

// Runs what AtShutdown collected, the last one first.
void UnloadAll();

}  // namespace orv
