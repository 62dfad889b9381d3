#pragma once

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

// Runs what AtShutdown collected, the last one first.
void UnloadAll();

}  // namespace orv
